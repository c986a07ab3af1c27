// Where the build puts them; one with another name in its table of names; a folder made of copies.
#include "tests/support/SupportLink.h"

#include "platform/Program.h"
#include "recorder/Files.h"
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

RecordedFolder::RecordedFolder(const std::string& secondLink) {
    namespace fs = std::filesystem;
    const fs::path folder = fs::current_path() / "line";
    module = folder / MODULE_FILE_NAME;
    link = folder / LINK_FILE_NAME;
    linkBehind = folder / Recorder::RecordedName(LINK_FILE_NAME);
    recordings = folder / "recordings";
    fs::create_directories(recordings);
    fs::copy_file(BuildFolder() / "recorder" / MODULE_FILE_NAME, module);
    fs::copy_file(BuildFolder() / "recorder" / LINK_FILE_NAME, link);
    fs::copy_file(
        BuildFolder() / MODULE_FILE_NAME, folder / Recorder::RecordedName(MODULE_FILE_NAME));
    fs::copy_file(LinkFile(secondLink), linkBehind);
}
