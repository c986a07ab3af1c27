// What people need to know of each operation. All that explains operations comes from here: running
// by named fields, the list and the documents.
#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "jighost/operations/Record.h"

/// Who fills the record that an operation's argument points to. This is independent of the
/// registration: many operations that describe no block take a pointer all the same.
enum class RECORD_USE { NONE, IN, OUT, IN_OUT };

struct OPERATION_INFO {
    const char* name;
    RECORD_USE use;
    const RECORD* record;  ///< never null; an empty record where there is none
    const char* description;
    const char* failures;  ///< beside what every operation can fail with; empty if that is all
};

struct OPERATION_GROUP {
    const char* name;
    std::span<const OPERATION_INFO> operations;
};

constexpr std::size_t OPERATION_COUNT = 131;

/// All groups; the operations, one group behind the other, stand in the order of registration.
std::span<const OPERATION_GROUP> OperationGroups();

/// In the order of registration.
std::vector<std::string> OperationNames();

/// The name of an operation's group; `info` is from the table.
const char* GroupName(const OPERATION_INFO& info);

/// Null for a name that is none.
const OPERATION_INFO* FindOperation(std::string_view name);

/// Throws EXIT_WRONG_USE, with the nearest names, for a name that is none.
const OPERATION_INFO& KnownOperation(const std::string& name);

/// Whether the operation writes the adjustment data into the folder that SHARED_NAME_FOLDER names.
bool IsDump(const OPERATION_INFO& info);

/// Whether there is a record and the operation writes to it.
bool FillsRecord(const OPERATION_INFO& info);

/// Throws EXIT_WRONG_USE if a record is given to an operation that takes none, or none is given to
/// one that reads it.
void CheckRecordGiven(const OPERATION_INFO& info, bool bGiven);
