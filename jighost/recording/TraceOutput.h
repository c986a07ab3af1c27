// What is shown of recordings: a line for each operation, and a summary.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <utility>

#include "jighost/output/Json.h"
#include "jighost/recording/Moment.h"
#include "jighost/recording/TraceSelection.h"
#include "trace/TraceReader.h"

/// Writes to standard output: lines for people, or a JSON document on each line.
class TraceOutput {
  public:
    TraceOutput(TRACE_SELECTION selection, bool bJson);

    void BeginFile(const TraceReader& reader);
    /// Throws EXIT_WRONG_USE if the operation does not tell its moment and the selection asks for
    /// it.
    void Add(const TraceReader& reader, const TRACED_OPERATION& operation);
    void AddGap(const TRACED_GAP& gap);

    /// Operations selected so far.
    std::uint64_t Count() const { return m_Count; }

    /// Writes the summary.
    void End(const TraceReader& reader);

  private:
    void CountIn(const TRACED_OPERATION& operation);
    void WriteRow(const TRACED_OPERATION& operation, std::string_view moment);
    void WriteSummary(const TraceReader& reader);
    void Flush();

    TRACE_SELECTION m_Selection;
    bool m_bJson;
    std::string m_Text;  // not yet written
    MomentTexts m_Moments;
    std::uint64_t m_Count = 0;
    std::uint64_t m_FailedCount = 0;
    std::uint64_t m_EndlessCount = 0;  // of these
    std::uint64_t m_Gaps = 0;
    std::uint64_t m_OtherFailures = 0;  // beyond those that m_Failures holds
    std::map<std::pair<std::string, std::int32_t>, std::uint64_t> m_Failures;  // by name and result
};

/// A row of the list as JSON, without the format of a document.
Json OperationJson(const TRACED_OPERATION& operation);
