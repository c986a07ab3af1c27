// The named block that tells a dump its folder, held by this host as its writer.
#pragma once

#include <filesystem>
#include <string>

#include "platform/Platform.h"

/// The block's text for a folder: its full path, backslashes, one at the end. Throws EXIT_WRONG_USE
/// if there is no such folder, or if the module can't take its path.
std::string FolderBlockText(const std::filesystem::path& folder);

/// The folder of a block's text, for people; "no folder" for an empty text.
std::string FolderName(const std::string& blockText);

/// Holds the block from construction to destruction: as long as that, its text stays.
class FolderBlock {
  public:
    /// Throws EXIT_HOST_ERROR if the system does not give the block or its mutex.
    FolderBlock();
    ~FolderBlock();
    FolderBlock(const FolderBlock&) = delete;
    FolderBlock& operator=(const FolderBlock&) = delete;

    /// Whether nobody held the block before.
    bool IsCreated() const { return m_bCreated; }

    // All of these work under the block's mutex.

    /// The text fits, as FolderBlockText gives it.
    void Write(const std::string& text) const;
    /// Writes only if the block's text is the expected one.
    void WriteOver(const std::string& expected, const std::string& text) const;
    /// What any holder has written last; empty in a new block.
    std::string Text() const;

  private:
    void Release() const;

    HANDLE m_Mapping;
    bool m_bCreated;
    void* m_pView;
    HANDLE m_Mutex;
};
