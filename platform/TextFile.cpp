// What the file is stands ahead of opening it: a pipe would keep the reader waiting.
#include "platform/TextFile.h"

#include <array>
#include <cerrno>
#include <stdexcept>
#include <system_error>

#include "platform/FileReader.h"

[[noreturn]] static void Refuse(const std::filesystem::path& path, const std::string& reason) {
    throw std::runtime_error("can't read " + path.string() + ": " + reason);
}

void RequireRegularFile(const std::filesystem::path& path) {
    std::error_code error;
    const bool bRegular = std::filesystem::is_regular_file(path, error);
    if (error) {
        Refuse(path, error.message());
    }
    if (!bRegular) {
        Refuse(path, "it is no regular file");
    }
}

std::string ReadTextFile(const std::filesystem::path& path, std::uint64_t limit) {
    RequireRegularFile(path);
    FileReader file(path.string());
    if (!file.IsOpen()) {
        Refuse(path, std::generic_category().message(errno));
    }
    std::string text;
    std::array<char, 65536> block{};
    for (std::size_t count = 1; count > 0;) {
        count = file.Read(block);
        text.append(block.data(), count);
        if (text.size() > limit) {
            Refuse(path, "expected at most " + std::to_string(limit) + " bytes");
        }
    }
    return text;
}
