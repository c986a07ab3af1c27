// What the simulated body refuses, as a camera would: wrong ids, sizes, forms and orders of calls.
#include "bodylnk/Refusal.h"

#include <functional>
#include <iterator>
#include <map>
#include <sstream>
#include <stdexcept>

#include "link/BodyLink.h"
#include "tests/support/Support.h"

using namespace SimulatedBody;

namespace {

using CallWords = std::vector<std::string>;

const std::map<std::string, std::int32_t> REASONS = {
    {"PROPERTY", REFUSED_PROPERTY},   {"SIZE", REFUSED_SIZE},   {"EVENT", REFUSED_EVENT},
    {"PARAMETER", REFUSED_PARAMETER}, {"ORDER", REFUSED_ORDER}, {"RANGE", REFUSED_RANGE},
    {"POINTER", REFUSED_POINTER}};

class RefusalTest : public testing::Test {
  protected:
    RefusalTest() { Reset(); }

    /// Makes the call that the words name. Gives the refusal's code, 0 for a call that is taken.
    std::int32_t CodeOf(const CallWords& words) {
        const auto number = [&](std::size_t place) {
            return static_cast<std::uint32_t>(std::stoll(words.at(place), nullptr, 0));
        };
        const auto integer = [&](std::size_t place) { return std::stoi(words.at(place)); };
        const bool bNull = words.back() == "null";
        std::uint8_t* pData = bNull ? nullptr : m_Data.data();
        std::uint32_t size = 64;
        std::int32_t word = 0;
        const std::map<std::string, std::function<void()>> calls = {
            {"Get", [&] { m_Camera.Get(number(1), number(2), pData); }},
            {"Set", [&] { m_Camera.Set(number(1), number(2), pData); }},
            {"Save", [&] { CProperty::Save(number(1)); }},
            {"InitializeList", [&] { m_Camera.InitializeList(number(1)); }},
            {"PushList", [&] { m_Camera.PushList(number(1)); }},
            {"SaveList", [&] { m_Camera.SaveList(); }},
            {"Execute", [&] { m_Camera.Execute(words[1], integer(2), bNull ? nullptr : &word); }},
            {"ExecuteList", [&] { m_Camera.Execute(words[1], &word); }},
            {"ClearParameters", [&] { m_Camera.ClearParameters(); }},
            {"PushParameterAsInteger",
             [&] { m_Camera.PushParameterAsInteger(integer(1), integer(2)); }},
            {"PushParameterAsSafeArray",
             [&] { m_Camera.PushParameterAsSafeArray(pData, number(1)); }},
            {"ExecuteAndGetSize",
             [&] { m_Camera.ExecuteAndGetSize(words[1], bNull ? nullptr : &size, &word); }},
            {"GetReturnData", [&] { m_Camera.GetReturnData(pData, &size, &word); }},
            {"OpenSession", [&] { m_Monitor.OpenSession(); }},
            {"CloseSession", [&] { m_Monitor.CloseSession(); }},
            {"ChangeBank",
             [&] { m_Monitor.ChangeBank(static_cast<SLR_MONITOR::tagBANK_KIND_T>(number(1))); }},
            {"WriteMemory", [&] { m_Monitor.WriteMemory(number(1), number(2), pData); }},
            {"ReadMemory", [&] { m_Monitor.ReadMemory(number(1), number(2), pData); }},
            {"CallFunction", [&] { m_Monitor.CallFunction(number(1)); }},
        };
        try {
            calls.at(words[0])();
            return 0;
        } catch (const CException* e) {
            const std::int32_t code = e->code;
            delete e;
            return code;
        }
    }

  private:
    CPublicProperty m_Camera;
    CSLRMonitor m_Monitor;
    Bytes m_Data = Bytes(64);
};

TEST_F(RefusalTest, WrongCallsAreRefusedAndOthersAreTaken) {
    const CallWords lines = TableLines("bodylnk/refusals.txt");
    EXPECT_EQ(lines.size(), 58U);
    for (const std::string& line : lines) {
        const std::size_t colon = line.find(':');
        std::istringstream call(line.substr(0, colon));
        const CallWords words(std::istream_iterator<std::string>(call), {});
        EXPECT_EQ(
            CodeOf(words), colon == std::string::npos ? 0 : REASONS.at(line.substr(colon + 2)))
            << line;
    }
    EXPECT_THROW(Memory(0xED, 0, 1), std::out_of_range);
    EXPECT_THROW(SetMemory(SLR_MONITOR::BANK_EE, 0xFFFF, {1, 2}), std::out_of_range);
    EXPECT_THROW(WorkingValue(0x7000000), std::out_of_range);
}

}  // namespace
