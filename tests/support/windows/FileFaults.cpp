// Faults of the file system: files held by another program, descriptors used up, and a full disk by
// the module's calls of _write, which fail as they fail there: not every user can have a small
// disk.
#include "tests/support/FileFaults.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cerrno>
#include <vector>

#include "tests/support/windows/ReplacedImport.h"

namespace {

/// A file that another program has open and shares with nobody. One that was not there goes with
/// it.
class HeldFile {
  public:
    explicit HeldFile(const char* pszPath)
        : m_File(CreateFileA(
              pszPath, GENERIC_READ | DELETE, 0, nullptr, OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL,
              nullptr)),
          m_bNew(GetLastError() != ERROR_ALREADY_EXISTS) {
        EXPECT_NE(m_File, INVALID_HANDLE_VALUE);
    }
    HeldFile(const HeldFile&) = delete;
    HeldFile& operator=(const HeldFile&) = delete;
    ~HeldFile() {
        FILE_DISPOSITION_INFO deletion{static_cast<BOOLEAN>(m_bNew)};
        SetFileInformationByHandle(m_File, FileDispositionInfo, &deletion, sizeof deletion);
        CloseHandle(m_File);
    }

  private:
    HANDLE m_File;
    bool m_bNew;
};

struct HELD_FILES {
    HeldFile log{"JigDll.log"};
    HeldFile cameraLog{"CameraLog"};
    HeldFile firstOfDump{"dump/01000000.bin"};
};

/// Opens files until the run-time library has no descriptor for another one.
class AllDescriptors {
  public:
    AllDescriptors() {
        for (int file = 0; (file = _open("NUL", _O_RDONLY)) != -1;) {
            m_Files.push_back(file);
        }
    }
    AllDescriptors(const AllDescriptors&) = delete;
    AllDescriptors& operator=(const AllDescriptors&) = delete;
    ~AllDescriptors() { std::for_each(m_Files.begin(), m_Files.end(), _close); }

  private:
    std::vector<int> m_Files;
};

std::uintmax_t s_FileSizeLimit = 0;

int WriteWithinLimit(int file, const void* pData, unsigned int count) {
    const auto size = static_cast<std::uintmax_t>(_filelengthi64(file));
    const std::uintmax_t room = s_FileSizeLimit - std::min(size, s_FileSizeLimit);
    if (room == 0) {
        errno = ENOSPC;
        return -1;
    }
    return _write(file, pData, static_cast<unsigned int>(std::min<std::uintmax_t>(count, room)));
}

}  // namespace

FileFault NothingWritable() {
    return std::make_shared<HELD_FILES>();
}

const bool INI_FILES_TAKE_DESCRIPTORS = false;

FileFault NoDescriptors() {
    return std::make_shared<AllDescriptors>();
}

FileFault FileSizeLimit(std::uintmax_t bytes) {
    s_FileSizeLimit = bytes;
    return std::make_shared<ReplacedImport>(MODULE_FILE, "_write", WriteWithinLimit);
}

int NextDescriptor() {
    const int descriptor = _open("NUL", _O_RDONLY);
    _close(descriptor);
    return descriptor;
}
