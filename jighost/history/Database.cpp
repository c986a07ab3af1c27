// Databases by the library SOCI, which TableCopy alone knows besides.
#include "jighost/history/Database.h"

#include <soci/soci.h>

#include <cctype>
#include <charconv>
#include <deque>
#include <filesystem>
#include <functional>

#include "jighost/history/ServerAddress.h"
#include "jighost/history/TableCopy.h"
#include "jighost/text/HostError.h"
#include "platform/Utf8Path.h"

struct Database::CONNECTION {
    soci::session session;
};

/// What a database says, without the function that says it, and with all that makes blanks as one.
static std::string ErrorText(const soci::soci_error& error) {
    std::string text = error.get_error_message();
    const std::size_t function = text.find("::");
    if (function < text.find(' ')) {
        text.erase(0, text.find(' ', function) + 1);
    }
    std::string line;
    for (const char character : text) {
        const bool bBlank = std::isspace(static_cast<unsigned char>(character)) != 0;
        if (!bBlank || (!line.empty() && line.back() != ' ')) {
            line += bBlank ? ' ' : character;
        }
    }
    line.erase(line.find_last_not_of(' ') + 1);
    return line;
}

/// Does `work`; what a database says against it is told on one line.
template <class Work>
static auto WithDatabase(const std::string& name, const Work& work) {
    try {
        return work();
    } catch (const soci::soci_error& e) {
        throw HostError(EXIT_HOST_ERROR, name + ": " + ErrorText(e));
    }
}

// --- Connections ---

// How long one waits for another that writes.
static const char WAIT_FOR_WRITERS[] = "PRAGMA busy_timeout = 60000";

/// SOCI takes a path in quotes, in which it knows no way to write a quote.
static std::string FileAddress(const std::string& path) {
    if (path.empty() || path.find('"') != std::string::npos) {
        throw HostError(
            EXIT_WRONG_USE, "--database " + path + ": expected a path without quotes, or a URL");
    }
    return "db=\"" + path + '"';
}

// SOCI loads the library of the one kind or the other when it is asked for: those that PostgreSQL's
// brings along would have each jighost start later.

static void OpenFile(soci::session& session, const std::string& path) {
    // Whole: what SQLite makes of other words, such as ":memory:", keeps nothing.
    session.open("sqlite3", FileAddress(TextOf(std::filesystem::absolute(PathOf(path)))));
    session << WAIT_FOR_WRITERS;
    session << "PRAGMA trusted_schema = OFF";  // the file may be anybody's
}

/// The server's people see by it who is at work. And SOCI takes no URL apart: it puts a "=" behind
/// one in which there is none.
static std::string ServerURL(const std::string& url) {
    return url + (url.find('?') == std::string::npos ? '?' : '&') + "application_name=jighost";
}

static void OpenServer(soci::session& session, const std::string& url) {
    session.open("postgresql", ServerURL(url));
    session << "SET client_encoding = 'UTF8'";
}

Database::Database(const std::string& place)
    : m_Name(IsServer(place) ? ServerName(place) : place),
      m_bServer(IsServer(place)),
      m_pConnection(std::make_unique<CONNECTION>()) {
    WithDatabase(m_Name, [&] {
        m_bServer ? OpenServer(m_pConnection->session, place)
                  : OpenFile(m_pConnection->session, place);
    });
}

Database::~Database() = default;

bool Database::IsServer(const std::string& place) {
    return place.starts_with("postgresql://") || place.starts_with("postgres://");
}

void Database::Run(const std::string& statement) {
    WithDatabase(m_Name, [&] { m_pConnection->session << statement; });
}

// --- Many rows at once ---

namespace {

/// Columns as SQLite takes them: each value is bound, row for row, to one prepared statement.
class BoundColumns {
  public:
    explicit BoundColumns(soci::statement& statement) : m_Statement(statement) {}

    void operator()(const std::vector<std::int64_t>& values) {
        Bind(std::vector<long long>(values.begin(), values.end()));
    }
    void operator()(std::vector<std::string>& values) { m_Statement.exchange(soci::use(values)); }
    void operator()(const std::vector<std::optional<std::int64_t>>& values) {
        BindOptional<long long>(values);
    }
    void operator()(const std::vector<std::optional<double>>& values) {
        BindOptional<double>(values);
    }

  private:
    void Bind(std::vector<long long>&& values) {
        m_Statement.exchange(soci::use(m_Numbers.emplace_back(std::move(values))));
    }
    template <class Number, class Value>
    void BindOptional(const std::vector<std::optional<Value>>& values) {
        std::vector<Number> numbers;
        auto& indicators = m_Indicators.emplace_back();
        for (const auto& value : values) {
            numbers.push_back(value.value_or(0));
            indicators.push_back(value ? soci::i_ok : soci::i_null);
        }
        if constexpr (std::is_same_v<Number, double>) {
            m_Statement.exchange(soci::use(m_Doubles.emplace_back(std::move(numbers)), indicators));
        } else {
            m_Statement.exchange(soci::use(m_Numbers.emplace_back(std::move(numbers)), indicators));
        }
    }

