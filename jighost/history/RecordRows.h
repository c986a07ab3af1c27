// Records as rows of a history's tables.
#pragma once

#include <functional>
#include <utility>

#include "jighost/history/Database.h"
#include "jighost/history/RecordBatch.h"

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

/// Rows of one table, on their way into it.
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
    void InsertInto(Database& database) { database.Insert(m_pszTable, m_Columns); }

  private:
    const char* m_pszTable;
    std::vector<COLUMN> m_Columns;
};

class RecordRows {
  public:
    RecordRows();

    /// Is asked for the id of each measurement's quantity.
    using QuantityID = std::function<std::int64_t(const QUANTITY& quantity)>;

    /// Takes the texts out of the record.
    void Add(std::int64_t nRun, FILED_RECORD& filed, const QuantityID& quantityID);
    void InsertInto(Database& database);

  private:
    Rows m_Runs;
    Rows m_Steps;
    Rows m_Measurements;
};
