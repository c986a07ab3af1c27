// A YAML file that somebody wrote by hand: whatever is wrong in it is told with file and line.
#pragma once

#include <yaml-cpp/yaml.h>

#include <cstdint>
#include <functional>
#include <map>
#include <string>

class YamlFile {
  public:
    /// Reads a file with a map in which `format` is a number from 1 to the newest. Throws
    /// EXIT_WRONG_USE if it is none.
    YamlFile(const std::string& path, std::int64_t newestFormat);

    const YAML::Node& Root() const { return m_Root; }
    /// All of it, as it was read.
    const std::string& Content() const { return m_Content; }
    const std::string& Path() const { return m_Path; }
    std::int64_t Format() const { return m_nFormat; }

    // All of these throw EXIT_WRONG_USE, "FILE:LINE: expected ..., got '...'".

    using Reader = std::function<void(const YAML::Node& value)>;
    /// Gives each value of a map to the reader of its key. A key twice or without a reader is
    /// wrong; `what` names the map.
    void ReadMap(
        const YAML::Node& node, const std::string& what,
        const std::map<std::string, Reader>& readers) const;
    /// The text of a value that is neither a map nor a list.
    std::string Text(const YAML::Node& node, const std::string& expected) const;
    /// A decimal or 0x number within the bounds.
    std::int64_t Number(
        const YAML::Node& node, const std::string& what, std::int64_t lowest,
        std::int64_t highest) const;
    void RequireMap(const YAML::Node& node, const std::string& expected) const;
    void RequireList(const YAML::Node& node, const std::string& expected) const;

    [[noreturn]] void RefuseValue(const YAML::Node& node, const std::string& expected) const;
    /// "FILE:LINE"
    std::string Place(const YAML::Node& node) const;
    /// "FILE:LINE: text", for what is wrong in another way.
    [[noreturn]] void Refuse(const YAML::Node& node, const std::string& text) const;

    /// Does what throws a HostError, and adds file and line to it.
    void Explain(const YAML::Node& node, const std::function<void()>& work) const;

  private:
    std::string m_Path;
    std::string m_Content;
    YAML::Node m_Root;
    std::int64_t m_nFormat;
};
