// The shapes that many operations share: write, read or save one property, run one event. An
// operation states its facts and passes its argument on; the frame is that of RunOperation.
#pragma once

#include <cstdint>

#include "frame/OperationFrame.h"

/// A property that the host's buffer is read from or written to as it stands.
struct PROPERTY {
    std::uint32_t id;
    std::uint32_t size;       ///< bytes, also of the host's buffer
    const char* pszArgument;  ///< the pointer's name in the message of a null pointer
};

/// Sets the property to the host's bytes. A null pointer ends in code 3 without a camera call.
std::int32_t WriteProperty(
    const OPERATION& operation, const PROPERTY& property, const void* argument) noexcept;

/// Reads the property straight into the host's buffer. A null pointer ends as above.
std::int32_t ReadProperty(
    const OPERATION& operation, const PROPERTY& property, void* argument) noexcept;

/// Sets the property `id` to the fixed `size` bytes at `pValue`.
std::int32_t WriteFixedValue(
    const OPERATION& operation, std::uint32_t id, std::uint32_t size, const void* pValue) noexcept;

/// Saves the property in the camera.
std::int32_t SaveProperty(const OPERATION& operation, std::uint32_t id) noexcept;

/// Runs the event with one parameter; its result word is not looked at.
std::int32_t RunEvent(
    const OPERATION& operation, const char* pszEvent, std::int32_t parameter) noexcept;

/// Runs the event with one parameter and fails with `pszMessage` and the result word if the word is
/// a failure.
std::int32_t RunTestedEvent(
    const OPERATION& operation, const char* pszEvent, std::int32_t parameter,
    const char* pszMessage) noexcept;
