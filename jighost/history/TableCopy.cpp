// By libpq, which SOCI has loaded for its connection. It is called as it lies there: with all that
// it brings along, each jighost that is bound to it would start later.
#include "jighost/history/TableCopy.h"

#include <soci/postgresql/soci-postgresql.h>
#include <soci/soci.h>

#include <charconv>
#include <memory>

#include "platform/Platform.h"

namespace {

/// The functions in use, under their own names.
class Libpq {
    const HMODULE m_Library = LoadLibraryA("libpq.so.5");

  public:
    decltype(&PQexec) Exec = Find<decltype(&PQexec)>("PQexec");
    decltype(&PQputCopyData) PutCopyData = Find<decltype(&PQputCopyData)>("PQputCopyData");
    decltype(&PQputCopyEnd) PutCopyEnd = Find<decltype(&PQputCopyEnd)>("PQputCopyEnd");
    decltype(&PQgetResult) GetResult = Find<decltype(&PQgetResult)>("PQgetResult");
    decltype(&PQresultStatus) ResultStatus = Find<decltype(&PQresultStatus)>("PQresultStatus");
    decltype(&PQerrorMessage) ErrorMessage = Find<decltype(&PQerrorMessage)>("PQerrorMessage");
    decltype(&PQclear) Clear = Find<decltype(&PQclear)>("PQclear");

    static const Libpq& Instance() {
        static const Libpq libpq;
        return libpq;
    }

  private:
    template <class Function>
    Function Find(const char* pszName) const {
        const auto function = reinterpret_cast<Function>(GetProcAddress(m_Library, pszName));
        if (function == nullptr) {
            throw soci::soci_error(std::string("can't load libpq.so.5: ") + pszName);
        }
        return function;
    }
};

/// One COPY. Each row is a line of fields between tabs.
class CopyStream {
  public:
    CopyStream(PGconn* pConnection, const std::string& statement) : m_pConnection(pConnection) {
        Require(m_Libpq.Exec(m_pConnection, statement.c_str()), PGRES_COPY_IN);
    }
    void Put(const std::string& lines) {
        const int nSize = static_cast<int>(lines.size());
        if (m_Libpq.PutCopyData(m_pConnection, lines.data(), nSize) != 1) {
            Fail();
        }
    }
    void End() {
        if (m_Libpq.PutCopyEnd(m_pConnection, nullptr) != 1) {
            Fail();
        }
        Require(m_Libpq.GetResult(m_pConnection), PGRES_COMMAND_OK);
        m_Libpq.GetResult(m_pConnection);  // null, which ends it
    }

  private:
    void Require(PGresult* pResult, ExecStatusType status) {
        const std::unique_ptr<PGresult, decltype(&PQclear)> owner(pResult, m_Libpq.Clear);
        if (m_Libpq.ResultStatus(pResult) != status) {
            Fail();
        }
    }
    [[noreturn]] void Fail() { throw soci::soci_error(m_Libpq.ErrorMessage(m_pConnection)); }

    const Libpq& m_Libpq = Libpq::Instance();
    PGconn* m_pConnection;
};

/// Adds a row's value of a column.
class CopiedField {
  public:
    CopiedField(std::string& lines, std::size_t row) : m_Lines(lines), m_Row(row) {}

    template <class Value>
    void operator()(const std::vector<Value>& values) const {
        Add(values[m_Row]);
    }

  private:
    template <class Number>
    requires std::is_arithmetic_v<Number>
    void Add(Number number) const {
        char szNumber[32];
        m_Lines.append(szNumber, std::to_chars(szNumber, std::end(szNumber), number).ptr);
    }
    template <class Value>
    void Add(const std::optional<Value>& value) const {
        value ? Add(*value) : void(m_Lines += "\\N");
    }
    void Add(std::string_view text) const {
        static const std::string_view SPECIAL = "\\\t\n\r";
        for (auto at = text.find_first_of(SPECIAL); at != std::string_view::npos;
             at = text.find_first_of(SPECIAL)) {
            (m_Lines.append(text.substr(0, at)) += '\\') += "\\tnr"[SPECIAL.find(text[at])];
            text.remove_prefix(at + 1);
        }
        m_Lines.append(text);
    }

    std::string& m_Lines;
    std::size_t m_Row;
};

}  // namespace

static std::string CopyText(const char* pszTable, const std::vector<COLUMN>& columns) {
    std::string names;
    for (const COLUMN& column : columns) {
        names += (names.empty() ? "" : ", ") + std::string(column.pszName);
    }
    return std::string("COPY ") + pszTable + " (" + names + ") FROM STDIN";
}

/// A sanitizer would ask for the type's information, which is in the part of SOCI that it loads.
__attribute__((no_sanitize("vptr"))) static PGconn* Connection(soci::session& session) {
    return static_cast<soci::postgresql_session_backend*>(session.get_backend())->conn_;
}

void CopyInto(soci::session& session, const char* pszTable, const std::vector<COLUMN>& columns) {
    static constexpr std::size_t BYTES_AT_ONCE = 65536;
    CopyStream stream(Connection(session), CopyText(pszTable, columns));
    const std::size_t rows =
        std::visit([](const auto& values) { return values.size(); }, columns[0].values);
    std::string lines;
    for (std::size_t row = 0; row < rows; ++row) {
        for (const COLUMN& column : columns) {
            std::visit(CopiedField(lines, row), column.values);
            lines += '\t';
        }
        lines.back() = '\n';
        if (lines.size() >= BYTES_AT_ONCE || row + 1 == rows) {
            stream.Put(lines);
            lines.clear();
        }
    }
    stream.End();
}
