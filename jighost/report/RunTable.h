// Many runs in a table, to sort and to filter.
#pragma once

#include "jighost/report/ReportedRun.h"

/// How many runs came to what: "2 failed, 22 passed".
Markup RunCounts(const ReportedRuns& runs);

/// What did not pass stands first, then the latest first. Each row leads to its run.
Markup RunTable(const ReportedRuns& runs);
