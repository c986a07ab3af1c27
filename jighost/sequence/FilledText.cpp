// Values are put in once: what a value holds is no place for another one.
#include "jighost/sequence/FilledText.h"

#include "jighost/sequence/SequenceFormat.h"
#include "jighost/text/HostError.h"
#include "jighost/text/NearestName.h"

static const std::string_view PLACE_BEGIN = "${";

static const std::optional<std::string>& ValueOf(const VALUES& values, const std::string& name) {
    const auto found = values.find(name);
    if (found == values.end()) {
        std::vector<std::string> names;
        for (const auto& [known, value] : values) {
            names.push_back(known);
        }
        throw HostError(
            EXIT_WRONG_USE, "there is no parameter '" + name + "'" + NearestNames(name, names));
    }
    return found->second;
}

std::optional<std::string> WithValues(const std::string& text, const VALUES& values) {
    std::string filled;
    bool bKnown = true;
    std::size_t behind = 0;
    for (std::size_t place = text.find(PLACE_BEGIN); place != std::string::npos;
         place = text.find(PLACE_BEGIN, behind)) {
        filled.append(text, behind, place - behind);
        const std::size_t end = text.find('}', place);
        if (end == std::string::npos) {
            throw HostError(EXIT_WRONG_USE, "expected } behind ${, got '" + text + "'");
        }
        const std::size_t name = place + PLACE_BEGIN.size();
        const auto& value = ValueOf(values, text.substr(name, end - name));
        bKnown = bKnown && value;
        filled += value.value_or("");
        behind = end + 1;
    }
    filled.append(text, behind);
    return bKnown ? std::optional(filled) : std::nullopt;
}

static void CheckNamePart(const std::string& name, const std::string& value) {
    const bool bHarmful = value.find_first_of("/\\:*?\"<>|") != std::string::npos ||
                          value.starts_with('.') || PlainText(value) != value;
    if (bHarmful) {
        throw HostError(
            EXIT_WRONG_USE, "expected a value of " + name +
                                " that can be part of a file's name, "
                                "got '" +
                                value + "'");
    }
}

std::optional<std::string> PathWithValues(const std::string& path, const VALUES& values) {
    for (const auto& [name, value] : values) {
        if (value && path.find("${" + name + "}") != std::string::npos) {
            CheckNamePart(name, *value);
        }
    }
    return WithValues(path, values);
}

std::optional<std::string> FilledText::Fill(
    const YAML::Node& node, const std::string& expected, Filling filling) const {
    const std::string text = m_File.Text(node, expected);
    if (m_File.Format() < SEQUENCE_FORMAT) {
        return text;
    }
    std::optional<std::string> filled;
    m_File.Explain(node, [&] { filled = filling(text, m_Values); });
    return filled;
}

std::optional<std::string> FilledText::Text(
    const YAML::Node& node, const std::string& expected) const {
    return Fill(node, expected, &WithValues);
}

std::optional<std::string> FilledText::Path(
    const YAML::Node& node, const std::string& expected) const {
    return Fill(node, expected, &PathWithValues);
}
