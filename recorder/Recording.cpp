// Files begun, filled and given up; gaps counted and told.
#include "recorder/Recording.h"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <fstream>
#include <system_error>

#include "link/CException.h"
#include "trace/JsonLine.h"

namespace fs = std::filesystem;

namespace Recorder {

// So many files of full length fit into the space: that much of it goes at once when it is full.
static const std::uint64_t FILES_KEPT = 4;

// It takes the system longer than a line does.
static const std::chrono::milliseconds LOOK_INTERVAL(100);

std::int64_t Now() {
    using namespace std::chrono;
    return duration_cast<milliseconds>(system_clock::now().time_since_epoch()).count();
}

Recording::Recording(fs::path folder, std::uint64_t keep, fs::path failureFile, HeadText headText)
    : m_Folder(std::move(folder)),
      m_Keep(keep),
      m_FailureFile(std::move(failureFile)),
      m_HeadText(std::move(headText)) {
    const int nError = Continue();
    if (nError != 0) {
        TellFailure(nError);
    }
}

Recording::~Recording() {
    if (m_Forks != ForkCount()) {
        return;
    }
    if (m_Lost != 0) {
        SwallowExceptions([this] { CloseGap(); });
    } else if (m_File.IsOpen() && m_File.Size() == m_HeadSize) {
        m_File.Close();
        std::error_code ignored;
        fs::remove(m_Path, ignored);
    }
}

void Recording::Write(std::string_view line, PLACE place) {
    if (m_Lost != 0 && place == PLACE::WITHIN_OPERATION) {
        ++m_Lost;
        return;
    }
    const int nError = TryWrite(line, place);
    if (nError != 0) {
        Lose(nError);
    }
}

void Recording::Lose(int nError) {
    if (m_Lost++ == 0) {
        m_nError = nError;
        m_LostSince = Now();
        TellFailure(nError);
    }
}

int Recording::TryWrite(std::string_view line, PLACE place) {
    if (place == PLACE::BETWEEN_OPERATIONS) {
        LookAround();
    }
    if (MustContinue(line.size(), place)) {
        const int nError = Continue();
        if (nError != 0) {
            return nError;
        }
    }
    const int nError = CloseGap();
    return nError != 0 ? nError : m_File.Write(line);
}

/// Tells what is missing, if anything.
int Recording::CloseGap() {
    if (m_Lost == 0 || !m_File.IsOpen()) {
        return 0;
    }
    std::string text;
    JsonLine line(text);
    line.Add("entry", "gap");
    line.Add("entries", static_cast<std::int64_t>(m_Lost));
    line.Add("at", m_LostSince);
    line.Add("why", std::generic_category().message(m_nError));
    line.End();
    const int nError = m_File.Write(text);
    m_Lost = nError == 0 ? 0 : m_Lost;
    return nError;
}

/// Closes a file that is another process's, or that nobody finds any more.
void Recording::LookAround() {
    const auto now = std::chrono::steady_clock::now();
    bool bThere = m_Forks == ForkCount();
    if (bThere && now - m_Looked > LOOK_INTERVAL) {
        std::error_code error;
        bThere = fs::exists(m_Path, error);
        m_Looked = now;
    }
    if (!bThere) {
        m_File.Close();
    }
    m_File.LookForLimit();
}

/// A file that can be ended between two operations ends early, so that few operations are torn.
bool Recording::MustContinue(std::size_t size, PLACE place) const {
    const std::uint64_t longest =
        m_Keep / FILES_KEPT / (place == PLACE::BETWEEN_OPERATIONS ? 2 : 1);
    return !m_File.IsOpen() ||
           (m_Keep != 0 && m_File.Size() > m_HeadSize && m_File.Size() + size > longest);
}

/// Begins the next file.
int Recording::Continue() {
    const bool bSameProcess = m_Forks == ForkCount();
    const std::string former = bSameProcess ? m_Path.filename().string() : "";
    m_File.Close();
    m_Lost = bSameProcess ? m_Lost : 0;
    m_Process = ProcessNumber();
    m_Forks = ForkCount();
    MakeRoom();
    const std::time_t moment = std::time(nullptr);
    // Behind the former file also where that is gone and its name free.
    RECORDING_NAME name = NewName(moment);
    name.number = name.moment == m_Name.moment ? m_Name.number + 1 : 1;
    m_Path = m_Folder / FileName(name);
    int nError = m_File.Create(m_Path);
    while (nError == EEXIST) {
        ++name.number;
        m_Path = m_Folder / FileName(name);
        nError = m_File.Create(m_Path);
    }
    m_Name = name;
    if (nError == 0) {
        nError = m_File.Write(m_HeadText({moment, former}));
        m_HeadSize = m_File.Size();
    }
    if (nError != 0) {
        m_File.Close();
    }
    return nError;
}

/// Removes old recordings of this machine, whole, until another one of full length fits. Those of
/// other processes that still run stay, and count as if they had their full length.
void Recording::MakeRoom() const {
    if (m_Keep == 0) {
        return;
    }
    const std::uint64_t length = m_Keep / FILES_KEPT;
    const auto isInUse = [this](const RECORDING_FILE& file) {
        return file.name.process != m_Process && IsProcessThere(file.name.process);
    };
    std::vector<RECORDING_FILE> files = RecordingsIn(m_Folder);
    const std::string machine = NewName(0).machine;
    std::erase_if(files, [&](const auto& file) { return file.name.machine != machine; });
    std::uint64_t sum = length;
    for (const RECORDING_FILE& file : files) {
        sum += isInUse(file) ? std::max(file.size, length) : file.size;
    }
    for (const RECORDING_FILE& file : files) {
        std::error_code error;
        if (sum > m_Keep && !isInUse(file) && fs::remove(file.path, error)) {
            sum -= file.size;
        }
    }
}

/// Where `jighost recorder status` finds it.
void Recording::TellFailure(int nError) const {
    SwallowExceptions([&] {
        std::ofstream(m_FailureFile)
            << MomentText(std::time(nullptr)) << ", process " << ProcessNumber() << ": can't write "
            << m_Path.string() << ": " << std::generic_category().message(nError) << '\n';
    });
}

}  // namespace Recorder
