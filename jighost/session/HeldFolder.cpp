// A block that this session has created is its own. Of any other one it knows that somebody holds
// it.
#include "jighost/session/HeldFolder.h"

#include <algorithm>

#include "jighost/output/Complaint.h"
#include "jighost/session/AddedLog.h"
#include "jighost/session/Patience.h"
#include "jighost/text/HostError.h"

HeldFolder::Turn::~Turn() {
    LetGo();
}

void HeldFolder::Turn::LetGo() {
    CloseHandle(m_Block);
    m_Block = nullptr;
}

bool HeldFolder::Turn::Take() {
    m_Block = CreateFileMappingA(
        INVALID_HANDLE_VALUE, nullptr, PAGE_READWRITE, 0, 1, "JIGHOST_FOLDER_TURN");
    const DWORD error = GetLastError();
    if (error == ERROR_SUCCESS) {
        return true;
    }
    LetGo();
    if (error != ERROR_ALREADY_EXISTS) {
        throw HostError(
            EXIT_HOST_ERROR, "can't open the block JIGHOST_FOLDER_TURN (error " +
                                 std::to_string(error) + "), by which dumps take turns");
    }
    return false;
}

bool HeldFolder::TakeBlock() {
    if (!m_Turn.Take()) {
        return false;
    }
    m_Block.emplace();
    m_FormerText = m_Block->Text();
    m_bForeign = !m_Block->IsCreated();
    if (!m_bForeign || m_Foreign != FOREIGN_FOLDER::REFUSED) {
        return true;
    }
    m_Block.reset();
    m_Turn.LetGo();
    return false;
}

void HeldFolder::Refuse() const {
    throw HostError(
        EXIT_HOST_ERROR, m_bForeign ? "another process holds the block SHARED_NAME_FOLDER, for " +
                                          FolderName(m_FormerText) +
                                          "; --take-folder takes it as long as this run lasts"
                                    : "another run of jighost uses the block SHARED_NAME_FOLDER");
}

HeldFolder::HeldFolder(const std::string& text, FOREIGN_FOLDER foreign) : m_Foreign(foreign) {
    if (!SucceedsInTime([this] { return TakeBlock(); })) {
        Refuse();
    }
    if (m_bForeign && foreign == FOREIGN_FOLDER::USED) {
        m_Text = m_FormerText;
        Complain(
            "another process holds the block SHARED_NAME_FOLDER, for " + FolderName(m_Text) +
            "; a dump goes there");
        return;
    }
    m_Text = text;
    m_Block->Write(m_Text);
}

HeldFolder::~HeldFolder() {
    m_Block->WriteOver(m_Text, m_FormerText);
}

/// Of the lines in doubt one is the dump's: if they tell one folder, it is the dump's.
static std::string OnlyTextBehind(const std::vector<std::string>& lines, std::string_view tag) {
    const std::string text = LastTextBehind(lines, tag);
    const bool bOnly = std::all_of(lines.begin(), lines.end(), [&](const std::string& line) {
        const std::string other = LastTextBehind({line}, tag);
        return other.empty() || other == text;
    });
    return bOnly ? text : "";
}

std::string HeldFolder::Problem(
    const std::vector<std::string>& log, const std::vector<std::string>& interleaved,
    bool bFailed) const {
    static const std::string FOLDER_TAG = "[VALU] pszFullPath - ";
    std::string taken = LastTextBehind(log, FOLDER_TAG);
    if (taken.empty() && !bFailed) {
        taken = OnlyTextBehind(interleaved, FOLDER_TAG);
    }
    if (taken == m_Text || (taken.empty() && bFailed)) {
        return "";
    }
    return "expected the folder " + FolderName(m_Text) +
           (taken.empty() ? ", and the module's log does not tell which one the module took"
                          : ", the module took " + FolderName(taken));
}
