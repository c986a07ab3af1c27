// Failure: not as expected. Error: an operation failed or did not return, or the run was ended.
#include "jighost/report/JUnit.h"

#include <set>

#include "jighost/report/RecordSection.h"
#include "jighost/report/Words.h"

/// Seconds without an exponent, which readers would not take.
static std::string SecondsText(double ms) {
    return FixedText(ms / 1000, 6);
}

namespace {

class TestSuite {
  public:
    explicit TestSuite(const RUN_RECORD& record) : m_Record(record) {}

    std::string Text() {
        for (const RECORDED_STEP& step : m_Record.steps) {
            AddStep(step);
        }
        AddSkipped();
        AddEnd();
        Markup suite;
        suite << TAG{RESULTS_BEGIN} << "<testsuites>\n<testsuite name=\""_tag << m_Record.sequence
              << R"(" tests=")"_tag << m_Tests << R"(" failures=")"_tag << m_Failures
              << R"(" errors=")"_tag << m_Errors << R"(" skipped=")"_tag << m_Skipped
              << R"(" time=")"_tag << SecondsText(m_Record.timeMs) << R"(" timestamp=")"_tag
              << m_Record.started << R"(" hostname=")"_tag << m_Record.station << "\">\n"_tag
              << Properties() << m_Cases << "</testsuite>\n</testsuites>\n"_tag;
        return suite.Text();
    }

  private:
    Markup Properties() const {
        Markup properties;
        const auto add = [&](const std::string& name, const std::string& value) {
            properties << R"(<property name=")"_tag << name << R"(" value=")"_tag << value
                       << "\"/>\n"_tag;
        };
        properties << "<properties>\n"_tag;
        add("record", m_Record.number);
        add("outcome", VerdictName(m_Record.verdict));
        add("serial", SerialText(m_Record));
        add("station", m_Record.station);
        add("operator", m_Record.operatorName);
        for (const auto& [name, value] : m_Record.parameters) {
            add("parameter " + name, value);
        }
        properties << "</properties>\n"_tag;
        return properties;
    }

    void BeginCase(const std::string& name, double ms) {
        ++m_Tests;
        m_Cases << R"(<testcase classname=")"_tag << m_Record.sequence << R"(" name=")"_tag << name
                << R"(" time=")"_tag << SecondsText(ms) << "\">\n"_tag;
    }
    void AddProblem(VERDICT verdict, const std::string& problem) {
        const bool bFailure = verdict == VERDICT::FAILED;
        ++(bFailure ? m_Failures : m_Errors);
        m_Cases << (bFailure ? "<failure"_tag : "<error"_tag) << R"( type=")"_tag
                << VerdictName(verdict) << R"(" message=")"_tag << problem << "\"/>\n"_tag;
    }
    void AddStep(const RECORDED_STEP& step) {
        BeginCase(StepTitle(step), step.timeMs);
        if (step.verdict != VERDICT::PASSED) {
            AddProblem(step.verdict, step.problem);
        }
        AddLog(step);
        m_Cases << "</testcase>\n"_tag;
    }
    void AddLog(const RECORDED_STEP& step) {
        Markup lines;
        for (const RECORDED_ATTEMPT& attempt : step.attempts) {
            for (const std::string& line : attempt.log) {
                lines << line << "\n"_tag;
            }
        }
        if (!lines.Text().empty()) {
            m_Cases << "<system-out>"_tag << lines << "</system-out>\n"_tag;
        }
    }
    void AddSkipped() {
        std::set<std::uint64_t> ran;
        for (const RECORDED_STEP& step : m_Record.steps) {
            ran.insert(step.number);
        }
        for (std::uint64_t number = m_Record.range.first; number <= m_Record.range.last; ++number) {
            if (!ran.contains(number)) {
                ++m_Skipped;
                BeginCase(std::to_string(number), 0);
                m_Cases << "<skipped message=\"did not run\"/>\n</testcase>\n"_tag;
            }
        }
    }
    /// A run that did not pass has something that did not, whatever its steps came to.
    void AddEnd() {
        if (m_Record.verdict != VERDICT::PASSED && m_Failures + m_Errors == 0) {
            BeginCase("end of the run", 0);
            AddProblem(m_Record.verdict, ProblemText(m_Record));
            m_Cases << "</testcase>\n"_tag;
        }
    }

    const RUN_RECORD& m_Record;
    Markup m_Cases;
    std::size_t m_Tests = 0;
    std::size_t m_Failures = 0;
    std::size_t m_Errors = 0;
    std::size_t m_Skipped = 0;
};

}  // namespace

std::string JUnitText(const RUN_RECORD& record) {
    return TestSuite(record).Text();
}
