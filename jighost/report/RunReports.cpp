// Texts of reports, put where they are wanted.
#include "jighost/report/RunReports.h"

#include "jighost/report/JUnit.h"
#include "jighost/report/ReportPage.h"
#include "jighost/text/HostError.h"
#include "platform/FileStream.h"
#include "platform/Utf8Path.h"
#include "platform/WholeFile.h"

namespace fs = std::filesystem;

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

static bool BeginsWith(const std::string& path, std::string_view begin) {
    std::error_code ignored;
    if (!fs::is_regular_file(PathOf(path), ignored)) {
        return false;
    }
    std::string text(begin.size(), '\0');
    FileStream(PathOf(path)).read(text.data(), static_cast<std::streamsize>(text.size()));
    return text == begin;
}

void ReplaceFormerReports(const REPORT_PATHS& paths, const RUN_RECORD& record) {
    const REPORT_PATHS former = {
        BeginsWith(paths.page, PAGE_BEGIN) ? paths.page : "",
        BeginsWith(paths.results, RESULTS_BEGIN) ? paths.results : ""};
    CheckReportsWritable(former);
    WriteRunPage(former, record);
    WriteRunResults(former, record);
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
