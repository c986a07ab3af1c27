// The named block that tells a dump its folder, held by this host as its writer.
#pragma once

#include <filesystem>
#include <string>

#include "platform/Platform.h"

/// The block's text for a folder: its full path, backslashes, one at the end. Throws EXIT_WRONG_USE
/// if there is no such folder, or if the module can't take its path.
std::string FolderBlockText(const std::filesystem::path& folder);

/// Holds the block from construction to destruction: as long as that, its text stays.
class FolderBlock {
  public:
    /// Throws EXIT_HOST_ERROR if the system does not give the block or its mutex.
    FolderBlock();
    ~FolderBlock();
    FolderBlock(const FolderBlock&) = delete;
    FolderBlock& operator=(const FolderBlock&) = delete;

    /// Writes the text under the block's mutex; it fits, as FolderBlockText gives it.
    void Write(const std::string& text) const;

    /// Whether no holder of the block has written a folder yet.
    bool IsEmpty() const;

  private:
    void Release() const;

    HANDLE m_Mapping;
    void* m_pView;
    HANDLE m_Mutex;
};
