// Every step of every operation fails in turn: each call of the camera link, each construction of a
// link object, each line prefix. The host gets the code, the log one closing line, the camera
// nothing more, and the next operation works.
#include <algorithm>
#include <iostream>
#include <map>

#include "identity/BodyID.h"
#include "link/BodyLink.h"
#include "tests/support/Driver.h"
#include "tests/support/Support.h"

namespace {

using SimulatedBody::FAILURE;
using SimulatedBody::FAULT;
using SimulatedBody::MOMENT;

using Texts = std::vector<std::string>;

const std::string POWER_SAVE_ON = "Execute EnablePowerSave 0";
const std::string POWER_SAVE_OFF = "Execute DisablePowerSave 0";
const std::string FAILED = " failed";

/// Where a fault strikes: at the n-th occasion of its kind.
struct POINT {
    const char* name;
    void (*fail)(std::uint32_t n, const FAILURE& failure);
    void (*pass)();  ///< makes the next occasion, by hand
    std::vector<MOMENT> moments;
};

const POINT POINTS[] = {
    {"call",
     SimulatedBody::FailCall,
     [] { CProperty::Save(0x1000000); },
     {MOMENT::BEFORE, MOMENT::AFTER}},
    {"construction",
     SimulatedBody::FailConstruction,
     [] { const CFilePath object; },
     {MOMENT::BEFORE}},
    {"line prefix", SimulatedBody::FailLinePrefix, [] { _gt(10); }, {MOMENT::BEFORE}},
};

struct FAULT_KIND {
    FAULT kind;
    std::int32_t result;
    const char* errorLine;
};

const FAULT_KIND FAULT_KINDS[] = {
    {FAULT::CAMERA_EXCEPTION, LINK_FAILURE, "[ERR!] - [EVNT] Link failure\n"},
    {FAULT::STANDARD_EXCEPTION, 33, "[ERR!] UnExpected Exception\n"},
    {FAULT::INTEGER, 33, "[ERR!] UnExpected Exception\n"},
};

/// What an operation does when nothing fails.
struct CLEAN_RUN {
    Texts calls;
    std::string closing;
};

class FaultTest : public ModuleTest {
  protected:
    static void PrepareBody() {
        SimulatedBody::Reset();
        SimulatedBody::SetLinePrefix("> ");
        SimulatedBody::RecordCalls(true);
        std::filesystem::remove("JigDll.log");
    }

    CLEAN_RUN RunClean(const OPERATION_INFO& operation) {
        PrepareBody();
        RecordBytes record = ValidRecord(operation);
        EXPECT_EQ(Run(operation.name, record.data()), 0);
        return {Calls(), ClosingText(Log())};
    }

    /// One closing line, the last one, and one error line of the fault itself; frames around the
    /// one that failed have error lines of their own.
    void ExpectLog(const CLEAN_RUN& clean, const FAULT_KIND& fault) const {
        const std::string log = Log();
        EXPECT_TRUE(ClosesOnce(log, clean.closing, fault.result)) << log;
        const std::size_t found = log.find(fault.errorLine);
        EXPECT_NE(found, std::string::npos) << log;
        EXPECT_EQ(found, log.rfind(fault.errorLine)) << log;
    }

    /// The calls of a clean run as far as it got, and power saving switched on again if it is off.
    static void ExpectCalls(const CLEAN_RUN& clean, bool bPowerSaveLost) {
        Texts calls = Calls();
        const auto [end, cleanEnd] = std::mismatch(
            calls.begin(), calls.end(), clean.calls.begin(), clean.calls.end(),
            [](const std::string& call, const std::string& cleanCall) {
                return call == cleanCall || call == cleanCall + FAILED;
            });
        const Texts done(calls.begin(), end);
        const auto isOn = std::count(done.begin(), done.end(), POWER_SAVE_ON);
        const auto isOff = std::count(done.begin(), done.end(), POWER_SAVE_OFF);
        EXPECT_EQ(Texts(end, calls.end()), isOn < isOff ? Texts{POWER_SAVE_ON} : Texts{});
        EXPECT_EQ(SimulatedBody::PowerSaveEnabled(), !bPowerSaveLost);
    }

