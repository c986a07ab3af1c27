// One line behind the other, up to a number that nobody reads on from.
#include "jighost/sequence/Mistakes.h"

#include <algorithm>
#include <sstream>

#include "jighost/text/HostError.h"

static const std::size_t MOST_MISTAKES = 100;

void Mistakes::Gather(const std::function<void()>& work, const std::string& suffix) {
    std::istringstream lines;
    try {
        work();
        return;
    } catch (const HostError& e) {
        if (m_Count == MOST_MISTAKES) {
            throw;  // gathered within this work
        }
        lines.str(e.what());
    }
    for (std::string line; std::getline(lines, line);) {
        Add(line + PlainText(suffix));
    }
}

void Mistakes::Add(const std::string& line) {
    if (std::find(m_Lines.begin(), m_Lines.end(), line) == m_Lines.end()) {
        m_Lines.push_back(line);
    }
    if (++m_Count == MOST_MISTAKES) {
        ThrowIfAny();
    }
}

void Mistakes::ThrowIfAny() const {
    std::string text;
    for (const std::string& line : m_Lines) {
        text += (text.empty() ? "" : "\n") + line;
    }
    if (!text.empty()) {
        throw HostError(EXIT_WRONG_USE, HostError::LINES{text});
    }
}
