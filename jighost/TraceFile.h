// A trace as a file of JSON Lines: the format first, then what happened, in order. Each line is in
// the system's hands before anything else happens, so that a call that never returns, or that ends
// the program, is the last line. Bytes are hexadecimal digits; numbers count from 1.
//
//     {"format":1,"content":"jighost trace"}
//     {"entry":"operation","operation":1,"name":"GetBodyID","record":"00 00 ..."}
//     {"entry":"log","line":"2026/11/22 20:10:29.123 [FUNC] GetBodyID"}
//     {"entry":"call","operation":1,"call":1,"function":"CProperty::Get","name":"","id":16777222,
//      "value":8,"from_list":false,"sent":""}
//     {"entry":"answer","operation":1,"call":1,"received":"b5 0d ...","size_left":null,
//      "result":null,"failure":null,"time_ms":0.012}
//     {"entry":"result","operation":1,"result":0,"record":"...","time_ms":0.4}
//
// each one line. A failure is {"kind":"camera exception","code":8193,"message":"..."}; the other
// kinds are "standard exception" and "integer".
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "jighost/Trace.h"

constexpr std::uint32_t TRACE_FORMAT = 1;
constexpr char TRACE_CONTENT[] = "jighost trace";

struct TRACED_FAULT {
    SimulatedBody::FAULT kind;
    const char* name;
};

constexpr TRACED_FAULT TRACED_FAULTS[] = {
    {SimulatedBody::FAULT::CAMERA_EXCEPTION, "camera exception"},
    {SimulatedBody::FAULT::STANDARD_EXCEPTION, "standard exception"},
    {SimulatedBody::FAULT::INTEGER, "integer"},
};

/// As NewTrace of a path.
std::unique_ptr<Trace> NewFileTrace(const std::string& path);

struct TRACED_OPERATION {
    const OPERATION_INFO* info = nullptr;
    RecordBytes record;                      ///< as it was given; it may lack zeros at its end
    std::vector<SimulatedBody::CALL> calls;  ///< with their answers
    bool bUnanswered = false;                ///< the last one has none: it never returned
    std::optional<std::int32_t> result;      ///< none: the trace ends within the operation
    RecordBytes returned;                    ///< the record that came back, the same way
};

/// Reads and checks a whole trace. A last line without its end was cut off and is left out. Throws
/// EXIT_WRONG_USE with one line that says where the file is no trace, and what was expected.
std::vector<TRACED_OPERATION> ReadTrace(const std::string& path);