    soci::statement& m_Statement;
    // SOCI keeps their addresses.
    std::deque<std::vector<long long>> m_Numbers;
    std::deque<std::vector<double>> m_Doubles;
    std::deque<std::vector<soci::indicator>> m_Indicators;
};

}  // namespace

/// "INSERT INTO table (a, b) VALUES (:a, :b)".
static std::string InsertText(const char* pszTable, const std::vector<COLUMN>& columns) {
    std::string names;
    std::string values;
    for (const COLUMN& column : columns) {
        names += (names.empty() ? "" : ", ") + std::string(column.pszName);
        values += (values.empty() ? ":" : ", :") + std::string(column.pszName);
    }
    return std::string("INSERT INTO ") + pszTable + " (" + names + ") VALUES (" + values + ")";
}

static void BindInto(soci::session& session, const char* pszTable, std::vector<COLUMN>& columns) {
    soci::statement statement(session);
    BoundColumns bound(statement);
    for (COLUMN& column : columns) {
        std::visit(bound, column.values);
    }
    statement.alloc();
    statement.prepare(InsertText(pszTable, columns));
    statement.define_and_bind();
    statement.execute(true);
}

void Database::Insert(const char* pszTable, std::vector<COLUMN>& columns) {
    if (std::visit([](const auto& values) { return values.empty(); }, columns[0].values)) {
        return;
    }
    WithDatabase(m_Name, [&] {
        m_bServer ? CopyInto(m_pConnection->session, pszTable, columns)
                  : BindInto(m_pConnection->session, pszTable, columns);
    });
}

// --- Single statements ---

struct Query::STATE {
    /// What SOCI fills, and what takes it to its place.
    struct SLOT {
        std::variant<long long, double, std::string> value;
        soci::indicator indicator = soci::i_ok;
        std::function<void()> take;
    };

    template <class Value, class Target>
    void Into(Target& target) {
        SLOT& slot = slots.emplace_back();
        slot.value = Value();
        statement.exchange(soci::into(std::get<Value>(slot.value), slot.indicator));
        slot.take = [&slot, &target] {
            target =
                slot.indicator == soci::i_null ? Target() : Target(std::get<Value>(slot.value));
        };
    }
    template <class Value>
    void With(const char* pszName, Value value) {
        statement.exchange(soci::use(
            std::get<Value>(values.emplace_back(std::move(value))), std::string(pszName)));
    }
    void Execute(bool bExchange) {
        statement.alloc();
        statement.prepare(text);
        statement.define_and_bind();
        statement.execute(bExchange);
        bExecuted = true;
    }

    const std::string& name;
    std::string text;
    soci::statement statement;
    // SOCI keeps their addresses.
    std::deque<std::variant<long long, std::string>> values;
    std::deque<SLOT> slots;
    bool bExecuted = false;
};

Query::Query(Database& database, const std::string& statement)
    : m_pState(new STATE{
          database.m_Name, statement, soci::statement(database.m_pConnection->session), {}, {}}) {}

Query::~Query() = default;

Query& Query::With(const char* pszName, std::int64_t nValue) {
    m_pState->With<long long>(pszName, nValue);
    return *this;
}
Query& Query::With(const char* pszName, const std::string& value) {
    m_pState->With<std::string>(pszName, value);
    return *this;
}
Query& Query::Into(std::int64_t& nValue) {
    m_pState->Into<long long>(nValue);
    return *this;
}
Query& Query::Into(bool& bValue) {
    m_pState->Into<long long>(bValue);
    return *this;
}
Query& Query::Into(double& value) {
    m_pState->Into<double>(value);
    return *this;
}
Query& Query::Into(std::string& value) {
    m_pState->Into<std::string>(value);
    return *this;
}
Query& Query::Into(std::optional<std::int64_t>& value) {
    m_pState->Into<long long>(value);
    return *this;
}
Query& Query::Into(std::optional<double>& value) {
    m_pState->Into<double>(value);
    return *this;
}

bool Query::Next() {
    return WithDatabase(m_pState->name, [this] {
        if (!m_pState->bExecuted) {
            m_pState->Execute(false);
        }
        if (!m_pState->statement.fetch()) {
            return false;
        }
        for (const STATE::SLOT& slot : m_pState->slots) {
            slot.take();
        }
        return true;
    });
}

void Query::Run() {
    WithDatabase(m_pState->name, [this] { m_pState->Execute(true); });
}

// --- Transactions ---

Transaction::Transaction(Database& database, KIND kind) : m_Database(database) {
    static const char* const BEGINNINGS[2][2] = {
        {"BEGIN", "BEGIN IMMEDIATE"},
        {"BEGIN ISOLATION LEVEL REPEATABLE READ READ ONLY", "BEGIN"},
    };
    m_Database.Run(BEGINNINGS[m_Database.IsServer() ? 1 : 0][kind]);
    if (m_Database.IsServer() && kind == WRITE) {
        // Tables may be missing yet, so that it is a lock without one.
        m_Database.Run("SELECT pg_advisory_xact_lock(7310301118498116)");
    }
}

Transaction::~Transaction() {
    if (m_bOpen) {
        try {
            m_Database.Run("ROLLBACK");
        } catch (const HostError&) {  // the database does so by itself
        }
    }
}

void Transaction::Commit() {
    m_Database.Run("COMMIT");
    m_bOpen = false;
}
