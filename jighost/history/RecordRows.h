// Records as rows of a history's tables.
#pragma once

#include <functional>
#include <unordered_map>
#include <utility>

#include "jighost/history/Database.h"
#include "jighost/records/RunRecord.h"

/// What a measurement has in common with those of other runs.
struct QUANTITY {
    std::string sequence;
    std::uint64_t step = 0;  ///< its number
    std::string name{};
    std::string unit{};
    std::optional<double> min{};
    std::optional<double> max{};

    /// The same for the same quantity alone.
    std::string Key() const;
};

/// Of runs in the order in which they were added.
using RunIDs = std::vector<std::optional<std::int64_t>>;

/// Rows of one table, on their way into it. The first column is the run: its place among those that
/// were added, until it has an id.
class Rows {
  public:
    Rows(const char* pszTable, std::vector<COLUMN>&& columns)
        : m_pszTable(pszTable), m_Columns(std::move(columns)) {}

    /// A value for each column, of its very type.
    template <class... Values>
    void Add(Values... values) {
        std::size_t column = 0;
        (std::get<std::vector<Values>>(m_Columns[column++].values).push_back(std::move(values)),
         ...);
    }
    /// Leaves out the rows of runs without an id.
    void NumberRuns(const RunIDs& runs);
    std::vector<std::int64_t>& Numbers(std::size_t column) {
        return std::get<std::vector<std::int64_t>>(m_Columns[column].values);
    }
    void InsertInto(Database& database) { database.Insert(m_pszTable, m_Columns); }

  private:
    const char* m_pszTable;
    std::vector<COLUMN> m_Columns;
};

/// All rows of some records, made without the database.
class RecordRows {
  public:
    RecordRows();

    /// Takes the texts out of the record. The path is that of its file.
    void Add(RUN_RECORD& record, std::string&& path);

    /// Is asked once for the id of each quantity.
    using QuantityID = std::function<std::int64_t(const QUANTITY& quantity)>;

    /// The rows of runs with an id, once.
    void InsertInto(Database& database, const RunIDs& runs, const QuantityID& quantityID);

  private:
    std::int64_t PlaceOf(const QUANTITY& quantity);
    void AddStep(RECORDED_STEP& step, std::int64_t nStep, QUANTITY& quantity);

    Rows m_Runs;
    Rows m_Steps;
    Rows m_Measurements;
    std::int64_t m_nRuns = 0;
    std::vector<QUANTITY> m_Quantities;
    std::unordered_map<std::string, std::int64_t> m_Places;  ///< of quantities, by their keys
};
