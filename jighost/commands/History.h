// What the commands of jighost history have in common.
#pragma once

#include <string>

#include "jighost/commands/Commands.h"
#include "jighost/history/Runs.h"
#include "jighost/output/Json.h"

void AddHistoryImportCommand(Command& history, HOST& host);
void AddHistoryListCommand(Command& history, HOST& host);
void AddHistoryShowCommand(Command& history, HOST& host);
void AddHistoryStatsCommand(Command& history, HOST& host);
void AddHistoryCompareCommand(Command& history, HOST& host);
void AddHistoryExportCommand(Command& history);

/// --database; empty if it is not there.
void AddDatabaseOption(Command& command, std::string& place);

/// Options that choose runs, as they stand on the line.
struct FILTER_OPTIONS {
    std::string serial;
    std::string since;
    std::string until;
    std::string station;
    std::string sequence;
    std::string outcome;

    void AddTo(Command& command);
    /// Throws EXIT_WRONG_USE for what can't be.
    RUN_FILTER Filter() const;
};

/// Throws EXIT_WRONG_USE; `name` is that of the option or argument.
std::uint32_t ParseSerial(const std::string& name, const std::string& text);

/// What is not known is "-".
std::string Shown(const std::string& text);
/// "1 run", "2 runs".
std::string CountText(std::size_t count, const std::string& what);

/// null for none.
template <class Value>
Json OptionalJson(const std::optional<Value>& value) {
    return value ? Json(*value) : Json();
}
/// Without its steps.
Json StoredRunJson(const STORED_RUN& run);
