// While one batch goes into the database, the next one is read.
#include "jighost/history/Import.h"

#include <algorithm>
#include <future>
#include <map>
#include <span>
#include <unordered_map>

#include "jighost/history/RecordRows.h"
#include "jighost/output/Json.h"
#include "recorder/Sha256.h"

static std::int64_t Greatest(Database& database, const std::string& table) {
    std::int64_t nGreatest = 0;
    Query(database, "SELECT coalesce(max(id), 0) FROM " + table).Into(nGreatest).Next();
    return nGreatest;
}

// --- Quantities ---

namespace {

/// The quantities of a history, for one transaction that writes.
class Quantities {
  public:
    explicit Quantities(Database& database) : m_Database(database) {}

    std::int64_t ID(const QUANTITY& quantity) {
        const auto [known, bNew] = m_IDs.try_emplace(quantity.Key());
        if (bNew) {
            known->second = FindOrAdd(quantity, Recorder::Sha256(known->first));
        }
        return known->second;
    }

  private:
    std::int64_t FindOrAdd(const QUANTITY& quantity, const std::string& digest) {
        std::int64_t nID = 0;
        Query query(m_Database, "SELECT id FROM quantity WHERE digest = :digest");
        if (!query.With("digest", digest).Into(nID).Next()) {
            nID = Greatest(m_Database, "quantity") + 1;
            Add(nID, quantity, digest);
        }
        return nID;
    }
    void Add(std::int64_t nID, const QUANTITY& quantity, const std::string& digest) {
        using Texts = std::vector<std::string>;
        using Numbers = std::vector<std::int64_t>;
        using Limits = std::vector<std::optional<double>>;
        std::vector<COLUMN> columns = {
            {"id", Numbers{nID}},
            {"digest", Texts{digest}},
            {"sequence", Texts{quantity.sequence}},
            {"step", Numbers{static_cast<std::int64_t>(quantity.step)}},
            {"name", Texts{quantity.name}},
            {"unit", Texts{quantity.unit}},
            {"least", Limits{quantity.min}},
            {"greatest", Limits{quantity.max}}};
        m_Database.Insert("quantity", columns);
    }

    Database& m_Database;
    std::unordered_map<std::string, std::int64_t> m_IDs;
};

}  // namespace

// --- One batch ---

/// What is kept of a run that another record may tell more of.
struct KNOWN_RUN {
    bool bUnfinished;
    std::int64_t steps;

    bool IsOlderThan(const RUN_RECORD& record) const {
        return bUnfinished && (record.verdict != VERDICT::UNFINISHED || steps < Steps(record));
    }
    static std::int64_t Steps(const RUN_RECORD& record) {
        return static_cast<std::int64_t>(record.steps.size());
    }
};

/// Those of the batch that are in the history.
static std::map<std::string, KNOWN_RUN> KnownNumbers(
    Database& database, const RECORD_BATCH& batch) {
    Json numbers = Json::array();
    for (const FILED_RECORD& filed : batch.records) {
        numbers.push_back(filed.record.number);
    }
    std::map<std::string, KNOWN_RUN> known;
    std::string number;
    std::string outcome;
    std::int64_t nSteps = 0;
    Query query(
        database,
        std::string("SELECT number, outcome, (SELECT COUNT(*) FROM step WHERE step.run = run.id) "
                    "FROM run WHERE number IN (") +
            (database.IsServer() ? "SELECT json_array_elements_text(CAST(:numbers AS json)))"
                                 : "SELECT value FROM json_each(:numbers))"));
    query.With("numbers", numbers.dump()).Into(number).Into(outcome).Into(nSteps);
    while (query.Next()) {
        known[number] = {outcome == VerdictName(VERDICT::UNFINISHED), nSteps};
    }
    return known;
}

/// Of a run that was not finished when it was imported, ahead of its whole record.
static void Remove(Database& database, const std::string& number) {
    for (const char* pszStatement :
         {"DELETE FROM measurement WHERE run = (SELECT id FROM run WHERE number = :number)",
          "DELETE FROM step WHERE run = (SELECT id FROM run WHERE number = :number)",
          "DELETE FROM run WHERE number = :number"}) {
        Query(database, pszStatement).With("number", number).Run();
    }
}

/// Those that tell what the history does not have; what they replace is removed from it.
static std::vector<FILED_RECORD*> ChooseNew(Database& database, RECORD_BATCH& batch) {
    std::map<std::string, KNOWN_RUN> known = KnownNumbers(database, batch);
    std::vector<FILED_RECORD*> chosen;
    for (FILED_RECORD& filed : batch.records) {
        const RUN_RECORD& record = filed.record;
        const auto found = known.find(record.number);
        if (found != known.end() && !found->second.IsOlderThan(record)) {
            continue;
        }
        if (found != known.end()) {
            Remove(database, record.number);
            std::erase_if(chosen, [&](const auto* p) { return p->record.number == record.number; });
        }
        known[record.number] = {record.verdict == VERDICT::UNFINISHED, KNOWN_RUN::Steps(record)};
        chosen.push_back(&filed);
    }
    return chosen;
}

/// Gives how many went in.
static std::size_t Store(Database& database, RECORD_BATCH& batch) {
    if (batch.records.empty()) {
        return 0;
    }
    Transaction transaction(database, Transaction::WRITE);
    const auto chosen = ChooseNew(database, batch);
    Quantities quantities(database);
    RecordRows rows;
    std::int64_t nRun = Greatest(database, "run");
    for (FILED_RECORD* pFiled : chosen) {
        rows.Add(++nRun, *pFiled, [&](const QUANTITY& each) { return quantities.ID(each); });
    }
    rows.InsertInto(database);
    transaction.Commit();
    return chosen.size();
}

// --- All of them ---

IMPORT_COUNTS ImportRecords(
    Database& database, const std::vector<std::string>& paths,
    const std::function<void(const std::string&)>& complain) {
    IMPORT_COUNTS counts;
    std::span<const std::string> left = paths;
    for (RECORD_BATCH batch = ReadBatch(left); batch.files > 0;) {
        left = left.subspan(batch.files);
        std::future<RECORD_BATCH> next =
            std::async(std::launch::async, [left] { return ReadBatch(left); });
        const std::size_t stored = Store(database, batch);
        counts.imported += stored;
        counts.known += batch.records.size() - stored;
        counts.spoilt += batch.problems.size();
        std::for_each(batch.problems.begin(), batch.problems.end(), complain);
        batch = next.get();
    }
    return counts;
}
