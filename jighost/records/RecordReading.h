// Values taken out of a document by name, each checked: what is missing or of another kind throws
// EXIT_WRONG_USE, "FILE: steps[3].time_ms: expected a number". The document is one of simdjson,
// since records are imported by the hundred thousand.
#pragma once

#include <simdjson.h>

#include <concepts>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "jighost/records/RunRecordForm.h"
#include "jighost/text/HostError.h"

/// Where a value stands; put into words only for an error.
struct ELEMENT_PLACE {
    const ELEMENT_PLACE* pOuter = nullptr;  ///< none of the file itself
    std::string_view name;                  ///< of a field or the file
    std::size_t index = 0;                  ///< in a list, from 1; 0 of a field

    /// Such as "FILE: steps[3].time_ms".
    std::string Text() const {
        if (index > 0) {
            return pOuter->Text() + '[' + std::to_string(index) + ']';
        }
        const char* const pszAhead = pOuter == nullptr           ? ""
                                     : pOuter->pOuter == nullptr ? ": "
                                                                 : ".";
        return (pOuter == nullptr ? "" : pOuter->Text()) + pszAhead + std::string(name);
    }
};

class RecordReading {
  public:
    /// Of an object of a document that outlives this, and so does its place.
    RecordReading(simdjson::dom::object object, const ELEMENT_PLACE& place)
        : m_Object(object), m_Place(place) {}

    template <class Value>
    void operator()(const char* pszName, Value& value) const {
        const ELEMENT_PLACE place = PlaceOf(pszName);
        Take(At(place), place, value);
    }
    template <class Work>
    void Object(const char* pszName, const Work& work) const {
        const ELEMENT_PLACE place = PlaceOf(pszName);
        const RecordReading within(As<simdjson::dom::object>(At(place), place, "an object"), place);
        work(within);
    }
    /// Each object of a list.
    template <class Work>
    void Each(const char* pszName, const Work& work) const {
        const ELEMENT_PLACE place = PlaceOf(pszName);
        ELEMENT_PLACE element{&place, {}, 0};
        for (const auto each : As<simdjson::dom::array>(At(place), place, "a list")) {
            ++element.index;
            work(RecordReading(As<simdjson::dom::object>(each, element, "an object"), element));
        }
    }
    bool Has(const char* pszName) const { return m_Object[pszName].error() == simdjson::SUCCESS; }
    bool IsText(const char* pszName) const { return At(PlaceOf(pszName)).is_string(); }

    /// All of it.
    template <class Record>
    Record As() const {
        Record record;
        Describe(*this, record);
        return record;
    }

    [[noreturn]] void Refuse(const char* pszName, const std::string& expected) const {
        RefuseAt(PlaceOf(pszName), expected);
    }

  private:
    using Element = simdjson::dom::element;

    [[noreturn]] static void RefuseAt(const ELEMENT_PLACE& place, const std::string& expected) {
        throw HostError(EXIT_WRONG_USE, place.Text() + ": expected " + expected);
    }
    ELEMENT_PLACE PlaceOf(const char* pszName) const { return {&m_Place, pszName, 0}; }
    Element At(const ELEMENT_PLACE& place) const {
        Element element;
        if (m_Object[place.name].get(element) != simdjson::SUCCESS) {
            RefuseAt(place, "a value");
        }
        return element;
    }
    template <class Value>
    static Value As(Element json, const ELEMENT_PLACE& place, const char* pszExpected) {
        Value value;
        if (json.get(value) != simdjson::SUCCESS) {
            RefuseAt(place, pszExpected);
        }
        return value;
    }

