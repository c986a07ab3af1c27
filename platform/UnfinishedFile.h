// What each system has of its own of the files that come as a whole; WholeFile.h is made of it.
//
// All functions throw std::system_error, "can't write FILE: ...".
#pragma once

#include <cstdint>
#include <filesystem>
#include <string_view>

#include "platform/WholeFile.h"

/// A file beside another one, in whose place it comes as a whole. It is removed if it does not.
class UnfinishedFile {
  public:
    /// `name` is what people call the target.
    UnfinishedFile(const std::filesystem::path& name, const std::filesystem::path& target);
    UnfinishedFile(const UnfinishedFile&) = delete;
    UnfinishedFile& operator=(const UnfinishedFile&) = delete;
    ~UnfinishedFile();

    /// Gives it owner and rights of the file that it replaces, if there is one.
    void TakeRights() const;
    /// Writes all that it is to hold and closes it.
    void Write(std::string_view bytes, OUTLASTS outlasts);
    void Replace() const;
    /// Gives false if there is a target.
    bool TakeFreePlace() const;

  private:
    std::filesystem::path m_Name;
    std::filesystem::path m_Target;
    std::filesystem::path m_Path;
    std::intptr_t m_nFile;  // the system's own number of it; -1 when it is closed
};

/// A file that nobody may write to is not replaced either.
void CheckWritable(const std::filesystem::path& path);

void WriteDevice(const std::filesystem::path& path, std::string_view bytes);
