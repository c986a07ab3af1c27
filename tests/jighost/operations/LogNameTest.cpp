// The names of operations in the log, held against what the module writes.
#include "jighost/operations/LogName.h"

#include "jighost/log/LogReader.h"
#include "tests/support/Driver.h"
#include "tests/support/Support.h"

using LogNameTest = ModuleTest;

TEST_F(LogNameTest, EachOperationOfTheModuleLogsUnderItsNamesAlone) {
    const Surroundings surroundings;
    for (const OPERATION_INFO* pInfo : AllOperations()) {
        std::size_t trees = 0;
        LogReader reader([&](auto operations) {
            ++trees;
            EXPECT_EQ(operations.front().name, LogName(pInfo->name));
            for (const LOGGED_OPERATION& operation : operations) {
                EXPECT_TRUE(IsLogName(operation.name)) << operation.name;
            }
        });
        RecordBytes record = ValidRecord(*pInfo);
        Run(pInfo->name, record.data());
        reader.Add(Log());
        reader.End();
        EXPECT_EQ(trees, 1U) << pInfo->name << "\n" << Log();
    }
}
