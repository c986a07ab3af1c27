// The bytes of an input, taken from the front; zeros behind its end.
#pragma once

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <span>
#include <string>

#include "link/Call.h"

class Input {
  public:
    Input(const std::uint8_t* pData, std::size_t size) : m_Rest(pData, size) {}

    /// Bytes that nobody has taken.
    std::size_t Left() const { return m_Rest.size(); }
    bool AtEnd() const { return m_Rest.empty(); }

    void Fill(std::span<std::uint8_t> bytes) {
        const auto taken = m_Rest.first(std::min(bytes.size(), m_Rest.size()));
        const auto zeros = std::copy(taken.begin(), taken.end(), bytes.begin());
        std::fill(zeros, bytes.end(), std::uint8_t{0});
        m_Rest = m_Rest.subspan(taken.size());
    }

    Link::Bytes Bytes(std::size_t count) {
        Link::Bytes bytes(count);
        Fill(bytes);
        return bytes;
    }

    /// A number or an array of numbers.
    template <class Type>
    Type Take() {
        Type value{};
        std::uint8_t bytes[sizeof(value)];
        Fill(bytes);
        std::memcpy(&value, bytes, sizeof(value));
        return value;
    }

    /// A byte for the length, and the text.
    std::string Text() {
        const Link::Bytes bytes = Bytes(Take<std::uint8_t>());
        return {bytes.begin(), bytes.end()};
    }

  private:
    std::span<const std::uint8_t> m_Rest;
};
