// Documents of markup, HTML and XML, in which foreign text never becomes markup.
#pragma once

#include <concepts>
#include <string>
#include <string_view>

#include "jighost/text/Numbers.h"

/// A text as it stands in HTML or XML 1.0, between tags and in quoted attributes: one line, with
/// nothing in it that begins markup, steers, hides or turns characters around. What XML can't have
/// stands as \xNN, as PlainText has it.
std::string MarkupText(std::string_view text);

/// Tags of the document itself, by a literal such as "<p class=\"why\">"_tag.
struct TAG {
    std::string_view text;
};
constexpr TAG operator""_tag(const char* psz, std::size_t size) {
    return {{psz, size}};
}

/// Grows by what it is given. Texts go through MarkupText, numbers through NumberText.
class Markup {
  public:
    Markup& operator<<(TAG tag) {
        m_Text += tag.text;
        return *this;
    }
    Markup& operator<<(const Markup& other) {
        m_Text += other.m_Text;
        return *this;
    }
    Markup& operator<<(std::string_view text) {
        m_Text += MarkupText(text);
        return *this;
    }
    Markup& operator<<(double number) {
        m_Text += NumberText(number);
        return *this;
    }
    Markup& operator<<(std::integral auto number) {
        m_Text += std::to_string(number);
        return *this;
    }

    const std::string& Text() const { return m_Text; }

  private:
    std::string m_Text;
};
