// Moments of recordings and times between them, as people read and write them.
#pragma once

#include <chrono>
#include <cstdint>
#include <string>
#include <string_view>

/// How far the clock of a moment such as "2026-11-22T21:06:59+01:00" goes ahead of UTC; 0 for a
/// text that does not tell.
std::chrono::minutes ZoneOf(std::string_view moment);

/// Such as "2026-11-22 21:06:59.123", by a clock of that zone; `at` are milliseconds since 1970.
std::string MomentText(std::int64_t at, std::chrono::minutes zone);

/// The same of many moments, most of them in the same minute as the one before.
class MomentTexts {
  public:
    explicit MomentTexts(std::chrono::minutes zone = {}) : m_Zone(zone) {}
    /// Until the next call.
    std::string_view Text(std::int64_t at);

  private:
    std::chrono::minutes m_Zone;
    std::int64_t m_Minute = -1;  // since 1970, of m_Text; -1 for none
    std::string m_Text;
};

/// The same form from a text that may lack parts at its end, with "T" in the blank's place or
/// without. Throws EXIT_WRONG_USE, which names the option.
std::string ParseMoment(const std::string& option, std::string text);

/// Such as "0.220 ms".
std::string MillisecondsText(double time);
/// Of a time in milliseconds that a file tells, whatever that is.
std::uint64_t Microseconds(double time);
