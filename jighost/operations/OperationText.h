// Words for what stands in the table of operations, the same wherever people read them.
#pragma once

#include "jighost/operations/OperationTable.h"

/// "in", "out" or "in and out", as the host sees it; "-" for an operation without a record.
const char* UseText(RECORD_USE use);

/// The bytes of a record, such as "20 bytes" or "up to 256 bytes".
std::string SizeText(const RECORD& record);

/// The bytes of a field, such as "4" or "128 x 4".
std::string WidthText(const FIELD& field);

/// Such as "unsigned 32 bits".
const char* TypeText(FIELD_KIND kind);
