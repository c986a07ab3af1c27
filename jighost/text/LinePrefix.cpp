// Forms of prefixes, and texts held against them from their ends.
#include "jighost/text/LinePrefix.h"

#include <algorithm>

/// Forms in one log: more of them are none.
static const std::size_t MAX_FORMS = 8;

static const char WORD = 'w';

static bool IsOfWord(char c) {
    return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') ||
           static_cast<unsigned char>(c) >= 0x80;
}

LinePrefixes::FORM LinePrefixes::FormOf(std::string_view prefix) {
    FORM form = {.text = {}, .firstLength = 0, .bPlain = true};
    for (const char c : prefix) {
        const bool bWord = IsOfWord(c);
        form.bPlain = form.bPlain && (bWord || c == ' ');
        if (!bWord || form.text.empty() || form.text.back() != WORD) {
            form.text += bWord ? WORD : c;
        }
        form.firstLength += bWord && form.text.size() == 1 ? 1U : 0U;
    }
    return form;
}

void LinePrefixes::Learn(std::string_view prefix) {
    if (FindAtEnd(prefix) == 0 && !m_Forms.empty()) {
        return;
    }
    m_bAny = m_bAny || prefix.empty() || prefix.size() > MAX_PREFIX || m_Forms.size() == MAX_FORMS;
    if (!m_bAny) {
        m_Forms.push_back(FormOf(prefix));
        m_ShortestWithin = std::min(m_ShortestWithin, m_Forms.back().text.size());
    }
}

std::size_t LinePrefixes::Match(const FORM& form, std::string_view text) {
    std::size_t start = text.size();
    for (std::size_t i = form.text.size(); i-- > 0;) {
        if (form.text[i] != WORD) {
            if (start == 0 || text[start - 1] != form.text[i]) {
                return std::string_view::npos;
            }
            --start;
            continue;
        }
        const std::size_t end = start;
        const std::size_t room = i == 0 ? std::min(end, form.firstLength) : end;
        while (end - start < room && IsOfWord(text[start - 1])) {
            --start;
        }
        if (start == end) {
            return std::string_view::npos;
        }
    }
    return start;
}

static bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

/// Whether two texts are the same but for digits.
static bool AreAlike(std::string_view left, std::string_view right) {
    return left.size() == right.size() &&
           std::equal(left.begin(), left.end(), right.begin(), [](char a, char b) {
               return a == b || (IsDigit(a) && IsDigit(b));
           });
}

std::size_t LinePrefixes::FindAtEnd(std::string_view text) {
    if (m_bAny || m_Forms.empty() || text == m_Last) {
        return 0;
    }
    if (AreAlike(text, m_Last)) {
        m_Last = text;
        return 0;
    }
    // The longest of all: a count that is the first word has more digits in a later form.
    std::size_t first = std::string_view::npos;
    for (const FORM& form : m_Forms) {
        first = std::min(first, Match(form, text));
    }
    if (first != std::string_view::npos) {
        m_Last = text.substr(first);
    }
    return first;
}

/// Where the prefix begins that the text ends with.
std::size_t LinePrefixes::FindWithin(std::string_view text) const {
    for (const FORM& form : m_Forms) {
        const std::size_t start = form.bPlain ? std::string_view::npos : Match(form, text);
        if (start != std::string_view::npos) {
            return start;
        }
    }
    return std::string_view::npos;
}

std::size_t LinePrefixes::FindNextLine(std::string_view line, std::size_t from) const {
    if (m_bAny || line.size() < from + m_ShortestWithin) {
        return std::string_view::npos;
    }
    for (std::size_t tag = line.find('[', from); tag != std::string_view::npos;
         tag = line.find('[', tag + 1)) {
        const std::size_t start = FindWithin(line.substr(from, tag - from));
        if (start != std::string_view::npos) {
            return from + start;
        }
    }
    return std::string_view::npos;
}
