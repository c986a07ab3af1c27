// Lines are kept as they are and looked at when it must be told which one closes the operation: a
// log may have an error line every few lines.
#include "jighost/log/ErrorText.h"

#include <algorithm>

/// A text that goes beyond these is taken to end there.
static const std::size_t MAX_LINES = 32;
static const std::size_t MAX_SIZE = 262144;

void ErrorText::Begin(std::string_view text) {
    m_bHolding = true;
    m_Text = text;
    m_Held.clear();
    m_Lines.clear();
}

static bool HasTag(const LOG_PIECE& piece, std::string_view tag) {
    return piece.tag != std::string_view::npos && piece.text.substr(piece.tag).starts_with(tag);
}

// Between an operation's two error lines no other operation ends or begins.
bool ErrorText::Hold(const LOG_PIECE& piece, const Judge& judge) {
    const bool bNextError = HasTag(piece, "[ERR!]") && HoldsAnotherOperation(judge);
    m_Lines.push_back({m_Held.size(), piece.text.size(), piece.tag, piece.bCut});
    m_Held += piece.text;
    return bNextError || m_Lines.size() == MAX_LINES || m_Held.size() > MAX_SIZE;
}

LOG_PIECE ErrorText::Line(std::size_t place) const {
    const HELD_LINE& line = m_Lines[place];
    return {
        .text = std::string_view(m_Held).substr(line.start, line.size),
        .tag = line.tag,
        .bCut = line.bCut};
}

// --- Which line closes the operation ---

bool ErrorText::HoldsAnotherOperation(const Judge& judge) const {
    for (std::size_t i = 0; i < m_Lines.size(); ++i) {
        if (judge(Line(i)) == ROLE::OPENING) {
            return true;
        }
    }
    return FindLast(ROLE::FAILURE, judge).has_value();
}

/// Whether a number stands at the text's end, decimal or hexadecimal, that is odd.
static bool MayBeFailure(std::string_view text) {
    return !text.empty() &&
           std::string_view("13579bdf").find(text.back()) != std::string_view::npos;
}

std::optional<std::size_t> ErrorText::FindLast(ROLE role, const Judge& judge) const {
    for (std::size_t i = m_Lines.size(); i-- > 0;) {
        const LOG_PIECE line = Line(i);
        if (MayBeFailure(line.text) && judge(line) == role) {
            return i;
        }
    }
    return std::nullopt;
}

std::optional<std::size_t> ErrorText::FindClosing(const Judge& judge) const {
    if (const auto failure = FindLast(ROLE::FAILURE, judge)) {
        return failure;
    }
    for (std::size_t i = 0; i < m_Lines.size(); ++i) {
        if (judge(Line(i)) == ROLE::SUCCESS) {
            return i;
        }
    }
    return FindLast(ROLE::BARE_FAILURE, judge);
}

std::string ErrorText::Text(std::size_t closing) const {
    std::string text = m_Text;
    for (std::size_t i = 0; i < closing; ++i) {
        const LOG_PIECE line = Line(i);
        if (HasTag(line, "[ERR!]")) {
            text.append("; ").append(ParseLogLine(line.text, line.tag).text);
        } else if (!line.text.empty()) {
            text.append("\n").append(line.text);
        }
    }
    return text;
}
