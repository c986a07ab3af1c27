// A condition of constant texts; what was asked for is bound.
#include "jighost/history/RunFilter.h"

#include <chrono>
#include <sstream>

#include "jighost/text/HostError.h"

template <class Taker>
static void EachPart(const RUN_FILTER& filter, const Taker& take) {
    const auto text = [&](const char* pszCondition, const char* pszName, const std::string& value) {
        if (!value.empty()) {
            take(pszCondition, pszName, value);
        }
    };
    const auto number = [&](const char* pszCondition, const char* pszName, const auto& value) {
        if (value) {
            take(pszCondition, pszName, std::int64_t{*value});
        }
    };
    number("run.serial = :serial", "serial", filter.serial);
    text("run.station = :station", "station", filter.station);
    text("run.sequence = :sequence", "sequence", filter.sequence);
    text("run.outcome = :outcome", "outcome", filter.outcome);
    number("run.day >= :since", "since", filter.since);
    number("run.day <= :until", "until", filter.until);
}

std::string RUN_FILTER::Condition() const {
    std::string condition;
    EachPart(*this, [&](const char* pszCondition, const char*, const auto&) {
        condition += std::string(" AND ") + pszCondition;
    });
    return condition;
}

void RUN_FILTER::BindTo(Query& query) const {
    EachPart(*this, [&](const char*, const char* pszName, const auto& value) {
        query.With(pszName, value);
    });
}

std::int64_t ParseDay(const std::string& option, const std::string& text) {
    int year = 0;
    unsigned month = 0;
    unsigned day = 0;
    char first = 0;
    char second = 0;
    std::istringstream stream(text);
    stream >> year >> first >> month >> second >> day;
    const std::chrono::year_month_day date{
        std::chrono::year(year), std::chrono::month(month), std::chrono::day(day)};
    if (text.size() != 10 || !stream || !stream.eof() || first != '-' || second != '-' ||
        !date.ok()) {
        throw HostError(
            EXIT_WRONG_USE, option + ' ' + text + ": expected a day such as 2026-11-23");
    }
    return std::chrono::sys_days(date).time_since_epoch().count();
}
