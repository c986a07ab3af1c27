// The lines behind the log's former end.
#include "jighost/session/AddedLog.h"

#include <filesystem>
#include <fstream>

static const char LOG_FILE_NAME[] = "JigDll.log";

static std::uintmax_t LogSize() {
    std::error_code error;
    const std::uintmax_t size = std::filesystem::file_size(LOG_FILE_NAME, error);
    return error ? 0 : size;
}

AddedLog::AddedLog() : m_Start(LogSize()) {}

std::vector<std::string> AddedLog::Lines() const {
    std::ifstream log(LOG_FILE_NAME, std::ios::binary);
    log.seekg(static_cast<std::streamoff>(m_Start));
    std::vector<std::string> lines;
    for (std::string line; std::getline(log, line);) {
        if (line.ends_with('\r')) {
            line.pop_back();
        }
        lines.push_back(line);
    }
    return lines;
}

std::string LastTextBehind(const std::vector<std::string>& lines, std::string_view tag) {
    for (auto line = lines.rbegin(); line != lines.rend(); ++line) {
        const std::size_t position = line->find(tag);
        if (position != std::string::npos) {
            return line->substr(position + tag.size());
        }
    }
    return "";
}

std::string LastError(const std::vector<std::string>& lines) {
    const std::string error = LastTextBehind(lines, "[ERR!] ");
    return error.starts_with("- ") ? error.substr(2) : error;
}
