// Another camera link in the body's place: the second link, as the module has it directly and by
// way of the passage.
#include "bodylnk/OtherLink.h"
#include "link/BodyLink.h"
#include "platform/Process.h"
#include "tests/secondlink/LinkInUse.h"
#include "tests/secondlink/Transcript.h"
#include "tests/support/Driver.h"
#include "tests/support/Support.h"
#include "tests/support/SupportLink.h"

using testing::HasSubstr;

namespace {

TEST(OtherLinkTest, ModuleDoesTheSameAsDirectlyOnIt) {
    const FreshFolder folder;
    const Surroundings surroundings;
    const std::filesystem::path module = BuildFolder() / MODULE_FILE;
    Process direct(
        (BuildFolder() / SECOND_LINK_DIRECT_FILE).string(),
        {LinkFile("second_link").string(), module.string(), "direct.txt"});
    ASSERT_EQ(direct.Wait(), 0);
    const std::string expected = ReadFile("direct.txt");
    for (const char* pszFolder : {"second_link", "larger_link"}) {
        SimulatedBody::Reset();
        std::size_t complete = 0;
        SimulatedBody::Observe(
            [&](const SimulatedBody::CALL&, bool bComplete) { complete += bComplete ? 1 : 0; });
        const LinkInUse inUse(pszFolder);
        EXPECT_EQ(FirstDifference(expected, Transcript(module, inUse.link)), "") << pszFolder;
        // Own calls of the link, of which there are some, do not come this way.
        EXPECT_EQ(complete, SimulatedBody::CallCount());
        EXPECT_EQ(complete, inUse.link.calls);
        EXPECT_GT(inUse.link.ownCalls, 0U);
    }
    SimulatedBody::Reset();
}

template <class Thrown>
void ExpectVeryObject(SECOND_LINK& link, THROWN thrown) {
    CPublicProperty property;
    link.failAt = link.steps + 1;
    link.thrown = thrown;
    try {
        property.SaveList();
        FAIL() << "nothing was thrown";
    } catch (Thrown& caught) {
        if constexpr (std::is_pointer_v<Thrown>) {
            EXPECT_EQ(static_cast<const void*>(caught), link.pThrown);
        } else {
            EXPECT_EQ(static_cast<const void*>(&caught), link.pThrown);
        }
        if constexpr (std::is_convertible_v<Thrown, CException*>) {
            delete caught;
        }
    }
}

void ExpectVeryObjects(const LinkInUse& inUse) {
    ExpectVeryObject<CException*>(inUse.link, THROWN::CAMERA_EXCEPTION);
    ExpectVeryObject<DERIVED_EXCEPTION*>(inUse.link, THROWN::DERIVED_EXCEPTION);
    ExpectVeryObject<CException*>(inUse.link, THROWN::NULL_EXCEPTION);
    ExpectVeryObject<std::out_of_range>(inUse.link, THROWN::STANDARD_EXCEPTION);
    ExpectVeryObject<int>(inUse.link, THROWN::INTEGER);
    ExpectVeryObject<const char*>(inUse.link, THROWN::TEXT);
    ExpectVeryObject<OWN_TYPE>(inUse.link, THROWN::OWN_TYPE);
}

void ExpectOwnArguments(const LinkInUse& inUse) {
    const auto expect = [&](const auto&... arguments) {
        const std::array<const void*, 4> expected = {arguments...};
        EXPECT_EQ(inUse.link.arguments, expected);
    };
    const std::string name = "BoardInf.ini";
    const std::uint32_t id = 1;
    const std::int32_t parameter = 2;
    std::uint8_t data[36];
    std::uint32_t size = sizeof(data);
    std::int32_t result = 0;
    const SLR_MONITOR::tagBANK_KIND_T bank = SLR_MONITOR::BANK_EE;

    CPublicProperty property;
    property.Execute(name, parameter, &result);
    expect(&name, &parameter, &result);
    property.Execute(name, &result);
    expect(&name, &result);
    property.PushParameterAsInteger(parameter, result);
    expect(&parameter, &result);
    property.PushParameterAsSafeArray(data, size);
    expect(data, &size);
    property.ExecuteAndGetSize(name, &size, &result);
    expect(&name, &size, &result);
    property.GetReturnData(data, &size, &result);
    expect(data, &size, &result);
    size = sizeof(data);
    property.ExecuteAndGetData(name, data, &size, &result);
    expect(&name, data, &size, &result);
    size = sizeof(data);
    property.Set(id, size, data);
    expect(&id, &size, data);
    property.Get(id, size, data);
    expect(&id, &size, data);
    CProperty::Save(id);
    expect(&id);
    property.InitializeList(size);
    expect(&size);
    property.PushList(id);
    expect(&id);
    CSLRMonitor monitor;
    monitor.ChangeBank(bank);
    expect(&bank);
    monitor.WriteMemory(id, size, data);
    expect(&id, &size, data);
    monitor.ReadMemory(id, size, data);
    expect(&id, &size, data);
    monitor.CallFunction(id);
    expect(&id);
    CFilePath path;
    EXPECT_EQ(path.GetPropertyFullPath(name), "./BoardInf.ini");
    expect(&name);
    EXPECT_NE(_gt(id), "");
    expect(&id);
}

TEST(OtherLinkTest, ArgumentsAndWhatIsThrownAreTheVeryObjects) {
    const LinkInUse inUse("larger_link");
    ExpectVeryObjects(inUse);
    ExpectOwnArguments(inUse);
}

TEST(OtherLinkTest, RecorderInBetweenPassesOnTheVeryObjects) {
    const FreshFolder folder;
    const RecordedFolder host("larger_link");
    const LinkInUse inUse(host.link, host.linkBehind);
    ExpectVeryObjects(inUse);
    ExpectOwnArguments(inUse);
}

TEST(OtherLinkTest, ObjectBeyondTheLimitIsRefused) {
    const LinkInUse inUse("too_large_link");
    try {
        const CPublicProperty property;
        FAIL() << "the object was taken";
    } catch (const CException* e) {
        EXPECT_THAT(e->message, HasSubstr("larger than 65536 bytes"));
        delete e;
    }
    EXPECT_THAT(inUse.link.notes, HasSubstr("~CPublicProperty"));
}

TEST(OtherLinkTest, LibraryThatLacksFunctionsIsRefusedWithTheirNames) {
    const FreshFolder folder;
    const std::string name = WriteLackingLink("lacking.dll");
    try {
        OtherLink::Use("lacking.dll");
        FAIL() << "the library was taken";
    } catch (const std::runtime_error& e) {
        EXPECT_THAT(e.what(), HasSubstr("lacking.dll is no camera link: it lacks " + name));
    }
    EXPECT_THROW(OtherLink::Use("none.dll"), std::runtime_error);
    // What it takes from a camera link it does not have.
    const std::string module = (BuildFolder() / MODULE_FILE).string();
    EXPECT_THAT(OtherLink::MissingNames(module), testing::Contains(name));
    CProperty::Save(0x1000006);  // the body is still in its place
}

}  // namespace
