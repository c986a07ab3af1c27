// Nobody is asked before all that was given is found right.
#include "jighost/sequence/GivenValues.h"

#include <algorithm>

#include "jighost/sequence/Mistakes.h"
#include "jighost/text/CsvFile.h"
#include "jighost/text/HostError.h"

namespace {

class ValueCollector {
  public:
    ValueCollector(const std::vector<PARAMETER>& parameters, const GIVEN_VALUES& given)
        : m_Parameters(parameters), m_Given(given) {}

    std::vector<RUN_VALUES> Collect(const ValueAsker& ask) {
        RUN_VALUES all;
        for (const std::string& setting : m_Given.settings) {
            m_Mistakes.Gather([&] { AddSetting(all.values, setting); });
        }
        m_Runs = {all};
        if (!m_Given.tablePath.empty()) {
            m_Mistakes.Gather([&] { AddTable(all.values); });
        }
        m_Mistakes.ThrowIfAny();
        for (const PARAMETER& parameter : m_Parameters) {
            m_Mistakes.Gather([&] { Complete(parameter, ask); });
        }
        m_Mistakes.ThrowIfAny();
        return std::move(m_Runs);
    }

  private:
    void Add(VALUES& values, const std::string& name, const std::string& value) const {
        CheckValue(FindParameter(m_Parameters, name), value);
        if (!values.emplace(name, value).second) {
            throw HostError(
                EXIT_WRONG_USE, "expected a value of " + name + " once, got another one");
        }
    }

    void AddSetting(VALUES& values, const std::string& setting) const {
        const std::size_t equals = setting.find('=');
        if (equals == std::string::npos) {
            throw HostError(EXIT_WRONG_USE, "--set: expected NAME=VALUE, got '" + setting + "'");
        }
        Explain(
            "--set", [&] { Add(values, setting.substr(0, equals), setting.substr(equals + 1)); });
    }

    void AddTable(const VALUES& all) {
        const CSV_TABLE table = ReadCsvFile(m_Given.tablePath);
        Explain(m_Given.tablePath, [&] {
            std::for_each(table.names.begin(), table.names.end(), [this](const auto& name) {
                FindParameter(m_Parameters, name);
            });
        });
        m_Runs.clear();
        for (const CSV_ROW& row : table.rows) {
            m_Runs.push_back({all, m_Given.tablePath + ':' + std::to_string(row.line)});
            for (std::size_t i = 0; i < row.values.size(); ++i) {
                m_Mistakes.Gather([&] {
                    Explain(m_Runs.back().place, [&] {
                        Add(m_Runs.back().values, table.names[i], row.values[i]);
                    });
                });
            }
        }
    }

    /// A parameter has a value in all runs or in none.
    void Complete(const PARAMETER& parameter, const ValueAsker& ask) {
        if (m_Runs.front().values.contains(parameter.name)) {
            return;
        }
        const auto value = parameter.defaultValue ? parameter.defaultValue : ask(parameter);
        if (!value) {
            throw HostError(
                EXIT_WRONG_USE, "the parameter " + parameter.name +
                                    " has no value: expected --set " + parameter.name +
                                    "=VALUE, a column of --table or a terminal");
        }
        for (RUN_VALUES& run : m_Runs) {
            run.values[parameter.name] = value;
        }
    }

    /// Does what throws a HostError, and says where.
    template <class Work>
    static void Explain(const std::string& place, const Work& work) {
        try {
            work();
        } catch (const HostError& e) {
            throw HostError(EXIT_WRONG_USE, place + ": " + e.what());
        }
    }

    const std::vector<PARAMETER>& m_Parameters;
    const GIVEN_VALUES& m_Given;
    Mistakes m_Mistakes;
    std::vector<RUN_VALUES> m_Runs;
};

}  // namespace

std::vector<RUN_VALUES> CollectValues(
    const std::vector<PARAMETER>& parameters, const GIVEN_VALUES& given, const ValueAsker& ask) {
    return ValueCollector(parameters, given).Collect(ask);
}
