// One JSON object on a line, field by field, by the standard library alone.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

class JsonLine {
  public:
    // Keys are the caller's own words and need no escapes.
    void Add(const char* pszKey, std::string_view text);
    void Add(const char* pszKey, const char* pszText) { Add(pszKey, std::string_view(pszText)); }
    void Add(const char* pszKey, std::int64_t number);
    void Add(const char* pszKey, double number);
    void Add(const char* pszKey, bool flag);
    void AddNull(const char* pszKey) { AddRaw(pszKey, "null"); }
    void AddObject(const char* pszKey, const JsonLine& fields);

    /// The whole object with a line's end.
    std::string Text() const { return '{' + m_Fields + "}\n"; }

  private:
    void AddRaw(const char* pszKey, std::string_view value);

    std::string m_Fields;
};
