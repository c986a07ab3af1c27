// The file of a sequence: operations to run one after the other, and what is expected of each.
//
//     format: 2                 # of format 1 are those without what is marked
//     name: prefix of a body
//     folder: dump              # for LoadPropertyData, seen from the current directory
//     steps:
//       - operation: SetFilePrefix
//         name: prefix          # else the operation's
//         on_unexpected: retry 2 after 500 ms, then continue      # format 2 from "after" on
//       - operation: GetFilePrefix
//         expect: RESULT_SUCCESS
//         expect_fields: {FilePrefix: 0AB0}
//     always:                   # format 2
//       - operation: ExitFactoryMode
#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "jighost/operations/OperationTable.h"

struct STEP {
    const OPERATION_INFO* info = nullptr;
    std::string name;
    std::vector<FIELD_VALUE> fields;        ///< of the record; the others are zero
    std::optional<std::int32_t> result;     ///< expected; none for any success
    std::vector<FIELD_VALUE> resultFields;  ///< expected of the record that comes back
    std::uint32_t retries = 0;              ///< runs more if the outcome is not expected
    std::chrono::milliseconds pause{};      ///< ahead of each of them
    bool bContinue = false;                 ///< go on even then
};

struct SEQUENCE {
    std::string name;
    std::string folderText;  ///< for the folder block; empty if no step needs it
    std::vector<STEP> steps;
    std::vector<STEP> always;  ///< run behind the others, however these ended
};

/// Reads and checks the whole file. Throws EXIT_WRONG_USE with a line for each wrong step, which
/// says where it is and what was expected.
SEQUENCE ReadSequence(const std::string& path);

/// A record with these fields set; throws EXIT_WRONG_USE for a field or value that can't be.
RecordBytes BuildRecord(const OPERATION_INFO& info, const std::vector<FIELD_VALUE>& fields);
