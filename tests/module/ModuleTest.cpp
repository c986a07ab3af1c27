// Loading, registration and unloading, as a host sees them.
#include <set>

#include "adjustment/PropertyTable.h"
#include "tests/support/Support.h"

namespace {

const std::string ASTERISKS = "> [CMNT] " + std::string(79, '*') + "\n";

TEST_F(ModuleTest, ExportsWhatHostsNeedAndNothingElse) {
    const char* const exported[] = {
        "GetEventProcList",
        "RegisterEventProcList",
        "_RegisterInitializeFuncList@4",
        "_ZN13CSharedMemoryC1Ev",
        "_ZN13CSharedMemory18MallocSharedMemoryEjPKcS1_",
        "_ZN22CJIGItoPTPSharedMemoryC1Ev",
        "_ZN22CJIGItoPTPSharedMemoryC1ERKS_",
        "_ZN22CJIGItoPTPSharedMemoryaSERKS_",
        "_ZN22CJIGItoPTPSharedMemoryD1Ev",
        "_ZN25CCameraHandleSharedMemoryC1Ev",
    };
    for (const char* pszName : exported) {
        EXPECT_NE(Module().Export(pszName), nullptr) << pszName;
    }
    for (const char* pszName :
         {"RegisterInitializeFuncList", "DllMain", "SetBodyID", "_Z8OpenLogv",
          "_ZN19CFolderSharedMemoryC1Ev"}) {
        EXPECT_EQ(Module().Export(pszName), nullptr) << pszName;
    }
}

TEST_F(ModuleTest, BannersStandAtBothEnds) {
    ClearLog();
    Unload();
    EXPECT_EQ(Log(), ASTERISKS + "> [CMNT]  TuneBench.t460 Terminate\n" + ASTERISKS);

    ClearLog();
    LoadAgain();
    EXPECT_EQ(Log(), ASTERISKS + "> [CMNT]  TuneBench.t460 Initialize\n" + ASTERISKS);
}

TEST_F(ModuleTest, FailureInABannerStaysInsideAndKeepsTheLinesAheadOfIt) {
    SimulatedBody::FailLinePrefix(1, {.kind = SimulatedBody::FAULT::INTEGER});
    Unload();
    ClearLog();
    SimulatedBody::FailLinePrefix(3);
    LoadAgain();
    EXPECT_EQ(Log(), ASTERISKS + "> [CMNT]  TuneBench.t460 Initialize\n");
    EXPECT_EQ(Module().Register(), 0);
}

// The host has pointers of operations by registration alone: here they are those of an earlier
// load, moved to the place of the next.
TEST_F(ModuleTest, SecondLoadStartsAfreshAndWorksUnregistered) {
    const auto address = [](auto* pFunction) {
        return reinterpret_cast<std::uintptr_t>(pFunction);
    };
    const auto moved = [&](EVENT_PROC procedure, std::uintptr_t formerExport) {
        return reinterpret_cast<EVENT_PROC>(
            address(procedure) - formerExport + address(Module().pGetEventProcList));
    };
    const EVENT_PROC search = Operation("SearchPropertyData");
    const EVENT_PROC getState = Operation("GetFactoryModeState");
    const std::uintptr_t formerExport = address(Module().pGetEventProcList);
    LoadAgain();

    PROPERTY_DATA_T row{"PROP_BODY_ID", 1, 2};
    EXPECT_EQ(moved(search, formerExport)(&row), 25);
    std::int32_t nState = 0;
    EXPECT_EQ(moved(getState, formerExport)(&nState), 0);
    EXPECT_EQ(Module().Register(), 0);
    EXPECT_EQ(Run("SearchPropertyData", &row), 0);
}

TEST_F(ModuleTest, RegisteringTwiceGivesTheSameTwice) {
    const std::vector<REGISTERED> first = Module().registered;
    ClearLog();
    EXPECT_EQ(Module().Register(), 0);
    EXPECT_EQ(Log(), Frame("RegisterEventProcList", 0, Frame("RegisterPropertyData", 0)));
    ASSERT_EQ(Module().registered.size(), first.size());
    for (std::size_t i = 0; i < first.size(); ++i) {
        EXPECT_EQ(Module().registered[i].name, first[i].name);
        EXPECT_EQ(Module().registered[i].procedure, first[i].procedure);
    }
    PROPERTY_DATA_T row{"PROP_BODY_ID", 1, 2};
    EXPECT_EQ(Run("SearchPropertyData", &row), 0);
    EXPECT_EQ(row.PropertyId, 0x1000006U);
}

TEST_F(ModuleTest, NamesHaveTheBucketsThatHostsKnow) {
    const std::pair<const char*, std::uint32_t> buckets[] = {
        {"", 0},
        {"a", 97},
        {"SetBodyID", 258},
        {"DisableAF", 123},
        {"DisableAf", 155},
        {"PROP_BODY_ID", 283},
        {"PROP_END_ID", 101},
        {"\x80\xFF", 42},
    };
    for (const auto& [pszName, bucket] : buckets) {
        EXPECT_EQ(HashName(pszName), bucket) << pszName;
    }
}

TEST_F(ModuleTest, EventProcListIsLeftAsItWas) {
    EVENT_PROC_T node{"Host", {1, 2, 3, 4}, nullptr};
    std::vector<EVENT_PROC_T*> table(HASH_BUCKETS);
    table[7] = &node;
    const std::vector<EVENT_PROC_T*> before = table;
    ClearLog();
    EXPECT_EQ(Module().pGetEventProcList(table.data()), 0);
    EXPECT_EQ(table, before);
    EXPECT_EQ(Log(), Frame("GetEventProcList", 0, Frame("GetHash", 0)));
    EXPECT_EQ(Module().pGetEventProcList(nullptr), 0);
}

}  // namespace
