// Event procedure tables: 313 chains of named procedures, the host's and the module's own.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

/// Chains of an event procedure table, and of the property hash.
constexpr std::size_t HASH_BUCKETS = 313;

/// A node of a chain: six words, 24 bytes on a 32-bit system.
struct EVENT_PROC_T {
    const char* name;                     ///< zero-terminated
    std::array<std::uintptr_t, 4> words;  ///< copied as they stand, never looked at
    EVENT_PROC_T* next;                   ///< null at the end of the chain
};
static_assert(sizeof(EVENT_PROC_T) == 6 * sizeof(void*));
static_assert(sizeof(void*) != 4 || sizeof(EVENT_PROC_T) == 24);
static_assert(offsetof(EVENT_PROC_T, words) == sizeof(void*));
static_assert(offsetof(EVENT_PROC_T, next) == 5 * sizeof(void*));

/// The bucket of a zero-terminated name: the ELF string hash with its bytes taken as signed, folded
/// to HASH_BUCKETS.
std::uint32_t HashName(const char* pszName);

/// Copies the nodes of the module's own table to the head of the chains of `ppTable`, an array of
/// HASH_BUCKETS heads. The host owns the new nodes.
void GetHash(EVENT_PROC_T** ppTable);
