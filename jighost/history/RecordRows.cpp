// Which value of a record goes into which column.
#include "jighost/history/RecordRows.h"

#include <algorithm>
#include <charconv>
#include <chrono>

#include "jighost/text/Numbers.h"

template <class Value>
static COLUMN Column(const char* pszName) {
    return {pszName, std::vector<Value>()};
}

static constexpr auto Number = &Column<std::int64_t>;
static constexpr auto MaybeNumber = &Column<std::optional<std::int64_t>>;
static constexpr auto Quantity = &Column<std::optional<double>>;
static constexpr auto Text = &Column<std::string>;

std::string QUANTITY::Key() const {
    std::string key;
    const auto add = [&key](const std::string& text) {
        key += text;
        key += '\0';  // which no text has
    };
    add(sequence);
    add(name);
    add(unit);
    add(std::to_string(step));
    add(min ? NumberText(*min) : "");
    add(max ? NumberText(*max) : "");
    return key;
}

static constexpr std::size_t QUANTITY_COLUMN = 3;  // of a measurement

RecordRows::RecordRows()
    : m_Runs(
          "run", {Number("id"), Text("number"), Number("started_at"), Text("started"),
                  MaybeNumber("day"), Quantity("time_ms"), Text("station"), Text("operator"),
                  MaybeNumber("serial"), Text("sequence"), Text("sequence_sha256"), Text("outcome"),
                  Text("problem"), Text("path")}),
      m_Steps(
          "step",
          {Number("run"), Number("place"), Number("number"), Text("name"), Text("operation"),
           Text("outcome"), Text("problem"), Quantity("time_ms"), Number("attempts")}),
      m_Measurements(
          "measurement", {Number("run"), Number("step"), Number("place"), Number("quantity"),
                          Quantity("value"), Text("text"), Number("judged"), Number("within")}) {}

/// Days since 1970 by the calendar of the station, whose date the text begins with; by UTC if it
/// does not.
static std::optional<std::int64_t> DayOf(const RUN_RECORD& record) {
    using namespace std::chrono;
    if (record.startedAt == 0) {
        return std::nullopt;
    }
    const std::string& text = record.started;
    const auto part = [&text](std::size_t begin, std::size_t length) {
        unsigned number = 0;
        const char* const pBegin = text.data() + std::min(begin, text.size());
        std::from_chars(pBegin, pBegin + std::min(length, text.size() - begin), number);
        return number;
    };
    if (text.size() >= 10) {
        const year_month_day date(
            year(static_cast<int>(part(0, 4))), month(part(5, 2)), day(part(8, 2)));
        if (date.ok() && date.year() >= year(1970)) {
            return sys_days(date).time_since_epoch().count();
        }
    }
    return floor<days>(milliseconds(record.startedAt)).count();
}

static std::string SequenceHash(const RUN_RECORD& record) {
    return record.sequenceFiles.empty() ? "" : record.sequenceFiles[0].sha256;
}

static std::int64_t AsNumber(std::uint64_t number) {
    return static_cast<std::int64_t>(number);
}

std::int64_t RecordRows::PlaceOf(const QUANTITY& quantity) {
    const auto [found, bNew] = m_Places.try_emplace(quantity.Key(), m_Quantities.size());
    if (bNew) {
        m_Quantities.push_back(quantity);
    }
    return found->second;
}

void RecordRows::AddStep(RECORDED_STEP& step, std::int64_t nStep, QUANTITY& quantity) {
    quantity.step = step.number;
    std::int64_t nPlace = 0;
    for (RECORDED_MEASUREMENT& each : step.measurements) {
        quantity.name = std::move(each.name);
        quantity.unit = std::move(each.unit);
        quantity.min = each.min;
        quantity.max = each.max;
        m_Measurements.Add(
            m_nRuns, nStep, ++nPlace, PlaceOf(quantity), each.number, std::move(each.text),
            std::int64_t{each.bJudged}, std::int64_t{each.bWithin});
    }
    m_Steps.Add(
        m_nRuns, nStep, AsNumber(step.number), std::move(step.name), std::move(step.operation),
        VerdictName(step.verdict), std::move(step.problem), std::optional(step.timeMs),
        AsNumber(step.attempts.size()));
}

void RecordRows::Add(RUN_RECORD& record, std::string&& path) {
    QUANTITY quantity{.sequence = record.sequence};
    std::int64_t nStep = 0;
    for (RECORDED_STEP& step : record.steps) {
        AddStep(step, ++nStep, quantity);
    }
    m_Runs.Add(
        m_nRuns, std::move(record.number), record.startedAt, record.started, DayOf(record),
        std::optional(record.timeMs), std::move(record.station), std::move(record.operatorName),
        std::optional<std::int64_t>(record.serial), std::move(record.sequence),
        SequenceHash(record), VerdictName(record.verdict), std::move(record.problem),
        std::move(path));
    ++m_nRuns;
}

void Rows::NumberRuns(const RunIDs& runs) {
    std::vector<std::int64_t>& numbers = Numbers(0);
    std::vector<bool> kept;
    for (std::int64_t& nRun : numbers) {
        const auto& id = runs[static_cast<std::size_t>(nRun)];
        kept.push_back(id.has_value());
        nRun = id.value_or(0);
    }
    if (std::find(kept.begin(), kept.end(), false) == kept.end()) {
        return;
    }
    for (COLUMN& column : m_Columns) {
        std::visit(
            [&kept](auto& values) {
                auto bKept = kept.begin();
                std::erase_if(values, [&bKept](const auto&) { return !*bKept++; });
            },
            column.values);
    }
}

void RecordRows::InsertInto(Database& database, const RunIDs& runs, const QuantityID& quantityID) {
    for (Rows* pRows : {&m_Runs, &m_Steps, &m_Measurements}) {
        pRows->NumberRuns(runs);
    }
    std::vector<std::optional<std::int64_t>> ids(m_Quantities.size());
    for (std::int64_t& nQuantity : m_Measurements.Numbers(QUANTITY_COLUMN)) {
        const auto place = static_cast<std::size_t>(nQuantity);
        if (!ids[place]) {
            ids[place] = quantityID(m_Quantities[place]);
        }
        nQuantity = *ids[place];
    }
    for (Rows* pRows : {&m_Runs, &m_Steps, &m_Measurements}) {
        pRows->InsertInto(database);
    }
}
