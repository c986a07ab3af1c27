// The texts of a sequence's file with the values of parameters in their places: "body ${serial}".
#pragma once

#include <optional>
#include <string>

#include "jighost/sequence/Parameter.h"
#include "jighost/text/YamlFile.h"

/// Puts the values in their places. Nothing if one is not known yet. Throws EXIT_WRONG_USE for a
/// name that is none and for a ${ without its }.
std::optional<std::string> WithValues(const std::string& text, const VALUES& values);

/// The same for a path: a value in it is part of a name and leads to no other folder.
std::optional<std::string> PathWithValues(const std::string& path, const VALUES& values);

/// Texts of one file with their lines, as YamlFile gives them.
class FilledText {
  public:
    /// Both must live as long as this.
    FilledText(const YamlFile& file, const VALUES& values) : m_File(file), m_Values(values) {}

    const YamlFile& File() const { return m_File; }

    // Throw EXIT_WRONG_USE with the line.

    std::optional<std::string> Text(const YAML::Node& node, const std::string& expected) const;
    std::optional<std::string> Path(const YAML::Node& node, const std::string& expected) const;

  private:
    using Filling = std::optional<std::string> (*)(const std::string& text, const VALUES& values);
    std::optional<std::string> Fill(
        const YAML::Node& node, const std::string& expected, Filling filling) const;

    const YamlFile& m_File;
    const VALUES& m_Values;
};
