// Files of reports, such as a run leaves beside its record.
#pragma once

#include <string>

#include "jighost/records/RunRecord.h"

/// Throws EXIT_WRONG_USE for a file that can't be written, as far as that can be known before.
void CheckReportWritable(const std::string& path);

/// Replaces the file as a whole. Throws EXIT_HOST_ERROR.
void WriteReport(const std::string& path, const std::string& text);

/// Where a run's reports go; an empty path for one that nobody wants.
struct REPORT_PATHS {
    std::string page;
    std::string results;  ///< for a build server

    bool IsEmpty() const { return page.empty() && results.empty(); }
};

/// Of both files.
void CheckReportsWritable(const REPORT_PATHS& paths);

/// Puts the record into the place of former runs' reports, so that nobody takes them for those of a
/// run that does not come to its end. A file that is no report stays. Throws EXIT_WRONG_USE for one
/// that can't be written.
void ReplaceFormerReports(const REPORT_PATHS& paths, const RUN_RECORD& record);

// Each writes its file of a run of this program, if anybody wants it.
void WriteRunPage(const REPORT_PATHS& paths, const RUN_RECORD& record);
void WriteRunResults(const REPORT_PATHS& paths, const RUN_RECORD& record);
