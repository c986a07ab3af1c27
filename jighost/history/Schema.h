// The tables of a history, and the versions that they have had.
#pragma once

#include "jighost/history/Database.h"

/// Makes the tables of an empty database, or brings those of a former version up to date: all of
/// it or nothing, also where several do so at once. Throws EXIT_HOST_ERROR for a database of
/// something else or of a newer version; nothing is changed then.
void MakeHistory(Database& database);

/// The same for a history that must be there already.
void RequireHistory(Database& database);
