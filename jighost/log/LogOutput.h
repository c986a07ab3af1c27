// What is shown of a log: a line for each operation, and a summary.
#pragma once

#include <cstdint>
#include <map>
#include <span>
#include <string>
#include <tuple>

#include "jighost/log/LogReader.h"

struct LOG_SELECTION {
    bool bFailed = false;   ///< failed operations alone are listed; all are counted
    std::string operation;  ///< if not empty, only this one is listed and counted
};

/// Writes to standard output: lines for people, or a JSON document on each line.
class LogOutput {
  public:
    LogOutput(const LOG_SELECTION& selection, bool bJson);

    void Add(std::span<const LOGGED_OPERATION> operations);

    /// Operations selected so far.
    std::uint64_t Count() const { return m_Count; }

    /// Hands over all that was added so far.
    void Flush();

    /// Writes the summary.
    void End();

  private:
    /// Name, result and error; a closing line that is missing stands as no result.
    using Failure = std::tuple<std::string, std::optional<std::int32_t>, std::string>;

    void CountIn(const LOGGED_OPERATION& operation);
    void AppendTime(const std::string& time);
    void WriteText(const LOGGED_OPERATION& operation);
    void WriteJsonLine(const LOGGED_OPERATION& operation);
    void WriteSummary();
    void WriteSummaryAsJson();

    LOG_SELECTION m_Selection;
    bool m_bJson;
    std::string m_Text;  // not yet written
    std::string m_LastTime;
    std::string m_ShownTime;
    std::uint64_t m_Count = 0;
    std::uint64_t m_FailedCount = 0;
    std::uint64_t m_InterleavedCount = 0;  // of those without a closing line
    std::uint64_t m_OtherFailures = 0;     // beyond those that m_Failures holds
    std::map<Failure, std::uint64_t> m_Failures;
};
