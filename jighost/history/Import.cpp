// While one batch goes into the database, the next one is read.
#include "jighost/history/Import.h"

#include <algorithm>
#include <future>
#include <map>
#include <span>
#include <unordered_map>

#include "jighost/history/RecordBatch.h"
#include "jighost/output/Json.h"
#include "recorder/Sha256.h"

static std::int64_t Greatest(Database& database, const std::string& table) {
    std::int64_t nGreatest = 0;
    Query(database, "SELECT coalesce(max(id), 0) FROM " + table).Into(nGreatest).Next();
    return nGreatest;
}

// --- Quantities ---

namespace {

/// The quantities of a history, which never change: an id that was found or committed stays. What
/// is not committed ends the import.
class Quantities {
  public:
    explicit Quantities(Database& database) : m_Database(database) {}

    std::int64_t ID(const QUANTITY& quantity) {
        if (m_IDs.size() == MOST_IDS) {
            m_IDs.clear();
        }
        const auto [known, bNew] = m_IDs.try_emplace(quantity.Key());
        if (bNew) {
            known->second = FindOrAdd(quantity, Recorder::Sha256(known->first));
        }
        return known->second;
    }

  private:
    static constexpr std::size_t MOST_IDS = 10'000;

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

struct KNOWN_RUN {
    RUN_PROGRESS progress;
    std::optional<std::size_t> place;  ///< in the batch; none of what is in the history
};

/// Those of the batch that are in the history.
static std::map<std::string, KNOWN_RUN> KnownRuns(Database& database, const RECORD_BATCH& batch) {
    Json numbers = Json::array();
    for (const BATCH_RECORD& record : batch.records) {
        numbers.push_back(record.number);
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
        known[number] = {{outcome == VerdictName(VERDICT::UNFINISHED), nSteps}, std::nullopt};
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

/// Ids for those that tell what the history does not have; what they replace is removed from it.
static RunIDs NumberNew(Database& database, const RECORD_BATCH& batch) {
    std::map<std::string, KNOWN_RUN> known = KnownRuns(database, batch);
    std::int64_t nRun = Greatest(database, "run");
    RunIDs ids(batch.records.size());
    for (std::size_t place = 0; place < ids.size(); ++place) {
        const auto& [number, progress] = batch.records[place];
        const auto [former, bNew] = known.try_emplace(number, KNOWN_RUN{progress, place});
        if (!bNew) {
            if (!progress.IsAheadOf(former->second.progress)) {
                continue;
            }
            if (former->second.place) {
                ids[*former->second.place].reset();
            } else {
                Remove(database, number);
            }
            former->second = {progress, place};
        }
        ids[place] = ++nRun;
    }
    return ids;
}

/// Gives how many went in.
static std::size_t Store(Database& database, RECORD_BATCH& batch, Quantities& quantities) {
    if (batch.records.empty()) {
        return 0;
    }
    Transaction transaction(database, Transaction::WRITE);
    const RunIDs ids = NumberNew(database, batch);
    batch.rows.InsertInto(database, ids, [&](const QUANTITY& each) { return quantities.ID(each); });
    transaction.Commit();
    return ids.size() - static_cast<std::size_t>(std::count(ids.begin(), ids.end(), std::nullopt));
}

// --- All of them ---

IMPORT_COUNTS ImportRecords(
    Database& database, const std::vector<std::string>& paths,
    const std::function<void(const std::string&)>& complain) {
    IMPORT_COUNTS counts;
    Quantities quantities(database);
    std::span<const std::string> left = paths;
    for (RECORD_BATCH batch = ReadBatch(left); batch.files > 0;) {
        left = left.subspan(batch.files);
        std::future<RECORD_BATCH> next =
            std::async(std::launch::async, [left] { return ReadBatch(left); });
        const std::size_t stored = Store(database, batch, quantities);
        counts.imported += stored;
        counts.known += batch.records.size() - stored;
        counts.spoilt += batch.problems.size();
        std::for_each(batch.problems.begin(), batch.problems.end(), complain);
        batch = next.get();
    }
    return counts;
}
