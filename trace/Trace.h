// A trace: operations of the module with their records, and what they asked of the camera, as a
// file of JSON Lines. The format stands first, then what happened, in order. Each line is in the
// system's hands before anything else happens, so that a call that never returns, or that ends the
// program, is the last line. Operations, and the calls of each, count from 1.
//
//     {"format":3,"content":"jighost trace"}
//     {"entry":"operation","operation":1,"name":"GetBodyID","record":"00 00 ..."}
//     {"entry":"log","line":"2026/11/22 20:10:29.123 [FUNC] GetBodyID","interleaved":false}
//     {"entry":"call","operation":1,"call":1,"function":"CProperty::Get","name":"","id":16777222,
//      "value":8,"from_list":false,"sent":""}
//     {"entry":"answer","operation":1,"call":1,"received":"b5 0d ...","size_left":null,
//      "result":null,"failure":null,"time_ms":0.012}
//     {"entry":"result","operation":1,"result":0,"record":"...","time_ms":0.4}
//
// each one line. Up to 64 bytes are hexadecimal digits; of more stands "base64:" and their base64.
// A record is null for a null pointer, and empty where nobody knows its size. A failure is
// {"kind":"camera exception","code":8193,"message":"..."}; the other kinds are "standard exception"
// and "integer". An interleaved line may be another process's.
//
// A recording from a line (recorder/) is a trace with more fields: its first line tells machine,
// process and libraries, an operation its moment and thread. An operation may begin while another
// one runs, on the same thread within it. Calls outside all operations have the operation 0. A file
// that goes on where another one ended tells the number of operations that began before it.
//
//     {"entry":"gap","entries":3,"at":1795380389123,"why":"No space left on device"}
//
// stands where so many entries could not be written. A result has what the module's log grew by
// while the operation ran, as "log", null if nobody has read it, and how many bytes more there
// were, as "log_left_out"; of operations within each other the outermost has all of it. Another
// process's lines may be among it.
//
//     {"entry":"thrown","operation":1,"function":"CSLRMonitor::CSLRMonitor","number":2,
//      "failure":{"kind":"camera exception","code":8193,"message":"..."}}
//
// is what a constructor of the camera link threw, or "_gt", which are no calls. The number counts
// the operation's constructions, of whatever class, or its calls of `_gt`, from 1; outside all
// operations, those there. What throws nothing is no entry, and `jighost --trace` writes none.
//
// Format 1 had hexadecimal digits alone, formats 1 and 2 nothing of what was thrown so.
#pragma once

#include <cstdint>
#include <stdexcept>

#include "link/Call.h"

constexpr std::uint32_t TRACE_FORMAT = 3;
constexpr char TRACE_CONTENT[] = "jighost trace";

struct TRACED_FAULT {
    Link::FAULT kind;
    const char* name;
};

constexpr TRACED_FAULT TRACED_FAULTS[] = {
    {Link::FAULT::CAMERA_EXCEPTION, "camera exception"},
    {Link::FAULT::STANDARD_EXCEPTION, "standard exception"},
    {Link::FAULT::INTEGER, "integer"},
};

/// A file that can't be written, or is no trace; its text names the file.
class TraceError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};
