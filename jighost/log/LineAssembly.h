// Lines of any length put together from pieces of any size.
#pragma once

#include <string>
#include <string_view>

class LineAssembly {
  public:
    /// Calls `read` with each whole line, without its end, as soon as that is there. Of a line that
    /// is longer than any that matters only the beginning and the end are given.
    template <class Reader>
    void Add(std::string_view bytes, const Reader& read);

    /// Forgets the line whose end has not come.
    void Clear() { m_Part.clear(); }

  private:
    static std::string_view WithoutReturn(std::string_view line) {
        return line.substr(0, line.size() - (line.ends_with('\r') ? 1 : 0));
    }

    void Keep(std::string_view part);

    std::string m_Part;  // of a line whose end has not come
};

// --- Implementation of the template ---

template <class Reader>
void LineAssembly::Add(std::string_view bytes, const Reader& read) {
    for (std::size_t end = bytes.find('\n'); end != std::string_view::npos;
         end = bytes.find('\n')) {
        if (m_Part.empty()) {
            read(WithoutReturn(bytes.substr(0, end)));
        } else {
            Keep(bytes.substr(0, end));
            read(WithoutReturn(m_Part));
            m_Part.clear();
        }
        bytes.remove_prefix(end + 1);
    }
    Keep(bytes);
}
