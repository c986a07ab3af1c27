// A call of the camera link as data: what went in, what came back, what was thrown. For all that
// stand beside the module and look at its calls, answer them or keep them.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace Link {

using Bytes = std::vector<std::uint8_t>;

enum class FAULT { CAMERA_EXCEPTION, STANDARD_EXCEPTION, INTEGER };
enum class MOMENT { BEFORE, AFTER };  ///< nothing has happened yet, or all of it has

struct FAILURE {
    FAULT kind = FAULT::CAMERA_EXCEPTION;
    MOMENT moment = MOMENT::BEFORE;
    std::int32_t code = 0x2001;                   ///< of the CException, or the integer
    std::string message = "[EVNT] Link failure";  ///< of an exception of either kind
    bool operator==(const FAILURE&) const = default;
};

/// More than the largest property: of a larger block a CALL keeps nothing.
constexpr std::uint32_t BLOCK_LIMIT = 0x100000;

struct CALL {
    std::string function;    ///< such as "CProperty::Get", "CEventProcedure::Execute"
    std::string name;        ///< the event's or file's name; empty otherwise
    std::uint32_t id = 0;    ///< property id, memory address, bank, function number, list count or
                             ///< kind of a pushed integer
    std::int64_t value = 0;  ///< event parameter, pushed integer or the size in bytes
    bool fromList = false;   ///< the Execute that takes the parameter list in place of `value`
    Bytes sent;              ///< the bytes that went to the body
    Bytes received;          ///< the bytes that came back; of ExecuteAndGetSize the size's four, of
                             ///< GetPropertyFullPath the path's characters
    std::optional<std::uint32_t> sizeLeft;  ///< by GetReturnData and ExecuteAndGetData
    std::optional<std::int32_t> result;     ///< the result word of an event
    std::optional<FAILURE> failure;         ///< what the call threw; the moment is not told
    bool operator==(const CALL&) const = default;
};

/// The function that gives line prefixes, which is no call but may throw, as constructors are.
constexpr char LINE_PREFIX_FUNCTION[] = "_gt";

/// What a constructor or `_gt` threw.
struct THROW {
    std::string function;      ///< such as "CSLRMonitor::CSLRMonitor"
    std::uint32_t number = 0;  ///< among the operation's constructions, or its calls of `_gt`
    FAILURE failure;           ///< the moment is not told
    bool operator==(const THROW&) const = default;
};

}  // namespace Link
