// The middle of a line that is too long is left out.
#include "jighost/log/LineAssembly.h"

/// Bytes kept of either end of a line.
static const std::size_t MAX_END = 65536;

void LineAssembly::Keep(std::string_view part) {
    m_Part += part;
    if (m_Part.size() > 2 * MAX_END) {
        m_Part.erase(MAX_END, m_Part.size() - 2 * MAX_END);
    }
}
