// What the simulated body refuses, as a camera would: wrong ids, sizes, forms and orders of calls.
#include "bodylnk/Refusal.h"

#include <array>
#include <functional>
#include <optional>
#include <stdexcept>

#include "link/BodyLink.h"
#include "tests/support/Support.h"

using namespace SimulatedBody;
using SLR_MONITOR::BANK_EE;
using SLR_MONITOR::BANK_FC;

namespace {

const std::uint32_t BODY_ID = 0x1000006;  // 8 bytes
const std::uint32_t UNKNOWN = 0x7000000;

class RefusalTest : public testing::Test {
  protected:
    RefusalTest() { Reset(); }

    /// The refusal's code; nothing for a call that is taken.
    static std::optional<std::int32_t> CodeOf(const std::function<void()>& call) {
        try {
            call();
        } catch (CException* e) {
            const std::int32_t code = e->code;
            delete e;
            return code;
        }
        return std::nullopt;
    }

    struct ROW {
        const char* pszCall;
        std::function<void()> call;
        std::optional<REFUSAL> code = {};
    };

    static void Expect(const std::vector<ROW>& rows) {
        for (const ROW& row : rows) {
            EXPECT_EQ(CodeOf(row.call), row.code) << row.pszCall;
        }
    }

    std::array<std::uint8_t, 64> m_Data{};
    std::uint32_t m_Size = 64;
    std::int32_t m_Word = 0;
};

TEST_F(RefusalTest, PropertiesHaveTheirIdsAndSizes) {
    CPublicProperty property;
    Expect({
        {"Get", [&] { property.Get(BODY_ID, 8, m_Data.data()); }},
        {"of no id", [&] { property.Get(UNKNOWN, 8, m_Data.data()); }, REFUSED_PROPERTY},
        {"of a wrong size", [&] { property.Get(BODY_ID, 7, m_Data.data()); }, REFUSED_SIZE},
        {"into nothing", [&] { property.Get(BODY_ID, 8, nullptr); }, REFUSED_POINTER},
        {"Set to no id", [&] { property.Set(UNKNOWN, 8, m_Data.data()); }, REFUSED_PROPERTY},
        {"to a wrong size", [&] { property.Set(BODY_ID, 9, m_Data.data()); }, REFUSED_SIZE},
        {"from nothing", [&] { property.Set(BODY_ID, 8, nullptr); }, REFUSED_POINTER},
        {"Save of no id", [] { CProperty::Save(UNKNOWN); }, REFUSED_PROPERTY},
        {"a list of none", [&] { property.PushList(BODY_ID); }, REFUSED_ORDER},
        {"InitializeList", [&] { property.InitializeList(2); }},
        {"PushList of no id", [&] { property.PushList(UNKNOWN); }, REFUSED_PROPERTY},
        {"PushList", [&] { property.PushList(BODY_ID); }},
        {"SaveList of half", [&] { property.SaveList(); }, REFUSED_ORDER},
        {"PushList again", [&] { property.PushList(BODY_ID); }},
        {"beyond the list", [&] { property.PushList(BODY_ID); }, REFUSED_ORDER},
        {"SaveList", [&] { property.SaveList(); }},
        {"a list saved", [&] { property.PushList(BODY_ID); }, REFUSED_ORDER},
    });
}

TEST_F(RefusalTest, EventsHaveTheirParameters) {
    CEventProcedure event;
    const std::string read = "FA_ReadEepromData";
    const std::string calendar = "FA_GetCalendar";
    Expect({
        {"Execute", [&] { event.Execute(read, 127, &m_Word); }},
        {"of no event", [&] { event.Execute("FA_Nothing", 0, &m_Word); }, REFUSED_EVENT},
        {"without a result", [&] { event.Execute(read, 0, nullptr); }, REFUSED_POINTER},
        {"below the EEPROM", [&] { event.Execute(read, -1, &m_Word); }, REFUSED_RANGE},
        {"behind it", [&] { event.Execute(read, 128, &m_Word); }, REFUSED_RANGE},
        {"no parameter", [&] { event.Execute(read, &m_Word); }, REFUSED_PARAMETER},
        {"of a kind", [&] { event.PushParameterAsInteger(1, 3); }, REFUSED_PARAMETER},
        {"one", [&] { event.PushParameterAsInteger(1, 2); }},
        {"of the list", [&] { event.Execute(read, &m_Word); }},
        {"two", [&] { event.PushParameterAsInteger(1, 2); }},
        {"too many", [&] { event.Execute(read, &m_Word); }, REFUSED_PARAMETER},
        {"a block too large",
         [&] { event.PushParameterAsSafeArray(m_Data.data(), Link::BLOCK_LIMIT + 1); },
         REFUSED_SIZE},
        {"a block of nothing", [&] { event.PushParameterAsSafeArray(nullptr, 4); },
         REFUSED_POINTER},
        {"ClearParameters", [&] { event.ClearParameters(); }},
        {"a block", [&] { event.PushParameterAsSafeArray(m_Data.data(), 35); }},
        {"of a wrong size", [&] { event.Execute("FA_SetCalendar", &m_Word); }, REFUSED_PARAMETER},
        {"emptied", [&] { event.ClearParameters(); }},
        {"no data yet", [&] { event.GetReturnData(m_Data.data(), &m_Size, &m_Word); },
         REFUSED_ORDER},
        {"no size", [&] { event.ExecuteAndGetSize(calendar, nullptr, &m_Word); }, REFUSED_POINTER},
        {"ExecuteAndGetSize", [&] { event.ExecuteAndGetSize(calendar, &m_Size, &m_Word); }},
        {"into nothing", [&] { event.GetReturnData(nullptr, &m_Size, &m_Word); }, REFUSED_POINTER},
        {"the log's end first", [&] { event.Execute("FA_GetCameraLogEnd", 0, &m_Word); },
         REFUSED_ORDER},
        {"a time without a mode", [&] { event.Execute("FA_SetAccumulateTimeForSR", 5, &m_Word); },
         REFUSED_ORDER},
    });
    EXPECT_EQ(m_Size, 36U);  // nine words
}

TEST_F(RefusalTest, MonitorIsOpenedAndHasABank) {
    CSLRMonitor monitor;
    const auto changeTo = [&](std::uint32_t bank) {
        return [&monitor, bank] {
            monitor.ChangeBank(static_cast<SLR_MONITOR::tagBANK_KIND_T>(bank));
        };
    };
    Expect({
        {"no session", [&] { monitor.CloseSession(); }, REFUSED_ORDER},
        {"nor for a bank", changeTo(BANK_FC), REFUSED_ORDER},
        {"nor for memory", [&] { monitor.ReadMemory(0, 1, m_Data.data()); }, REFUSED_ORDER},
        {"OpenSession", [&] { monitor.OpenSession(); }},
        {"twice", [&] { monitor.OpenSession(); }, REFUSED_ORDER},
        {"no bank", [&] { monitor.CallFunction(118); }, REFUSED_ORDER},
        {"of a strange bank", changeTo(0xED), REFUSED_RANGE},
        {"ChangeBank", changeTo(BANK_EE)},
        {"a function of another", [&] { monitor.CallFunction(118); }, REFUSED_RANGE},
        {"to the end", [&] { monitor.WriteMemory(0xFFC0, 64, m_Data.data()); }},
        {"beyond it", [&] { monitor.WriteMemory(0xFFC1, 64, m_Data.data()); }, REFUSED_RANGE},
        {"around it", [&] { monitor.ReadMemory(64, 0xFFFFFFFF, m_Data.data()); }, REFUSED_RANGE},
        {"from nothing", [&] { monitor.WriteMemory(0, 1, nullptr); }, REFUSED_POINTER},
        {"another bank", changeTo(BANK_FC)},
        {"no exchange asked for", [&] { monitor.CallFunction(15); }, REFUSED_ORDER},
        {"CallFunction", [&] { monitor.CallFunction(118); }},
        {"CloseSession", [&] { monitor.CloseSession(); }},
        {"the bank went too", [&] { monitor.CallFunction(118); }, REFUSED_ORDER},
    });
    EXPECT_THROW(Memory(0xED, 0, 1), std::out_of_range);
    EXPECT_THROW(SetMemory(BANK_EE, 0xFFFF, {1, 2}), std::out_of_range);
    EXPECT_THROW(WorkingValue(UNKNOWN), std::out_of_range);
}

}  // namespace
