// The folder that a session's dumps go to, kept from others who dump at the same time.
//
// The block SHARED_NAME_FOLDER is one for all processes of a user, the hosts of a line among them.
// A session uses it alone, or the data would land in somebody else's folder.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "jighost/session/FolderBlock.h"

/// What becomes of a block that another process than jighost holds.
enum class FOREIGN_FOLDER {
    REFUSED,  ///< it is waited for, and then the session ends
    TAKEN,    ///< its text is replaced as long as the session lasts
    USED,     ///< its text stays, and dumps go there
};

class HeldFolder {
  public:
    /// `text` is from FolderBlockText. Throws EXIT_HOST_ERROR if another process keeps the block,
    /// or if the system does not give it.
    HeldFolder(const std::string& text, FOREIGN_FOLDER foreign);
    HeldFolder(const HeldFolder&) = delete;
    HeldFolder& operator=(const HeldFolder&) = delete;
    /// The block has its former text again, unless somebody else has written to it meanwhile.
    ~HeldFolder();

    /// Whether a dump went where it was to go, by the lines that it has logged, and those that it
    /// or another process has: empty, or else what is wrong. One that failed before it took a
    /// folder went nowhere.
    std::string Problem(
        const std::vector<std::string>& log, const std::vector<std::string>& interleaved,
        bool bFailed) const;

  private:
    /// Among all runs of jighost one at a time has it. Its block holds nothing: it is its
    /// creator's.
    class Turn {
      public:
        Turn() = default;
        Turn(const Turn&) = delete;
        Turn& operator=(const Turn&) = delete;
        ~Turn();
        /// Gives false if another one has it.
        bool Take();
        void LetGo();

      private:
        HANDLE m_Block = nullptr;
    };

    bool TakeBlock();
    [[noreturn]] void Refuse() const;

    FOREIGN_FOLDER m_Foreign;
    Turn m_Turn;
    std::optional<FolderBlock> m_Block;
    bool m_bForeign = false;   // when the block was looked at last
    std::string m_Text;        // that a dump is to find
    std::string m_FormerText;  // of whoever held the block before; empty for a new one
};