    static void Take(Element json, const ELEMENT_PLACE& place, std::string& value) {
        value = As<std::string_view>(json, place, "a text");
    }
    static void Take(Element json, const ELEMENT_PLACE& place, bool& value) {
        value = As<bool>(json, place, "true or false");
    }
    static void Take(Element json, const ELEMENT_PLACE& place, double& value) {
        value = As<double>(json, place, "a number");
    }
    template <std::integral Number>
    static void Take(Element json, const ELEMENT_PLACE& place, Number& value) {
        std::int64_t nValue = 0;
        std::uint64_t unValue = 0;
        if (json.get(nValue) == simdjson::SUCCESS && std::in_range<Number>(nValue)) {
            value = static_cast<Number>(nValue);
        } else if (json.get(unValue) == simdjson::SUCCESS && std::in_range<Number>(unValue)) {
            value = static_cast<Number>(unValue);
        } else {
            RefuseAt(place, "a whole number of fewer digits");
        }
    }
    template <class Value>
    static void Take(Element json, const ELEMENT_PLACE& place, std::optional<Value>& value) {
        value.reset();
        if (!json.is_null()) {
            Take(json, place, value.emplace());
        }
    }
    static void Take(Element json, const ELEMENT_PLACE& place, VERDICT& value) {
        static const char EXPECTED[] = "passed, failed, error, aborted or unfinished";
        const auto verdict = VerdictOfName(As<std::string_view>(json, place, EXPECTED));
        if (!verdict) {
            RefuseAt(place, EXPECTED);
        }
        value = *verdict;
    }
    /// The fields of a record: nothing in them is deeper than a list, and no form has as many.
    static constexpr std::size_t MOST_FIELDS = 1000;
    static void Take(Element json, const ELEMENT_PLACE& place, Json& value) {
        value = Json::object();
        for (const auto [name, field] : As<simdjson::dom::object>(json, place, "an object")) {
            const ELEMENT_PLACE within{&place, name, 0};
            if (value.size() == MOST_FIELDS) {
                RefuseAt(place, "at most " + std::to_string(MOST_FIELDS) + " fields");
            }
            Json& taken = value[std::string(name)];
            simdjson::dom::array list;
            if (field.get(list) != simdjson::SUCCESS) {
                taken = Primitive(field, within);
                continue;
            }
            taken = Json::array();
            for (const auto each : list) {
                taken.push_back(Primitive(each, within));
            }
        }
    }
    static Json Primitive(Element json, const ELEMENT_PLACE& place) {
        switch (json.type()) {
            case simdjson::dom::element_type::ARRAY:
            case simdjson::dom::element_type::OBJECT:
                RefuseAt(place, "a value or a list of values");
            case simdjson::dom::element_type::INT64:
                return std::int64_t{json};
            case simdjson::dom::element_type::UINT64:
                return std::uint64_t{json};
            case simdjson::dom::element_type::DOUBLE:
                return double{json};
            case simdjson::dom::element_type::STRING:
                return std::string(std::string_view(json));
            case simdjson::dom::element_type::BOOL:
                return bool{json};
            default:
                return nullptr;
        }
    }
    static void Take(
        Element json, const ELEMENT_PLACE& place,
        std::vector<std::pair<std::string, std::string>>& values) {
        for (const auto [name, text] : As<simdjson::dom::object>(json, place, "an object")) {
            const ELEMENT_PLACE within{&place, name, 0};
            Take(text, within, values.emplace_back(name, "").second);
        }
    }
    template <class Value>
    static void Take(Element json, const ELEMENT_PLACE& place, std::vector<Value>& values) {
        ELEMENT_PLACE element{&place, {}, 0};
        const auto list = As<simdjson::dom::array>(json, place, "a list");
        values.reserve(list.size());
        for (const auto each : list) {
            ++element.index;
            Take(each, element, values.emplace_back());
        }
    }
    template <class Record>
    requires std::is_class_v<Record>
    static void Take(Element json, const ELEMENT_PLACE& place, Record& record) {
        const RecordReading reading(As<simdjson::dom::object>(json, place, "an object"), place);
        Describe(reading, record);
    }

    simdjson::dom::object m_Object;
    const ELEMENT_PLACE& m_Place;
};
