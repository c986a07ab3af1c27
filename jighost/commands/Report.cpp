// jighost report: filed records of sequences' runs as a page for people.
#include <iostream>
#include <memory>

#include "jighost/commands/Commands.h"
#include "jighost/output/Complaint.h"
#include "jighost/records/RunRecordReader.h"
#include "jighost/report/ReportPage.h"
#include "jighost/report/RunReports.h"
#include "jighost/session/Outputs.h"

struct REPORT_OPTIONS {
    std::vector<std::string> recordPaths;
    std::string pagePath;
};

static EXIT_CODE Report(const REPORT_OPTIONS& options);

void AddReportCommand(Command& program, HOST& host) {
    Command command = program.AddCommand(
        "report", "Makes a page of the records of runs, for a browser without a network");
    const auto pOptions = std::make_shared<REPORT_OPTIONS>();
    command.AddRest(
        "records", pOptions->recordPaths,
        "Files of `sequence --record` or `--records`, one for each run", "FILE");
    command.AddOption("-o", pOptions->pagePath, "The page", "FILE");
    command.SetFooter(
        "Examples:\n"
        "  jighost report run.json -o run.html\n"
        "  jighost report records/*.json -o lot.html\n"
        "The page is one file. Of one run it shows what went wrong, measurements, steps and link\n"
        "calls; of many, a table and each measurement over time besides. A record that can't be\n"
        "read is told and left out, and the exit code is 5.");
    command.SetWork([&host, pOptions] { host.exitCode = Report(*pOptions); });
}

static void CheckUse(const REPORT_OPTIONS& options) {
    if (options.recordPaths.empty() || options.pagePath.empty()) {
        throw HostError(EXIT_WRONG_USE, "expected records and -o FILE");
    }
    std::vector<NAMED_FILE> inputs;
    for (const std::string& path : options.recordPaths) {
        inputs.push_back({"the record " + path, path});
    }
    CheckOutputs({{"-o", options.pagePath}}, inputs);
    CheckReportWritable(options.pagePath);
}

static EXIT_CODE Report(const REPORT_OPTIONS& options) {
    CheckUse(options);
    ReportPage page;
    EXIT_CODE exitCode = EXIT_OK;
    for (const std::string& path : options.recordPaths) {
        if (!DoOrComplain([&] { page.Add(ReadRunRecord(path)); })) {
            exitCode = EXIT_UNEXPECTED;
        }
    }
    if (page.Count() == 0) {
        throw HostError(
            EXIT_WRONG_USE, "no record could be read: " + options.pagePath + " is not written");
    }
    WriteReport(options.pagePath, page.Text());
    std::cout << PlainText(options.pagePath) << ": " << page.Count()
              << (page.Count() == 1 ? " run, " : " runs, ") << page.NotPassed()
              << " of them not passed\n";
    return exitCode;
}
