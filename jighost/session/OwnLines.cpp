// Prefixes found in lines, and counted against those that were given.
#include "jighost/session/OwnLines.h"

#include <algorithm>
#include <iterator>

void OwnLines::Expect(const std::string& prefix) {
    ++m_Missing[prefix];
    m_Lengths.insert(prefix.size());
    m_Forms.Learn(prefix);
}

void OwnLines::Add(std::string_view line) {
    for (std::size_t tag = line.find('['); tag != std::string_view::npos; tag = line.find('[')) {
        const std::size_t next = m_Forms.FindNextLine(line, tag + 1);
        if (next == std::string_view::npos) {
            break;
        }
        AddPiece(line.substr(0, next));
        line.remove_prefix(next);
    }
    AddPiece(line);
}

/// The prefix that was given and that the text begins with; null if there is none.
OwnLines::PREFIX* OwnLines::FindOwn(std::string_view text) {
    for (auto length = m_Lengths.rbegin(); length != m_Lengths.rend(); ++length) {
        const auto found = m_Missing.find(text.substr(0, *length));
        if (found != m_Missing.end()) {
            return &*found;
        }
    }
    return nullptr;
}

/// Where a text of the form of a prefix begins, with a tag or as long as one that was given; npos
/// if there is none.
std::size_t OwnLines::FindPrefix(std::string_view text) {
    for (const std::size_t length : m_Lengths) {
        if (length <= text.size() && m_Forms.FindAtEnd(text.substr(0, length)) == 0) {
            return 0;
        }
    }
    const std::size_t tag = text.find('[');
    return tag == std::string_view::npos ? tag : m_Forms.FindAtEnd(text.substr(0, tag));
}

// What stands ahead of a prefix is the rest of somebody's row of bytes.
void OwnLines::AddPiece(std::string_view text) {
    const std::size_t start = FindPrefix(text);
    if (start == std::string_view::npos) {
        AddBare(text);
        return;
    }
    text.remove_prefix(start);
    PREFIX* pOwn = FindOwn(text);
    if (pOwn != nullptr) {
        --pOwn->second;
    }
    for (; m_Leading > 0; --m_Leading) {
        m_Lines[m_Lines.size() - m_Leading].pPrefix = pOwn;
    }
    m_Lines.push_back({std::string(text), pOwn});
}

/// Whether a line without a prefix is the first one that the module hands over together with the
/// closing line; any other one is handed over behind a line with a prefix.
static bool IsLeading(std::string_view text) {
    return (text.starts_with("[ERR!]") && text != "[ERR!] HD_Count is Over") ||
           text.starts_with("[VALU] CARD Slot");
}

void OwnLines::AddBare(std::string_view text) {
    const bool bLeading = m_Leading > 0 || IsLeading(text);
    m_Leading += bLeading ? 1U : 0U;
    m_Lines.push_back(
        {std::string(text), bLeading || m_Lines.empty() ? nullptr : m_Lines.back().pPrefix});
}

void OwnLines::Clear() {
    m_Lines.clear();
    m_Leading = 0;
    std::erase_if(m_Missing, [](const PREFIX& prefix) { return prefix.second <= 0; });
}

OWNER OwnLines::Owner(std::size_t place) const {
    const PREFIX* pPrefix = m_Lines[place].pPrefix;
    if (pPrefix == nullptr) {
        return OWNER::ANOTHER;
    }
    return pPrefix->second < 0 ? OWNER::UNKNOWN : OWNER::THIS_PROCESS;
}

std::vector<std::string> OwnLines::Texts(OWNER owner) const {
    std::vector<std::string> texts;
    for (std::size_t place = 0; place < m_Lines.size(); ++place) {
        if (Owner(place) == owner) {
            texts.push_back(m_Lines[place].text);
        }
    }
    return texts;
}
