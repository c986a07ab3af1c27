// One JSON object on a line, field by field, by the standard library alone.
#pragma once

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

/// A field's name as it stands ahead of the value, made ready by the compiler: a line consists of
/// names mostly. It needs no escapes.
class JsonKey {
  public:
    template <std::size_t Size>
    consteval JsonKey(const char (&name)[Size]) : m_Size(Size + 3) {
        m_Text = {',', '"'};
        std::copy_n(name, Size - 1, m_Text.begin() + 2);
        m_Text.at(Size + 1) = '"';
        m_Text.at(Size + 2) = ':';
    }

    /// Puts it where there is ROOM, and gives the place behind it.
    char* Put(char* pOut, bool bFirst) const {
        const std::size_t comma = bFirst ? 1 : 0;
        std::copy_n(m_Text.data() + comma, ROOM - 1, pOut);  // at once, whatever its size
        return pOut + m_Size - comma;
    }
    static constexpr std::size_t ROOM = 24;

  private:
    std::array<char, ROOM> m_Text{};
    std::size_t m_Size;
};

class JsonLine {
  public:
    /// Appends to `text`, which must outlive it. Until End is called the line lacks its end.
    explicit JsonLine(std::string& text) : m_Text(text) { m_Text += '{'; }
    JsonLine(const JsonLine&) = delete;
    JsonLine& operator=(const JsonLine&) = delete;
    ~JsonLine() = default;

    void Add(const JsonKey& key, std::string_view text);
    void Add(const JsonKey& key, const char* pszText) { Add(key, std::string_view(pszText)); }
    void Add(const JsonKey& key, std::int64_t number);
    /// In milliseconds, with all digits.
    void Add(const JsonKey& key, std::chrono::nanoseconds time);
    void Add(const JsonKey& key, bool flag);
    void AddNull(const JsonKey& key);

    /// Few bytes are hexadecimal digits, which people read; of more than HEX_LIMIT stands BASE64
    /// and their shorter form.
    void AddBytes(const JsonKey& key, std::span<const std::uint8_t> bytes);
    static constexpr std::size_t HEX_LIMIT = 64;
    static constexpr std::string_view BASE64 = "base64:";

    /// What is added from then on is a field of this one, until EndObject.
    void BeginObject(const JsonKey& key);
    void EndObject() { m_Text += '}'; }

    void End() { m_Text += "}\n"; }

  private:
    /// Of a value that takes at most so many characters, and is put by `putValue`.
    template <class PutValue>
    void Add(const JsonKey& key, std::size_t most, const PutValue& putValue);
    void AddKey(const JsonKey& key);

    std::string& m_Text;
};
