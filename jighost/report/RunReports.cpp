// Texts of reports, put where they are wanted.
#include "jighost/report/RunReports.h"

#include "jighost/report/JUnit.h"
#include "jighost/report/ReportPage.h"
#include "jighost/text/HostError.h"
#include "platform/Utf8Path.h"
#include "platform/WholeFile.h"

void CheckReportWritable(const std::string& path) {
    WithExitCode(EXIT_WRONG_USE, [&] { CheckReplaceable(PathOf(path)); });
}

void WriteReport(const std::string& path, const std::string& text) {
    WithExitCode(
        EXIT_HOST_ERROR, [&] { ReplaceFile(PathOf(path), text, OUTLASTS::POWER_FAILURES); });
}

void CheckReportsWritable(const REPORT_PATHS& paths) {
    for (const std::string& path : {paths.page, paths.results}) {
        if (!path.empty()) {
            CheckReportWritable(path);
        }
    }
}

void WriteRunPage(const REPORT_PATHS& paths, const RUN_RECORD& record) {
    if (!paths.page.empty()) {
        ReportPage page;
        page.Add(record);
        WriteReport(paths.page, page.Text());
    }
}

void WriteRunResults(const REPORT_PATHS& paths, const RUN_RECORD& record) {
    if (!paths.results.empty()) {
        WriteReport(paths.results, JUnitText(record));
    }
}