    void ExpectThatNextRunWorks() {
        EXPECT_FALSE(IsBlockHeld("BODYID"));
        BODY_ID_T bodyID{};
        EXPECT_EQ(Run("GetBodyID", &bodyID), 0);
        EXPECT_TRUE(ClosesOnce(Log(), "> [FUNC] GetBodyID - ", 0)) << Log();
    }

    /// Whether nothing came from the camera; one operation empties its record ahead of that.
    static bool IsFirstCall(const OPERATION_INFO& operation, MOMENT moment) {
        return moment == MOMENT::BEFORE && Calls().size() == 1 && Calls()[0].ends_with(FAILED) &&
               operation.name != std::string_view("CheckStorageMediaExistence");
    }

    /// Gives false if the operation has no n-th occasion.
    bool RunCase(
        const OPERATION_INFO& operation, const CLEAN_RUN& clean, const POINT& point,
        const FAULT_KIND& fault, MOMENT moment, std::uint32_t n) {
        PrepareBody();
        const RecordBytes before = ValidRecord(operation);
        RecordBytes record = before;
        point.fail(n, {.kind = fault.kind, .moment = moment});
        const std::int32_t result = Run(operation.name, record.data());
        if (result == 0) {
            return false;
        }
        EXPECT_EQ(result, fault.result);
        ExpectLog(clean, fault);
        const bool bPowerSaveLost = moment == MOMENT::AFTER && !Calls().empty() &&
                                    Calls().back() == POWER_SAVE_OFF + FAILED;
        ExpectCalls(clean, bPowerSaveLost);
        EXPECT_TRUE(IsSpareUntouched(operation, record));
        if (operation.use == RECORD_USE::IN || IsFirstCall(operation, moment)) {
            EXPECT_EQ(record, before);
        }
        ExpectThatNextRunWorks();
        return true;
    }

    /// Gives the number of cases.
    std::size_t FailEachOccasion(
        const OPERATION_INFO& operation, const CLEAN_RUN& clean, const POINT& point,
        const FAULT_KIND& fault, MOMENT moment) {
        std::uint32_t n = 1;
        while (!HasFailure() && RunCase(operation, clean, point, fault, moment, n)) {
            ++n;
        }
        EXPECT_TRUE(IsFaultWaiting(point)) << "fault " << n << " was made and did not count";
        return n - 1;
    }

    /// Whether the planned fault is still to come: it must then be at the next occasion.
    static bool IsFaultWaiting(const POINT& point) {
        try {
            point.pass();
        } catch (CException* e) {
            delete e;
            return true;
        } catch (...) {
            return true;
        }
        return false;
    }
};

TEST_F(FaultTest, EveryStepOfEveryOperationFailsInTurn) {
    const Surroundings surroundings;
    std::map<std::string, std::size_t> counts;
    for (const OPERATION_INFO* pOperation : AllOperations()) {
        const CLEAN_RUN clean = RunClean(*pOperation);
        counts["operation"] += 1;
        counts["link call made"] += clean.calls.size();
        for (const POINT& point : POINTS) {
            for (const FAULT_KIND& fault : FAULT_KINDS) {
                for (const MOMENT moment : point.moments) {
                    SCOPED_TRACE(std::string(pOperation->name) + ", " + point.name);
                    counts[std::string("case of a failing ") + point.name] +=
                        FailEachOccasion(*pOperation, clean, point, fault, moment);
                    ASSERT_FALSE(HasFailure());
                }
            }
        }
    }
    for (const auto& [name, count] : counts) {
        std::cout << "[ COUNTED  ] " << name << ": " << count << '\n';
    }
}

TEST_F(FaultTest, NullExceptionPointerIsUnexpected) {
    SimulatedBody::Observe([](const SimulatedBody::CALL&, bool complete) {
        if (!complete) {
            throw static_cast<CException*>(nullptr);
        }
    });
    EXPECT_EQ(Run("SaveBodyID"), 33);
    EXPECT_EQ(Log(), Frame("SaveBodyID", 33, "> [ERR!] UnExpected Exception\n"));
}

}  // namespace
