// The form of an operation, and how the module hands its operations to the host.
#pragma once

#include <cstdint>
#include <span>

/// An operation: takes one untyped pointer, whose target each operation fixes, and gives a result
/// code. The host owns what the pointer points to. Nothing is thrown.
using EVENT_PROC = std::int32_t (*)(void* argument) noexcept;

/// The host's callback. The three integers are valid only during the call; the name stays valid
/// while the module is loaded.
using EVENT_PROC_REGISTER_FUNC = void (*)(
    const char* name, EVENT_PROC procedure, std::int32_t* size, std::int32_t* direction,
    std::int32_t* reserved);

/// What a registration says about the block that the operation's argument points to.
enum EVENT_PROC_DIRECTION : std::int32_t {
    EVENT_PROC_IN = 0,    ///< the host fills it and the operation reads it
    EVENT_PROC_OUT = 1,   ///< the operation fills it
    EVENT_PROC_NONE = 3,  ///< nothing; the operation may take a pointer all the same
};

/// One registration. Most operations describe no block.
struct REGISTRATION {
    const char* name;
    EVENT_PROC procedure;
    std::int32_t size = 0;  ///< bytes of the argument's block
    EVENT_PROC_DIRECTION direction = EVENT_PROC_NONE;
};

/// Calls the host's callback for each registration, in order.
void RegisterEventProcs(
    EVENT_PROC_REGISTER_FUNC callback, std::span<const REGISTRATION> registrations);
