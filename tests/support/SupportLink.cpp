// Where the build puts them; and one with another name in its table of names.
#include "tests/support/SupportLink.h"

#include "tests/support/Support.h"

std::filesystem::path LinkFile(const std::string& name) {
    return BuildFolder() / name / BODYLNK_FILE;
}

std::string WriteLackingLink(const std::filesystem::path& path) {
    std::string bytes = ReadFile(LinkFile("second_link"));
    std::string name = "_ZN9CProperty8SaveListEv";
    const std::size_t place = bytes.find('\0' + name + '\0');
    EXPECT_NE(place, std::string::npos);
    bytes.at(place + name.size()) = 'i';
    WriteFile(path, bytes);
    return name;
}
