// Lines to operations: prefixes are looked at, and error lines hold up what comes behind them.
#include "jighost/log/LogReader.h"

#include <algorithm>
#include <utility>

#include "jighost/operations/LogName.h"

/// An error line ahead of the error itself, handed over on its own.
static const std::string_view EARLY_ERROR = "HD_Count is Over";
static const std::string_view EARLY_ERROR_OPERATION = "SetSlitRollingMode";

void LogReader::Add(std::string_view bytes) {
    m_Lines.Add(bytes, [this](std::string_view line) { ReadLine(line); });
}

void LogReader::Pause() {
    EndErrorText();
    m_Trees.HandOverEnded();
}

void LogReader::BeginFile() {
    EndErrorText();
    m_Lines.Clear();
}

void LogReader::End() {
    EndErrorText();
    m_Trees.End();
}

// --- Lines and pieces ---

void LogReader::ReadLine(std::string_view line) {
    std::size_t tag = FindTag(line, m_Prefixes.LengthOfLast(line));
    while (tag != std::string_view::npos) {
        const std::size_t next = m_Prefixes.FindNextLine(line, tag + TAG_SIZE);
        if (next == std::string_view::npos) {
            break;
        }
        ReadPiece({.text = line.substr(0, next), .tag = tag, .bCut = true});
        line.remove_prefix(next);
        tag = FindTag(line, 0);
    }
    ReadPiece({.text = line, .tag = tag});
}

void LogReader::ReadPiece(const LOG_PIECE& piece) {
    if (m_Error.IsHolding()) {
        if (m_Error.Hold(piece, m_Judge)) {
            EndErrorText();
        }
    } else if (piece.tag != std::string_view::npos) {
        LOG_LINE line = ParseLogLine(piece.text, piece.tag);
        if (line.kind != LINE_KIND::OTHER) {
            ReadLogLine(line, piece.bCut);
        }
    }
}

/// Cuts off what stands ahead of the prefix; gives whether there is a prefix.
bool LogReader::TakePrefix(LOG_LINE& line) {
    const std::size_t start = m_Prefixes.FindAtEnd(line.prefix);
    line.prefix.remove_prefix(std::min(start, line.prefix.size()));
    return start != std::string_view::npos;
}

// Some error lines have no prefix. Any other line without one is a text's.
void LogReader::ReadLogLine(LOG_LINE& line, bool bCut) {
    if (line.kind == LINE_KIND::SEPARATOR) {
        if (m_Trees.IsIdle()) {
            m_Prefixes.Learn(line.prefix);
        }
        m_bLog = true;
        return;
    }
    if (!TakePrefix(line) && line.kind != LINE_KIND::ERROR_LINE) {
        return;
    }
    switch (line.kind) {
        case LINE_KIND::OPENING:
            if (!bCut || IsLogName(line.name)) {
                m_Trees.Open(line);
            }
            break;
        case LINE_KIND::CLOSING:
            if (!bCut && line.result) {
                m_bLog = m_Trees.Close(line, "") || m_bLog;
            }
            return;
        case LINE_KIND::ERROR_LINE:
            if (line.text == EARLY_ERROR) {
                m_Trees.AddEarlyError(line.text, EARLY_ERROR_OPERATION);
            } else {
                m_Error.Begin(line.text);
            }
            break;
        case LINE_KIND::START:
            m_Trees.PassStart();
            break;
        case LINE_KIND::SEPARATOR:
        case LINE_KIND::OTHER:
            break;
    }
    m_bLog = true;
}

// --- Behind an error line ---

ErrorText::ROLE LogReader::RoleOf(const LOG_PIECE& piece) {
    using enum ErrorText::ROLE;
    if (piece.tag == std::string_view::npos || piece.bCut) {
        return TEXT;
    }
    LOG_LINE line = ParseLogLine(piece.text, piece.tag);
    const bool bPrefix = TakePrefix(line);
    if (line.kind == LINE_KIND::OPENING && bPrefix) {
        return OPENING;
    }
    const bool bOpen = m_Trees.IsOpen(line.name);
    if (line.HasFailure() && (bOpen || IsLogName(line.name))) {
        return bPrefix ? FAILURE : BARE_FAILURE;
    }
    return line.result && bOpen && bPrefix ? SUCCESS : TEXT;
}

/// What comes behind the closing line is read as any other.
void LogReader::EndErrorText() {
    if (!m_Error.IsHolding()) {
        return;
    }
    std::swap(m_Error, m_EndedError);
    m_Error.End();
    std::size_t next = 0;
    if (const auto closing = m_EndedError.FindClosing(m_Judge)) {
        const LOG_PIECE piece = m_EndedError.Line(*closing);
        LOG_LINE line = ParseLogLine(piece.text, piece.tag);
        TakePrefix(line);
        m_Trees.Close(line, m_EndedError.Text(*closing));
        next = *closing + 1;
    } else {
        m_Trees.AddError(m_EndedError.Text(0));
    }
    for (; next < m_EndedError.Count(); ++next) {
        ReadPiece(m_EndedError.Line(next));
    }
}
