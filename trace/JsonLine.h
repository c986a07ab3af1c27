// One JSON object on a line, field by field, by the standard library alone.
#pragma once

#include <chrono>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

class JsonLine {
  public:
    /// Appends to `text`, which must outlive it. Until End is called the line lacks its end.
    explicit JsonLine(std::string& text) : m_Text(text) { m_Text += '{'; }
    JsonLine(const JsonLine&) = delete;
    JsonLine& operator=(const JsonLine&) = delete;
    ~JsonLine() = default;

    // Keys are the caller's own words and need no escapes.
    void Add(std::string_view key, std::string_view text);
    void Add(std::string_view key, const char* pszText) { Add(key, std::string_view(pszText)); }
    void Add(std::string_view key, std::int64_t number);
    /// In milliseconds, with all digits.
    void Add(std::string_view key, std::chrono::nanoseconds time);
    void Add(std::string_view key, bool flag);
    void AddNull(std::string_view key);

    /// Few bytes are hexadecimal digits, which people read; of more than HEX_LIMIT stands BASE64
    /// and their shorter form.
    void AddBytes(std::string_view key, std::span<const std::uint8_t> bytes);
    static constexpr std::size_t HEX_LIMIT = 64;
    static constexpr std::string_view BASE64 = "base64:";

    /// What is added from then on is a field of this one, until EndObject.
    void BeginObject(std::string_view key);
    void EndObject() { m_Text += '}'; }

    void End() { m_Text += "}\n"; }

  private:
    void AddKey(std::string_view key);

    std::string& m_Text;
};
