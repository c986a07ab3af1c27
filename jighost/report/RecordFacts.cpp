// Lists of names and values; what a record does not tell is left out.
#include "jighost/report/RecordFacts.h"

#include "jighost/report/Words.h"

namespace {

class FactList {
  public:
    void Add(std::string_view name, std::string_view value) {
        if (!value.empty()) {
            m_Facts << "<div><dt>"_tag << name << "</dt><dd>"_tag << value << "</dd></div>\n"_tag;
        }
    }
    void AddFile(const std::string& name, const RECORDED_FILE& file) {
        Add(name, file.path + (file.version.empty() ? "" : ", " + file.version));
        Add(name + ", SHA-256", file.sha256);
    }
    Markup Take() const {
        Markup list;
        list << "<dl>\n"_tag << m_Facts << "</dl>\n"_tag;
        return list;
    }

  private:
    Markup m_Facts;
};

}  // namespace

static std::string RangeText(const RUN_RECORD& record) {
    std::string text = std::to_string(record.steps.size()) + " run";
    if (record.range.of > 0) {
        text += ", asked for " + std::to_string(record.range.first) + " to " +
                std::to_string(record.range.last) + " of " + std::to_string(record.range.of);
    }
    return text;
}

Markup MainFacts(const RUN_RECORD& record) {
    FactList facts;
    facts.Add("No serial number", record.bodyProblem);
    facts.Add("Station", record.station);
    facts.Add("Operator", record.operatorName);
    facts.Add("Steps", RangeText(record));
    for (const auto& [name, value] : record.parameters) {
        facts.Add("Parameter " + name, value.empty() ? "(empty)" : value);
    }
    for (const std::string& fault : record.faults) {
        facts.Add("Fault put in", fault);
    }
    return facts.Take();
}

Markup FurtherFacts(const RUN_RECORD& record) {
    FactList facts;
    facts.Add("Record", record.number);
    facts.Add("jighost", record.jighost);
    for (const RECORDED_FILE& file : record.sequenceFiles) {
        facts.AddFile("Sequence", file);
    }
    facts.AddFile("Module", record.module);
    facts.AddFile("Camera link", record.link);
    for (const auto& [name, value] : record.bodyID.items()) {
        facts.Add("Body's " + name, FieldText(value));
    }
    Markup details;
    details << "<h3>What it ran with</h3>\n"_tag << facts.Take();
    return details;
}
