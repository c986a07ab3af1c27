// Values taken out of a document by name, each checked: what is missing or of another kind throws
// EXIT_WRONG_USE, "FILE: steps[3].time_ms: expected a number".
#pragma once

#include <cmath>
#include <concepts>
#include <limits>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "jighost/records/RunRecordForm.h"
#include "jighost/text/HostError.h"

class RecordReading {
  public:
    /// Of an object, which outlives this; `place` stands ahead of names, such as "FILE: steps[3].".
    RecordReading(const Json& object, std::string place)
        : m_Object(object), m_Place(std::move(place)) {}

    template <class Value>
    void operator()(const char* pszName, Value& value) const {
        Take(At(pszName), m_Place + pszName, value);
    }
    template <class Work>
    void Object(const char* pszName, const Work& work) const {
        const RecordReading within(
            RequireObject(At(pszName), m_Place + pszName), m_Place + pszName + ".");
        work(within);
    }
    /// Each object of a list.
    template <class Work>
    void Each(const char* pszName, const Work& work) const {
        const std::string place = m_Place + pszName;
        const Json& list = At(pszName);
        Require(list.is_array(), place, "a list");
        for (std::size_t i = 0; i < list.size(); ++i) {
            const std::string of = place + '[' + std::to_string(i + 1) + ']';
            work(RecordReading(RequireObject(list[i], of), of + '.'));
        }
    }
    bool Has(const char* pszName) const { return m_Object.contains(pszName); }
    bool IsText(const char* pszName) const { return At(pszName).is_string(); }

    /// All of it.
    template <class Record>
    Record As() const {
        Record record;
        Describe(*this, record);
        return record;
    }

    [[noreturn]] void Refuse(const char* pszName, const std::string& expected) const {
        RefuseAt(m_Place + pszName, expected);
    }

  private:
    [[noreturn]] static void RefuseAt(const std::string& place, const std::string& expected) {
        throw HostError(EXIT_WRONG_USE, place + ": expected " + expected);
    }
    static void Require(bool bRight, const std::string& place, const char* pszExpected) {
        if (!bRight) {
            RefuseAt(place, pszExpected);
        }
    }
    static const Json& RequireObject(const Json& json, const std::string& place) {
        Require(json.is_object(), place, "an object");
        return json;
    }
    const Json& At(const char* pszName) const {
        const auto found = m_Object.find(pszName);
        Require(found != m_Object.end(), m_Place + pszName, "a value");
        return *found;
    }

    static void Take(const Json& json, const std::string& place, std::string& value) {
        Require(json.is_string(), place, "a text");
        value = json.get<std::string>();
    }
    static void Take(const Json& json, const std::string& place, bool& value) {
        Require(json.is_boolean(), place, "true or false");
        value = json.get<bool>();
    }
    static void Take(const Json& json, const std::string& place, double& value) {
        Require(json.is_number(), place, "a number");
        value = json.get<double>();
    }
    template <std::integral Number>
    static void Take(const Json& json, const std::string& place, Number& value) {
        const bool bHuge =
            json.is_number_unsigned() && !std::in_range<Number>(json.get<std::uint64_t>());
        Require(
            json.is_number_integer() && !bHuge &&
                (json.is_number_unsigned() || std::in_range<Number>(json.get<std::int64_t>())),
            place, "a whole number of fewer digits");
        value = json.get<Number>();
    }
    template <class Value>
    static void Take(const Json& json, const std::string& place, std::optional<Value>& value) {
        value.reset();
        if (!json.is_null()) {
            Take(json, place, value.emplace());
        }
    }
    static void Take(const Json& json, const std::string& place, VERDICT& value) {
        const auto verdict = VerdictOfName(json.is_string() ? json.get<std::string>() : "");
        Require(verdict.has_value(), place, "passed, failed, error, aborted or unfinished");
        value = *verdict;
    }
    /// The fields of a record: nothing in them is deeper than a list.
    static void Take(const Json& json, const std::string& place, Json& value) {
        for (const auto& [name, field] : RequireObject(json, place).items()) {
            for (const Json& each : field.is_array() ? field : Json::array({field})) {
                Require(each.is_primitive(), place + '.' + name, "a value or a list of values");
            }
        }
        value = json;
    }
    static void Take(
        const Json& json, const std::string& place,
        std::vector<std::pair<std::string, std::string>>& values) {
        for (const auto& [name, text] : RequireObject(json, place).items()) {
            Take(text, place + '.' + name, values.emplace_back(name, "").second);
        }
    }
    template <class Value>
    static void Take(const Json& json, const std::string& place, std::vector<Value>& values) {
        Require(json.is_array(), place, "a list");
        for (const Json& each : json) {
            const std::string of = place + '[' + std::to_string(values.size() + 1) + ']';
            Take(each, of, values.emplace_back());
        }
    }
    template <class Record>
    requires std::is_class_v<Record>
    static void Take(const Json& json, const std::string& place, Record& record) {
        record = RecordReading(RequireObject(json, place), place + '.').As<Record>();
    }

    const Json& m_Object;
    std::string m_Place;
};
