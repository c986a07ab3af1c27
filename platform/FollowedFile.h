// A file that others write, rename, delete and replace as if nobody read it, by its path.
#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <span>

/// No function of it blocks or fails: of what is no regular file, or can't be read, there is
/// nothing.
class FollowedFile {
  public:
    /// A relative path counts from the directory that is the current one at each look.
    explicit FollowedFile(std::filesystem::path path);
    FollowedFile(const FollowedFile&) = delete;
    FollowedFile& operator=(const FollowedFile&) = delete;
    ~FollowedFile();

    /// Looks where the path leads by now. Whether that is another file than before.
    bool Look() noexcept;

    // Of the file found last.

    std::uint64_t Size() const noexcept;
    /// Gives the number of bytes; less than the block has room for at the end.
    std::size_t Read(std::uint64_t position, std::span<char> block) const noexcept;

  private:
    struct STATE;
    std::unique_ptr<STATE> m_pState;
};
