// Result codes, the failure test, and the checks that throw a code with its message.
#pragma once

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string>
#include <string_view>
#include <type_traits>

#include "link/CException.h"

class CSharedMemory;

/// Every failure that the module makes is odd, because all callers test bit 0. Any other odd value
/// is the result word of an event procedure in the camera, or a code of the camera link.
enum RESULT : std::int32_t {
    RESULT_SUCCESS = 0,
    RESULT_SYSTEM_ERROR = 1,           ///< a file or platform call failed
    RESULT_INVALID_PARAMETER = 3,      ///< null pointer, or a value out of range
    RESULT_OUT_OF_MEMORY = 5,          ///< a working buffer could not be allocated
    RESULT_RUNTIME_ERROR = 7,          ///< a string routine, or the opening of a file, failed
    RESULT_NOT_FOUND = 25,             ///< the name is not in the property catalogue
    RESULT_UNEXPECTED_EXCEPTION = 33,  ///< something other than a CException pointer was thrown
    RESULT_INVALID_CAMERA_VALUE = 35,  ///< the camera gave a value that can't be accepted
};

/// The failure test: an even word, zero or not, is success.
constexpr bool IsFailure(std::int32_t result) {
    return (result & 1) != 0;
}

/// Throws a CException with this message and code.
[[noreturn]] void Fail(std::string_view message, std::int32_t code);

/// Throws code 3 with "[VALU] " and `name` if the pointer is null.
void CheckPointer(const void* pointer, std::string_view name);

/// Throws an event's result word with "[EVNT] " and `name` if the word is a failure.
void CheckEvent(std::int32_t result, std::string_view name);

/// Throws a nested operation's result with "[FUNC] " and its log name if the result is a failure.
void CheckNested(std::int32_t result, std::string_view logName);

/// Throws code 1 with "[WAPI] " and the platform call that failed if the block is not open.
void CheckSharedMemory(const CSharedMemory& block);

struct FREE_BUFFER {
    void operator()(void* pMemory) const { std::free(pMemory); }
};

template <class Element>
using Buffer = std::unique_ptr<Element[], FREE_BUFFER>;

/// A working buffer of `count` elements, all zero; throws code 5 with "[VALU] " and `name` if
/// there is no memory for it. Its memory comes page by page, as it is written: a count from outside
/// costs nothing yet.
template <class Element>
Buffer<Element> AllocateBuffer(std::size_t count, std::string_view name) {
    static_assert(std::is_trivial_v<Element>);
    // One at least: nothing asked for may be answered with null.
    void* pMemory = std::calloc(std::max<std::size_t>(count, 1), sizeof(Element));
    if (pMemory == nullptr) {
        Fail(std::string("[VALU] ").append(name), RESULT_OUT_OF_MEMORY);
    }
    return Buffer<Element>(static_cast<Element*>(pMemory));
}
