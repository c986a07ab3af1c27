// An operation as a trace has it, and what else stands between operations.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "link/Call.h"

struct TRACED_LOG_LINE {
    std::size_t calls;  ///< of the operation, those made before
    bool bInterleaved;  ///< it may be another process's
    std::string text;
};

struct TRACED_THROW {
    std::size_t calls = 0;  ///< of the operation, those made before
    Link::THROW thrown;
};

struct TRACED_OPERATION {
    std::uint32_t number = 0;  ///< in the process, from 1
    std::string name;
    std::size_t line = 0;            ///< of the file, from 1, where it begins
    std::optional<std::int64_t> at;  ///< milliseconds since 1970; none: the trace does not tell
    std::uint32_t callCount = 0;
    bool bUnanswered = false;             ///< the last call has no answer: it never returned
    bool bTorn = false;                   ///< entries of it are missing: they could not be written
    std::optional<std::int32_t> result;   ///< none: the trace ends within the operation
    double time = 0;                      ///< in milliseconds
    std::optional<std::uint32_t> serial;  ///< of the body, as it was last seen at the end
    std::size_t size = 0;                 ///< bytes that its entries take in the file

    // What follows stands in operations that were asked for whole, and is empty in others.

    bool bNullRecord = false;          ///< the operation was given a null pointer
    Link::Bytes record;                ///< as it was given; it may lack zeros at its end
    std::vector<Link::CALL> calls;     ///< with their answers
    std::vector<double> callTimes;     ///< in milliseconds
    std::vector<TRACED_THROW> throws;  ///< by constructors and `_gt`
    std::vector<TRACED_LOG_LINE> log;
    bool bLogUnread = false;      ///< there may be lines of it, which nobody has read
    std::int64_t logLeftOut = 0;  ///< bytes of the log behind these lines
    Link::Bytes returned;         ///< the record that came back, the same way
};

/// Entries that could not be written.
struct TRACED_GAP {
    std::int64_t entries = 0;
    std::optional<std::int64_t> at;  ///< of the first one, milliseconds since 1970
    std::string why;
    std::size_t line = 0;  ///< of the file, behind them
};

/// Of whom a file is; empty where it does not tell.
struct TRACE_HEAD {
    std::string started;  ///< such as "2026-11-22T21:06:59+01:00"
    std::string machine;
    std::optional<std::uint32_t> process;
    std::string program;
    std::string continues;               ///< the name of the file that it goes on from
    std::uint32_t operationsBefore = 0;  ///< that began in other files of the process
};
