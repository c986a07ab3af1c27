// The file is read whole, then line by line.
#include "jighost/text/CsvFile.h"

#include <sstream>

#include "jighost/text/HostError.h"
#include "platform/TextFile.h"
#include "platform/Utf8Path.h"

static const std::uint64_t LARGEST_TABLE = 16'000'000;
static const std::size_t MOST_ROWS = 10'000;
static const std::string_view BYTE_ORDER_MARK = "\xEF\xBB\xBF";

namespace {

/// Takes the values of a line one by one.
class CsvLine {
  public:
    CsvLine(std::string place, std::string_view line) : m_Place(std::move(place)), m_Rest(line) {}

    std::vector<std::string> Values() {
        std::vector<std::string> values;
        do {
            values.push_back(m_Rest.starts_with('"') ? QuotedValue() : PlainValue());
        } while (HasMore());
        return values;
    }

  private:
    std::string PlainValue() {
        std::string value(m_Rest.substr(0, m_Rest.find(',')));
        m_Rest.remove_prefix(value.size());
        return value;
    }

    std::string QuotedValue() {
        std::string value;
        for (bool bOpen = true; bOpen;) {
            m_Rest.remove_prefix(1);  // the quote ahead, or the second one of ""
            const std::size_t end = m_Rest.find('"');
            if (end == std::string_view::npos) {
                Refuse("expected a quote behind a quoted text, on the same line");
            }
            value += m_Rest.substr(0, end);
            m_Rest.remove_prefix(end + 1);
            bOpen = m_Rest.starts_with('"');
            value += bOpen ? "\"" : "";
        }
        return value;
    }

    /// Takes the comma ahead of the next value.
    bool HasMore() {
        if (m_Rest.empty()) {
            return false;
        }
        if (m_Rest.front() != ',') {
            Refuse("expected a comma behind a quoted text");
        }
        m_Rest.remove_prefix(1);
        return true;
    }

    [[noreturn]] void Refuse(const std::string& problem) const {
        throw HostError(EXIT_WRONG_USE, m_Place + ": " + problem);
    }

    const std::string m_Place;
    std::string_view m_Rest;
};

}  // namespace

static std::string ReadTable(const std::string& path) {
    try {
        return ReadTextFile(PathOf(path), LARGEST_TABLE);
    } catch (const std::runtime_error& e) {
        throw HostError(EXIT_WRONG_USE, e.what());
    }
}

static void AddRow(CSV_TABLE& table, const std::string& place, CSV_ROW row) {
    if (table.names.empty()) {
        table.names = std::move(row.values);
        return;
    }
    if (row.values.size() != table.names.size()) {
        throw HostError(
            EXIT_WRONG_USE, place + ": expected " + std::to_string(table.names.size()) +
                                " values, got " + std::to_string(row.values.size()));
    }
    table.rows.push_back(std::move(row));
    if (table.rows.size() > MOST_ROWS) {
        throw HostError(
            EXIT_WRONG_USE, place + ": expected at most " + std::to_string(MOST_ROWS) + " rows");
    }
}

CSV_TABLE ReadCsvFile(const std::string& path) {
    std::string text = ReadTable(path);
    if (text.starts_with(BYTE_ORDER_MARK)) {
        text.erase(0, BYTE_ORDER_MARK.size());
    }
    std::istringstream lines(text);
    CSV_TABLE table;
    std::size_t number = 0;
    for (std::string line; std::getline(lines, line);) {
        const std::string place = path + ':' + std::to_string(++number);
        if (line.ends_with('\r')) {
            line.pop_back();
        }
        if (!line.empty()) {
            AddRow(table, place, {number, CsvLine(place, line).Values()});
        }
    }
    if (table.rows.empty()) {
        throw HostError(
            EXIT_WRONG_USE, path + ": expected a line of names and a row at least, got none");
    }
    return table;
}
