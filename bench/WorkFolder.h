// The fresh folder that the benchmarks work in.
#pragma once

#include <cstdlib>
#include <filesystem>
#include <stdexcept>
#include <string>
#include <system_error>

/// A folder of this program's own, the current one while it lives.
class WorkFolder {
  public:
    WorkFolder() {
        const std::filesystem::path base = std::filesystem::exists("/dev/shm")
                                               ? "/dev/shm"
                                               : std::filesystem::temp_directory_path();
        std::string path = base / "tunebench.XXXXXX";
        if (mkdtemp(path.data()) == nullptr) {
            throw std::runtime_error("can't make a folder in " + base.string());
        }
        m_Path = path;
        std::filesystem::current_path(m_Path);
    }
    ~WorkFolder() {
        std::error_code error;
        std::filesystem::current_path("/", error);
        std::filesystem::remove_all(m_Path, error);
    }
    WorkFolder(const WorkFolder&) = delete;
    WorkFolder& operator=(const WorkFolder&) = delete;

    const std::filesystem::path& Path() const { return m_Path; }

  private:
    std::filesystem::path m_Path;
};
