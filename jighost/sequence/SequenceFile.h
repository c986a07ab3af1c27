// The file of a sequence: operations to run one after the other, and what is expected of each.
//
//     format: 2                 # of format 1 are those without what is marked
//     name: prefix of a body
//     folder: dump              # for LoadPropertyData, seen from the current directory
//     parameters: ...           # format 2, Parameter.h; ${serial} stands for a value
//     steps:
//       - operation: SetFilePrefix
//         name: prefix          # else the operation's
//         on_unexpected: retry 2 after 500 ms, then continue      # format 2 from "after" on
//       - operation: GetFilePrefix
//         expect: RESULT_SUCCESS
//         expect_fields: {FilePrefix: 0AB0}
//         measure: ...          # format 2, Measure.h
//         wait: 500 ms          # format 2, ahead of the step
//         time_limit: 2000 ms   # format 2, of each attempt
//       - ask: ...              # format 2, Asking.h
//       - include: ...          # format 2, as repeat: in SequenceReader.h
//     always:                   # format 2
//       - operation: ExitFactoryMode
#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "jighost/operations/OperationTable.h"
#include "jighost/records/RunRecord.h"
#include "jighost/sequence/Asking.h"
#include "jighost/sequence/Measure.h"
#include "jighost/sequence/Parameter.h"
#include "jighost/text/YamlFile.h"

struct STEP {
    const OPERATION_INFO* info = nullptr;
    std::string name;
    std::vector<FIELD_VALUE> fields;        ///< of the record; the others are zero
    std::optional<std::int32_t> result;     ///< expected; none for any success
    std::vector<FIELD_VALUE> resultFields;  ///< expected of the record that comes back
    std::vector<MEASURE> measures;          ///< of the same record
    std::optional<ASKING> asking;           ///< of a step that asks; its operation is ASK_OPERATION
    std::chrono::milliseconds wait{};       ///< ahead of its first attempt
    std::chrono::milliseconds timeLimit{};  ///< of each attempt; zero for none
    std::uint32_t retries = 0;              ///< runs more if the outcome is not expected
    std::chrono::milliseconds pause{};      ///< ahead of each of them
    bool bContinue = false;                 ///< go on even then
};

struct SEQUENCE {
    std::string name;
    std::string folderText;  ///< for the folder block; empty if no step needs it
    std::vector<STEP> steps;
    std::vector<STEP> always;          ///< run behind the others, however these ended
    VALUES values;                     ///< of its parameters, for this run
    std::vector<RECORDED_FILE> files;  ///< it, and those that it includes
};

class SequenceFile {
  public:
    /// Reads and checks the whole file, but for what only a parameter's value decides. Throws
    /// EXIT_WRONG_USE with a line for each mistake, which says where it is and what was expected.
    explicit SequenceFile(const std::string& path);

    const std::vector<PARAMETER>& Parameters() const { return m_Parameters; }

    /// The sequence with a value for each parameter. Throws as the constructor does.
    SEQUENCE Read(const VALUES& values) const;

  private:
    YamlFile m_File;
    std::vector<PARAMETER> m_Parameters;
};

/// A record with these fields set; throws EXIT_WRONG_USE for a field or value that can't be.
RecordBytes BuildRecord(const OPERATION_INFO& info, const std::vector<FIELD_VALUE>& fields);
