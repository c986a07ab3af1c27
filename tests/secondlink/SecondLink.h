// What tests see of the second camera link, and how they make it throw.
#pragma once

#include <array>
#include <cstdint>
#include <string>

#include "link/CException.h"

/// Everything that a camera link may throw, and what it should not.
enum class THROWN {
    CAMERA_EXCEPTION,
    DERIVED_EXCEPTION,
    NULL_EXCEPTION,
    STANDARD_EXCEPTION,
    INTEGER,
    TEXT,
    OWN_TYPE,
    COUNT
};
struct DERIVED_EXCEPTION : CException {
    using CException::CException;
};
struct OWN_TYPE {
    int number;
};

struct SECOND_LINK {
    std::string notes;        ///< a line for each step, its own ones indented, and for each answer
    std::uint32_t steps = 0;  ///< constructions, calls of member functions, line prefixes
    std::uint32_t calls = 0;  ///< of member functions by the caller ...
    std::uint32_t ownCalls = 0;  ///< ... and by the link itself
    std::uint32_t failAt = 0;    ///< the step that throws; 0 for none
    THROWN thrown = THROWN::CAMERA_EXCEPTION;
    void (*meanwhile)() = nullptr;           ///< is called once, within the next call
    const void* pThrown = nullptr;           ///< the very object thrown last, or what it points to
    std::array<const void*, 4> arguments{};  ///< of the last call, what they refer or point to
};

/// Exported as "SecondLink".
using SECOND_LINK_PROC = SECOND_LINK* (*)();
