// An object of another library as its users have it: memory, and functions by their addresses. The
// compiler makes each call from a pointer to a member function, with whatever convention the
// platform has for those.
#pragma once

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>

#include "link/CException.h"

namespace Link {

/// Bytes that an object of another library may have at most.
constexpr std::size_t OBJECT_LIMIT = 0x10000;

class OtherObject {
  public:
    /// Memory alone: the library's constructor is called like a member function.
    OtherObject() { m_Guard.fill(GUARD); }
    OtherObject(const OtherObject&) = delete;
    OtherObject& operator=(const OtherObject&) = delete;
    ~OtherObject() = default;

    /// The library sees the caller's own arguments.
    template <class... Parameters, class... Arguments>
    void Call(void (OtherObject::*pMethod)(Parameters...), const Arguments&... arguments) {
        (this->*pMethod)(arguments...);
        CheckLimit();
    }

    /// Throws a CException pointer if the object has turned out to be larger than OBJECT_LIMIT.
    void CheckLimit() const {
        const auto isGuard = [](std::byte each) { return each == GUARD; };
        if (!std::all_of(m_Guard.begin(), m_Guard.end(), isGuard)) {
            throw new CException("[VALU] Link object larger than 65536 bytes", OBJECT_TOO_LARGE);
        }
    }

  private:
    static constexpr std::byte GUARD{0xD7};
    static constexpr std::int32_t OBJECT_TOO_LARGE = 0x100F;

    // Aligned for any type that the platform has an instruction for.
    [[maybe_unused]] alignas(64) std::array<std::byte, OBJECT_LIMIT> m_Memory;
    std::array<std::byte, 64> m_Guard;
};

/// The type of a member function as a function of an OtherObject.
template <class Member>
struct OF_OTHER;
template <class Class, class Result, class... Parameters>
struct OF_OTHER<Result (Class::*)(Parameters...)> {
    using METHOD = Result (OtherObject::*)(Parameters...);
};
template <class Member>
using MethodOf = typename OF_OTHER<Member>::METHOD;

/// Whether a pointer to a member function is the function's address and no more, as the Microsoft
/// C++ ABI has it for a class without bases.
constexpr bool IS_MICROSOFT_ABI = sizeof(void(OtherObject::*)()) == sizeof(std::uintptr_t);

/// What it is elsewhere: the lowest bit of a function's address is free, and set for a virtual one.
struct ITANIUM_METHOD {
    std::uintptr_t address;
    std::ptrdiff_t adjustment;  ///< of `this`, in bytes
};

/// The member function at an address; none at one that the ABI has no functions at.
template <class Method>
Method MethodAt(std::uintptr_t address) {
    if constexpr (IS_MICROSOFT_ABI) {
        return std::bit_cast<Method>(address);
    } else {
        return std::bit_cast<Method>(
            ITANIUM_METHOD{.address = address % 2 == 0 ? address : 0, .adjustment = 0});
    }
}

}  // namespace Link
