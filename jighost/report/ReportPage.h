// The page of one run or of many, for a browser without a network: one file that needs no other.
//
// Scripts and styles are those of Report.js and Report.css alone: the page's policy names them by
// their digests, and forbids all else.
#pragma once

#include <map>
#include <string>
#include <string_view>

#include "jighost/report/ReportedRun.h"

/// Of each page.
constexpr std::string_view PAGE_BEGIN = "<!DOCTYPE html>\n";

class ReportPage {
  public:
    /// Keeps what the page shows of it. Of a record that is there already, the former one stays,
    /// unless that one had no end yet.
    void Add(const RUN_RECORD& record);

    std::size_t Count() const { return m_Runs.size(); }
    std::size_t NotPassed() const;

    /// The page, the same one in whatever order the records were added; there is one at least.
    std::string Text() const;

  private:
    std::map<std::string, REPORTED_RUN> m_Runs;  // by the record's number
};
