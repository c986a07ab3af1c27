// Body identity without the body ID: file prefix and number, owner and copyright, maintenance.
#include "tests/support/Support.h"

namespace {

using SimulatedBody::Bytes;

/// The frame of an operation that its one call of the link fails.
std::string LinkFailure(const std::string& logName) {
    return FailedFrame(logName, LINK_FAILURE, LINK_MESSAGE);
}

/// The frame of an operation around that of a nested one that the link fails.
std::string NestedFailure(
    const std::string& outer, const std::string& inner, const std::string& before = "") {
    return FailedFrame(outer, LINK_FAILURE, "[FUNC] " + inner, before + LinkFailure(inner));
}

Bytes BytesOfText(const std::string& text, std::size_t size) {
    Bytes bytes(text.begin(), text.end());
    bytes.resize(size);
    return bytes;
}

class IdentityTest : public ModuleTest {
  protected:
    /// Fills a buffer that is one byte larger than the operation's, and shows that byte too.
    Bytes Read(const std::string& operation, std::size_t size) {
        Bytes bytes(size + 1, 0xEE);
        EXPECT_EQ(Run(operation, bytes.data()), 0);
        EXPECT_EQ(bytes.back(), 0xEE);
        bytes.pop_back();
        return bytes;
    }
};

TEST_F(IdentityTest, OperationsOfOneCall) {
    const std::pair<std::string, std::string> operations[] = {
        {"SaveFilePrefix", "Save 0x1000007"},
        {"SetDefaultFilePrefix", "Set 0x1000007 8: 49 4d 47 5f 00 00 00 00"},
        {"ResetFileNumber", "Set 0x2040008 4: 00 00 00 00"},
        {"SaveFileNumber", "Save 0x2040008"},
        {"SaveOwnerName", "Save 0x2000004"},
        {"SaveWindowsVistaUniqueID", "Save 0x100000C"},
    };
    for (const auto& [operation, call] : operations) {
        Expect(operation, 0, {call}, Frame(operation, 0));
    }
}

TEST_F(IdentityTest, NullPointersStopAheadOfTheCamera) {
    for (const std::string operation : {"GetFilePrefix", "SetOwnerName", "GetOwnerName"}) {
        Expect(operation, 3, {}, FailedFrame(operation, 3, "[VALU] p" + operation.substr(3)));
    }
}

// --- File prefix ---

/// The body ID property holds the upper word of the body number first.
void SetBodyNumber(std::uint64_t number) {
    SimulatedBody::SetProperty(0x1000006, BytesOf((number >> 32) | (number << 32)));
}

TEST_F(IdentityTest, FilePrefixFollowsFromTheSerialNumber) {
    const std::pair<std::uint32_t, std::string> prefixes[] = {
        {0, "000A"},     {9, "009A"},     {10, "010A"},    {359, "0Z9A"},    {360, "100A"},
        {12345, "YA5A"}, {12959, "ZZ9A"}, {12960, "000B"}, {103679, "ZZ9H"},
    };
    for (const auto& [serialNo, prefix] : prefixes) {
        SetBodyNumber(serialNo);
        EXPECT_EQ(Run("SetFilePrefix"), 0);
        EXPECT_EQ(Read("GetFilePrefix", 8), BytesOfText(prefix, 8)) << prefix;
    }
}

TEST_F(IdentityTest, FilePrefixTakesNothingElseOfTheBodyID) {
    SetBodyNumber(15074239012345);
    Expect(
        "SetFilePrefix", 0, {"Get 0x1000006 8", "Set 0x1000007 8: 59 41 35 41 00 00 00 00"},
        Frame(
            "SetFilePrefix", 0,
            Frame("GetBodyID", 0, "> BodyID - 12345\n") +
                "> [VALU] BodyID.ManufactureMonth - 1507\n"
                "> [VALU] BodyID.SerialNo         - 12345\n"
                "> [VALU] szFilePrefix - YA5A\n"));
}

TEST_F(IdentityTest, FilePrefixRefusesWhatIsNoSerialNumberForIt) {
    SetBodyNumber(103680);
    Expect(
        "SetFilePrefix", 35, {"Get 0x1000006 8"},
        FailedFrame(
            "SetFilePrefix", 35, "[VALU] BodyID.SerialNo",
            Frame("GetBodyID", 0, "> BodyID - 103680\n") +
                "> [VALU] BodyID.ManufactureMonth - 0\n"
                "> [VALU] BodyID.SerialNo         - 103680\n"));
    SimulatedBody::FailCall(1);
    Expect(
        "SetFilePrefix", LINK_FAILURE, {"Get 0x1000006 8 failed"},
        NestedFailure("SetFilePrefix", "GetBodyID"));
}

// --- Owner name, artist and copyright text ---

TEST_F(IdentityTest, OwnerNamePassesAllItsBytes) {
    // No zero among the name's bytes; the one behind them belongs to somebody else.
    const std::string name = "A name of thirty-two bytes, full";
    std::string argument = name + "!";
    Expect(
        "SetOwnerName", 0, {"Set 0x2000004 32: " + Hex(BytesOfText(name, 32))},
        Frame("SetOwnerName", 0), argument.data());
    EXPECT_EQ(Read("GetOwnerName", 32), BytesOfText(name, 32));
    EXPECT_EQ(Log(), Frame("GetOwnerName", 0, "> [FUNC] pOwnerName - " + name + "\n"));

    Bytes shortName = BytesOfText("Short", 32);
    shortName.back() = 'x';
    SimulatedBody::SetProperty(0x2000004, shortName);
    EXPECT_EQ(Read("GetOwnerName", 32), shortName);
    EXPECT_EQ(Log(), Frame("GetOwnerName", 0, "> [FUNC] pOwnerName - Short\n"));
}

TEST_F(IdentityTest, ClearOwnerNameRunsSetOwnerName) {
    const std::string set = "Set 0x2000004 32: " + Hex(Bytes(32));
    Expect("ClearOwnerName", 0, {set}, Frame("ClearOwnerName", 0, Frame("SetOwnerName", 0)));
    SimulatedBody::FailCall(1);
    Expect(
        "ClearOwnerName", LINK_FAILURE, {set + " failed"},
        NestedFailure("ClearOwnerName", "SetOwnerName"));
}

TEST_F(IdentityTest, ClearCopyRightInfoStopsAtTheTextThatFails) {
    const std::string artist = "Set 0xE070000 64: " + Hex(Bytes(64));
    const std::string copyRight = "Set 0xE070001 64: " + Hex(Bytes(64));
    Expect(
        "ClearCopyRightInfo", 0, {artist, copyRight},
        Frame("ClearCopyRightInfo", 0, Frame("_SetArtistInfo", 0) + Frame("_SetCopyRighInfo", 0)));
    SimulatedBody::FailCall(1);
    Expect(
        "ClearCopyRightInfo", LINK_FAILURE, {artist + " failed"},
        NestedFailure("ClearCopyRightInfo", "_SetArtistInfo"));
    SimulatedBody::FailCall(2);
    Expect(
        "ClearCopyRightInfo", LINK_FAILURE, {artist, copyRight + " failed"},
        NestedFailure("ClearCopyRightInfo", "_SetCopyRighInfo", Frame("_SetArtistInfo", 0)));
}

TEST_F(IdentityTest, SaveCopyRightInfoSavesOneListOfTwo) {
    Expect(
        "SaveCopyRightInfo", 0,
        {"InitializeList 2", "PushList 0xE070000", "PushList 0xE070001", "SaveList"},
        Frame("SaveCopyRightInfo", 0));
}

// --- Body maintenance ---

struct EVENT_OPERATION {
    std::string name;
    std::string call;
    std::string errorLine;  // empty where the event's word is not looked at
};

TEST_F(IdentityTest, EventsAndTheirWords) {
    const EVENT_OPERATION operations[] = {
        {"SetDefaultSettings", "FA_SetDefaultSetting 0",
         "> [ERR!] - [EVNT] FA_SetDefaultSetting\n"},
        {"ProhibitFROMAccess", "prop_prohibitfromaccess 0", ""},
        {"SetAEIgnore", "ae_ignore_release 1", "> [ERR!] - [EVNT] ae_ignore_release\n"},
        {"CopyWindowsVistaUniqueID", "FA_CopyVistaUniqueID 0",
         "[ERR!] - [FUNC] FA_CopyVistaUniqueID\n"},
    };
    for (const auto& [name, call, errorLine] : operations) {
        SimulatedBody::ScriptEvent(call.substr(0, call.find(' ')), {2, -5});
        Expect(name, 0, {"Execute " + call}, Frame(name, 0));
        const std::int32_t failed = errorLine.empty() ? 0 : -5;
        Expect(name, failed, {"Execute " + call}, Frame(name, failed, errorLine));
    }
}

TEST_F(IdentityTest, MPUResetSkipsWhatFollowsAFailure) {
    std::vector<std::string> calls = {
        "OpenSession", "ChangeBank 0xFC", "CallFunction 118", "CloseSession"};
    Expect("MPUReset", 0, calls, Frame("MPUReset", 0));
    for (; !calls.empty(); calls.pop_back()) {
        SimulatedBody::FailCall(static_cast<std::uint32_t>(calls.size()));
        calls.back() += " failed";
        Expect("MPUReset", LINK_FAILURE, calls, LinkFailure("MPUReset"));
    }
}

TEST_F(IdentityTest, UniqueIDErrorLinesHaveNoPrefix) {
    const std::string get = "GetWindowsVistaUniqueID";
    const Bytes uniqueID = BytesOfText("Any twenty bytes \x01\xFF", 20);
    SimulatedBody::SetProperty(0x100000C, uniqueID);
    EXPECT_EQ(Read(get, 20), uniqueID);
    EXPECT_EQ(Log(), Frame(get, 0));
    Expect(get, 3, {}, Frame(get, 3, "[ERR!] - [VALU] pVistaUniqueID\n"));

    Bytes argument(20);
    for (const std::string verb : {"Copy", "Save", "Get"}) {
        const std::string operation = verb + "WindowsVistaUniqueID";
        SimulatedBody::FailCall(1, {.kind = SimulatedBody::FAULT::STANDARD_EXCEPTION});
        EXPECT_EQ(Run(operation, argument.data()), 33);
        EXPECT_EQ(Log(), Frame(operation, 33, "[ERR!] UnExpected Exception\n"));
    }
}

}  // namespace
