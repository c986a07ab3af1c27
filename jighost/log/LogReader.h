// The module's log read back: which operations ran, what ran within what, and how each one ended.
#pragma once

#include <string>
#include <string_view>

#include "jighost/log/ErrorText.h"
#include "jighost/log/LineAssembly.h"
#include "jighost/log/LogLine.h"
#include "jighost/log/OperationTrees.h"
#include "jighost/text/LinePrefix.h"

/// Takes a log in pieces of any size. What it keeps does not grow with the log: rubbish, lines of
/// any length and openings without end included. A line may begin within another one, where a full
/// disk cut that off or another host wrote into it.
class LogReader {
  public:
    using Sink = OperationTrees::Sink;

    explicit LogReader(Sink sink) : m_Trees(std::move(sink)) {}
    LogReader(const LogReader&) = delete;
    LogReader& operator=(const LogReader&) = delete;

    /// Reads on. A line counts as soon as its end is there.
    void Add(std::string_view bytes);

    /// The log has no more for now: hands over what has ended.
    void Pause();

    /// Forgets the line whose end has not come: the next bytes are those of a new file.
    void BeginFile();

    /// Hands over what is open, without a result. A last line without its end does not count: its
    /// result may lack digits.
    void End();

    /// Whether any line so far was one of the module's log.
    bool IsLog() const { return m_bLog; }

  private:
    void ReadLine(std::string_view line);
    void ReadPiece(const LOG_PIECE& piece);
    void ReadLogLine(LOG_LINE& line, bool bCut);
    bool TakePrefix(LOG_LINE& line);
    ErrorText::ROLE RoleOf(const LOG_PIECE& piece);
    void EndErrorText();

    LineAssembly m_Lines;
    LinePrefixes m_Prefixes;
    OperationTrees m_Trees;
    const ErrorText::Judge m_Judge = [this](const LOG_PIECE& piece) { return RoleOf(piece); };
    ErrorText m_Error;
    ErrorText m_EndedError;  // kept for its memory
    bool m_bLog = false;
};
