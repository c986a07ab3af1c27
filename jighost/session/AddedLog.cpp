// The lines behind the log's former end.
#include "jighost/session/AddedLog.h"

#include <array>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "bodylnk/SimulatedBody.h"
#include "platform/FileReader.h"

static const char LOG_FILE_NAME[] = "JigDll.log";

/// 0 for anything but a regular file.
static std::uintmax_t LogSize() {
    std::error_code error;
    const std::uintmax_t size = std::filesystem::file_size(LOG_FILE_NAME, error);
    return error ? 0 : size;
}

/// Whoever wants to may delete or rename the file meanwhile.
static std::string TextFrom(std::uintmax_t position) {
    FileReader log(LOG_FILE_NAME, static_cast<std::int64_t>(position));
    std::string text;
    std::array<char, 4096> block{};
    for (std::size_t count = 1; log.IsOpen() && count > 0;) {
        count = log.Read(block);
        text.append(block.data(), count);
    }
    return text;
}

/// Adds the whole lines from a position on, and gives the position behind them.
static std::uintmax_t AddLines(OwnLines& lines, std::uintmax_t position) {
    const std::uintmax_t size = LogSize();
    position = size < position ? 0 : position;  // deleted meanwhile, and begun anew
    if (size > position) {
        std::istringstream log(TextFrom(position));
        for (std::string line; std::getline(log, line) && !log.eof();) {
            position += line.size() + 1;
            line.resize(line.size() - (line.ends_with('\r') ? 1 : 0));
            lines.Add(line);
        }
    }
    return position;
}

AddedLog::AddedLog() : m_Position(LogSize()) {
    SimulatedBody::ObserveLinePrefixes([this](const std::string& prefix) {
        m_Lines.Expect(prefix);
        const std::lock_guard lock(m_Mutex);
        m_Prefixes.push_back(prefix);
    });
}

AddedLog::~AddedLog() {
    SimulatedBody::ObserveLinePrefixes({});
}

std::string AddedLog::Problem() {
    const std::string name = LOG_FILE_NAME;
    std::error_code error;
    const std::filesystem::file_status status = std::filesystem::status(name, error);
    if (std::filesystem::exists(status) && !std::filesystem::is_regular_file(status)) {
        return name + " is no regular file";
    }
    if (!std::ofstream(name, std::ios::app)) {
        return "can't write " + name + ": " + std::strerror(errno);
    }
    const OwnLines& lines = ReadOn();
    const bool bAny = lines.Texts(OWNER::ANOTHER).size() < lines.Count();
    return bAny ? "" : "nothing has come to " + name;
}

void AddedLog::Begin() {
    m_Position = LogSize();
    m_Lines.Clear();
    const std::lock_guard lock(m_Mutex);
    m_Start = m_Position;
    m_Prefixes.clear();
}

const OwnLines& AddedLog::ReadOn() {
    m_Position = AddLines(m_Lines, m_Position);
    return m_Lines;
}

void AddedLog::AddTo(OwnLines& lines) const {
    const std::lock_guard lock(m_Mutex);
    for (const std::string& prefix : m_Prefixes) {
        lines.Expect(prefix);
    }
    AddLines(lines, m_Start);
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
