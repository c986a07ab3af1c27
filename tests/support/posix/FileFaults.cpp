// Faults of the file system by the limits of this process and the permissions of its files.
#include "tests/support/FileFaults.h"

#include <fcntl.h>

#include <filesystem>

#include "tests/support/SupportProcess.h"

namespace {

/// Takes the permission to write from the log, the folder of the log and the dump's folder.
class WritePermissions {
  public:
    WritePermissions() { Change(std::filesystem::perm_options::remove); }
    WritePermissions(const WritePermissions&) = delete;
    WritePermissions& operator=(const WritePermissions&) = delete;
    ~WritePermissions() { Change(std::filesystem::perm_options::add); }

  private:
    static void Change(std::filesystem::perm_options change) {
        for (const char* pszPath : {"JigDll.log", ".", "dump"}) {
            std::filesystem::permissions(pszPath, std::filesystem::perms::owner_write, change);
        }
    }
};

struct NOTHING_WRITABLE {
    WritePermissions taken;
    OrdinaryUser user;
};

}  // namespace

FileFault NothingWritable() {
    return std::make_shared<NOTHING_WRITABLE>();
}

const bool INI_FILES_TAKE_DESCRIPTORS = true;

FileFault NoDescriptors() {
    return std::make_shared<Limit>(RLIMIT_NOFILE, static_cast<rlim_t>(NextDescriptor()));
}

FileFault FileSizeLimit(std::uintmax_t bytes) {
    return std::make_shared<Limit>(RLIMIT_FSIZE, bytes);
}

int NextDescriptor() {
    const int descriptor = open("/", O_RDONLY);
    close(descriptor);
    return descriptor;
}
