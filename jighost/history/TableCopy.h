// Rows sent into a table of PostgreSQL in one stream, for which SOCI has no call.
#pragma once

#include <vector>

#include "jighost/history/Database.h"

namespace soci {
class session;
}

/// Adds the rows, in their order. What the server says against one of them comes as
/// soci::soci_error, and none is in the table then.
void CopyInto(soci::session& session, const char* pszTable, const std::vector<COLUMN>& columns);
