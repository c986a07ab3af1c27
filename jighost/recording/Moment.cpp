// Dates by the calendar of the standard library, digits by hand: a recording has millions of them.
#include "jighost/recording/Moment.h"

#include <algorithm>
#include <cmath>

#include "jighost/output/RowWriter.h"
#include "jighost/text/HostError.h"
#include "jighost/text/Numbers.h"

using std::chrono::milliseconds;
using std::chrono::minutes;

std::chrono::minutes ZoneOf(std::string_view moment) {
    static const std::size_t LENGTH = std::string_view("+01:00").size();
    if (moment.size() < LENGTH) {
        return minutes(0);
    }
    const std::string_view zone = moment.substr(moment.size() - LENGTH);
    const auto hours = ParseNumber<std::uint32_t>(zone.substr(1, 2));
    const auto rest = ParseNumber<std::uint32_t>(zone.substr(4));
    if ((zone[0] != '+' && zone[0] != '-') || !hours || !rest) {
        return minutes(0);
    }
    const minutes size(static_cast<int>(*hours * 60 + *rest));
    return zone[0] == '-' ? -size : size;
}

std::string MomentText(std::int64_t at, minutes zone) {
    // From the year 0 on: a hostile number is no date.
    static const std::int64_t LONGEST = 250'000'000'000'000;
    const std::chrono::sys_time<milliseconds> moment(
        milliseconds(std::clamp(at, std::int64_t{0}, LONGEST)) + zone);
    const auto day = std::chrono::floor<std::chrono::days>(moment);
    const std::chrono::year_month_day date(day);
    const auto time = static_cast<std::uint64_t>((moment - day).count());
    std::string text = "0000-00-00 00:00:00.000";
    PutDigits(text.data() + 4, 4, static_cast<std::uint64_t>(std::max(0, int{date.year()})));
    PutDigits(text.data() + 7, 2, unsigned{date.month()});
    PutDigits(text.data() + 10, 2, unsigned{date.day()});
    PutDigits(text.data() + 13, 2, time / 3'600'000);
    PutDigits(text.data() + 16, 2, time / 60'000 % 60);
    PutDigits(text.data() + 19, 2, time / 1000 % 60);
    PutDigits(text.data() + 23, 3, time % 1000);
    return text;
}

std::string_view MomentTexts::Text(std::int64_t at) {
    const std::int64_t minute = at < 0 ? -1 : at / 60'000;
    if (minute == -1 || minute != m_Minute) {
        m_Minute = minute;
        m_Text = MomentText(at, m_Zone);
    }
    const auto time = static_cast<std::uint64_t>(std::max(at, std::int64_t{0}));
    PutDigits(m_Text.data() + 19, 2, time / 1000 % 60);
    PutDigits(m_Text.data() + 23, 3, time % 1000);
    return m_Text;
}

std::uint64_t Microseconds(double time) {
    static const double LONGEST = 1e15;  // a hostile number is no time
    return static_cast<std::uint64_t>(std::llround(std::clamp(time, 0.0, LONGEST) * 1000));
}

std::string MillisecondsText(double time) {
    const std::uint64_t microseconds = Microseconds(time);
    std::string text = std::to_string(microseconds / 1000) + ".000 ms";
    PutDigits(text.data() + text.size() - 3, 3, microseconds % 1000);
    return text;
}

std::string ParseMoment(const std::string& option, std::string text) {
    static const std::string_view FORM = "0000-00-00 00:00:00.000";
    static const std::size_t LENGTHS[] = {10, 16, 19, 23};
    const std::string given = text;
    std::replace(text.begin(), text.end(), 'T', ' ');
    const bool bLength =
        std::find(std::begin(LENGTHS), std::end(LENGTHS), text.size()) != std::end(LENGTHS);
    const auto isOfForm = [](char character, char form) {
        return form == '0' ? character >= '0' && character <= '9' : character == form;
    };
    if (!bLength || !std::equal(text.begin(), text.end(), FORM.begin(), isOfForm)) {
        throw HostError(
            EXIT_WRONG_USE, option +
                                ": expected a date, such as 2026-11-22, with or without a time "
                                "behind it, such as 21:06 or 21:06:59.123, got '" +
                                given + "'");
    }
    return text;
}
