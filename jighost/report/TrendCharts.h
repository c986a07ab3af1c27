// Each measurement over all runs of a sequence, in the order of their begins.
#pragma once

#include "jighost/report/ReportedRun.h"

/// A chart for each name and unit; nothing if nothing was measured.
Markup TrendCharts(const ReportedRuns& runs);
