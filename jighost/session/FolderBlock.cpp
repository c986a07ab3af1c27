// The block's text checked against what the module can take, and written.
#include "jighost/session/FolderBlock.h"

#include <algorithm>
#include <cstring>

#include "jighost/text/HostError.h"
#include "link/SharedMemory.h"

/// Characters of a file's name in a dump, such as "01000000.bin".
static const std::size_t FILE_NAME_LENGTH = 12;
/// Characters of the longest path that a dump can write to.
static const std::size_t MAX_PATH_LENGTH = CFolderSharedMemory::PATH_SIZE - 1;

std::string FolderBlockText(const std::filesystem::path& folder) {
    std::error_code error;
    if (!std::filesystem::is_directory(folder, error)) {
        throw HostError(EXIT_WRONG_USE, "there is no folder " + folder.string());
    }
    // The empty last part becomes the separator at the end.
    std::string text = (std::filesystem::canonical(folder) / "").generic_string();
    if (text.find_first_of("\\\n") != std::string::npos) {
        throw HostError(
            EXIT_WRONG_USE, "the module takes a backslash or a line's end in " + text +
                                " for something else; choose another folder");
    }
    if (text.size() + FILE_NAME_LENGTH > MAX_PATH_LENGTH) {
        throw HostError(
            EXIT_WRONG_USE, "the folder's full path has " + std::to_string(text.size()) +
                                " characters; the module can write to one of at most " +
                                std::to_string(MAX_PATH_LENGTH - FILE_NAME_LENGTH) + ": " + text);
    }
    std::replace(text.begin(), text.end(), '/', '\\');
    return text;
}

std::string FolderName(const std::string& blockText) {
    std::string name = blockText.empty() ? "no folder" : blockText;
    std::replace(name.begin(), name.end(), '\\', '/');
    return name;
}

FolderBlock::FolderBlock()
    : m_Mapping(CreateFileMappingA(
          INVALID_HANDLE_VALUE, nullptr, PAGE_READWRITE, 0, SHARED_TEXT_SIZE,
          "SHARED_NAME_FOLDER")),
      m_bCreated(GetLastError() == ERROR_SUCCESS),
      m_pView(
          m_Mapping == nullptr ? nullptr : MapViewOfFile(m_Mapping, FILE_MAP_ALL_ACCESS, 0, 0, 0)),
      m_Mutex(m_pView == nullptr ? nullptr : CreateMutexA(nullptr, FALSE, "MUTEX_NAME_FOLDER")) {
    if (m_Mutex == nullptr) {
        const DWORD error = GetLastError();
        Release();
        throw HostError(
            EXIT_HOST_ERROR,
            "can't open the block SHARED_NAME_FOLDER (error " + std::to_string(error) + ")");
    }
}

FolderBlock::~FolderBlock() {
    Release();
}

void FolderBlock::Release() const {
    if (m_pView != nullptr) {
        UnmapViewOfFile(m_pView);
    }
    CloseHandle(m_Mapping);
    CloseHandle(m_Mutex);
}

namespace {

/// Holds the block's mutex while the text is read or written.
class MutexLock {
  public:
    explicit MutexLock(HANDLE mutex) : m_Mutex(mutex) { WaitForSingleObject(m_Mutex, INFINITE); }
    MutexLock(const MutexLock&) = delete;
    MutexLock& operator=(const MutexLock&) = delete;
    ~MutexLock() { ReleaseMutex(m_Mutex); }

  private:
    HANDLE m_Mutex;
};

}  // namespace

/// Whoever wrote it: its zero may be missing.
static std::string TextAt(const void* pView) {
    const std::string_view bytes(static_cast<const char*>(pView), SHARED_TEXT_SIZE);
    return std::string(bytes.substr(0, bytes.find('\0')));
}

static void WriteAt(void* pView, const std::string& text) {
    std::memcpy(pView, text.c_str(), std::min<std::size_t>(text.size() + 1, SHARED_TEXT_SIZE));
}

void FolderBlock::Write(const std::string& text) const {
    const MutexLock lock(m_Mutex);
    WriteAt(m_pView, text);
}

void FolderBlock::WriteOver(const std::string& expected, const std::string& text) const {
    const MutexLock lock(m_Mutex);
    if (TextAt(m_pView) == expected) {
        WriteAt(m_pView, text);
    }
}

std::string FolderBlock::Text() const {
    const MutexLock lock(m_Mutex);
    return TextAt(m_pView);
}
