// What the file is stands ahead of opening it: a pipe would keep the reader waiting.
#include "platform/TextFile.h"

#include <array>
#include <cerrno>
#include <fstream>
#include <stdexcept>
#include <system_error>

[[noreturn]] static void Refuse(const std::filesystem::path& path, const std::string& reason) {
    throw std::runtime_error("can't read " + path.string() + ": " + reason);
}

void RequireRegularFile(const std::filesystem::path& path) {
    std::error_code error;
    const std::filesystem::file_status status = std::filesystem::status(path, error);
    if (status.type() == std::filesystem::file_type::none || !exists(status)) {
        Refuse(path, error ? error.message() : "there is no such file");
    }
    if (!is_regular_file(status)) {
        Refuse(path, "it is no regular file");
    }
}

std::string ReadTextFile(const std::filesystem::path& path, std::uint64_t limit) {
    RequireRegularFile(path);
    errno = 0;
    std::ifstream file(path, std::ios::binary);
    if (!file.is_open()) {
        Refuse(path, std::generic_category().message(errno));
    }
    std::string text;
    std::array<char, 65536> block{};
    while (file.read(block.data(), block.size()) || file.gcount() > 0) {
        text.append(block.data(), static_cast<std::size_t>(file.gcount()));
        if (text.size() > limit) {
            Refuse(path, "expected at most " + std::to_string(limit) + " bytes");
        }
    }
    if (file.bad()) {
        Refuse(path, std::generic_category().message(errno));
    }
    return text;
}
