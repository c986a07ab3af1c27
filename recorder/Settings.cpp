// Line by line: a key, " = ", a value.
#include "recorder/Settings.h"

#include <charconv>
#include <fstream>
#include <limits>
#include <string_view>

#include "platform/Utf8Path.h"

namespace Recorder {

static const std::string_view RECORD = "record ";
static const std::string_view EQUALS = " = ";

/// 0 for what is no number.
template <class Number>
static Number NumberOf(std::string_view text) {
    Number number = 0;
    const auto [pEnd, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    return error == std::errc() && pEnd == text.data() + text.size() ? number : 0;
}

static void Take(SETTINGS& settings, std::string_view key, std::string_view value) {
    if (key == "into") {
        settings.into = PathOf(std::string(value));
    } else if (key == "keep") {
        settings.keep = NumberOf<std::uint64_t>(value);
    } else if (key.starts_with(RECORD)) {
        settings.recordSizes[std::string(key.substr(RECORD.size()))] =
            NumberOf<std::uint32_t>(value);
    }
}

SETTINGS ReadSettings(const std::filesystem::path& file) {
    SETTINGS settings;
    settings.into = file.parent_path() / "recordings";
    std::ifstream lines(file);
    for (std::string line; std::getline(lines, line);) {
        const std::string_view text(line);
        const std::size_t equals = text.find(EQUALS);
        if (equals != std::string_view::npos) {
            Take(settings, text.substr(0, equals), text.substr(equals + EQUALS.size()));
        }
    }
    return settings;
}

std::string SettingsText(const SETTINGS& settings) {
    std::string text =
        "# What the recorder in this folder goes by; jighost recorder install wrote it.\n";
    const auto add = [&text](std::string_view key, const std::string& value) {
        text.append(key).append(EQUALS).append(value).append("\n");
    };
    add("into", settings.into.string());
    add("keep", std::to_string(settings.keep));
    for (const auto& [operation, size] : settings.recordSizes) {
        add(std::string(RECORD) + operation, std::to_string(size));
    }
    return text;
}

}  // namespace Recorder
