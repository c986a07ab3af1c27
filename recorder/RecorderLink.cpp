// The library in the camera link's place: each call goes on to the link under its new name, and
// into the recording.
#include <memory>

#include "link/BodyLink.h"
#include "passage/OtherLibrary.h"
#include "passage/Passage.h"
#include "platform/Surroundings.h"
#include "recorder/Files.h"
#include "recorder/Watch.h"

using namespace Recorder;

namespace {

/// There from loading to unloading, as the link itself would be.
class InPlaceOfLink {
  public:
    InPlaceOfLink();
    InPlaceOfLink(const InPlaceOfLink&) = delete;
    InPlaceOfLink& operator=(const InPlaceOfLink&) = delete;
    ~InPlaceOfLink();

  private:
    std::unique_ptr<Link::OtherLibrary> m_pLink;
    std::unique_ptr<Watch> m_pWatch;
};

// For calls at any time: null where there is nothing, also behind the static destruction.
Watch* s_pWatch = nullptr;
Link::OtherLibrary* s_pLink = nullptr;

InPlaceOfLink::InPlaceOfLink() {
    const std::filesystem::path folder = LibraryFileOf(MARK).parent_path();
    SwallowExceptions([&] {
        m_pWatch = std::make_unique<Watch>(folder);
        s_pWatch = m_pWatch.get();
    });
    SwallowExceptions([&] {
        m_pLink =
            std::make_unique<Link::OtherLibrary>((folder / RecordedName(LINK_FILE_NAME)).string());
        s_pLink = m_pLink.get();
    });
}

InPlaceOfLink::~InPlaceOfLink() {
    s_pLink = nullptr;
    s_pWatch = nullptr;
}

const InPlaceOfLink s_InPlaceOfLink;

/// A call of a member function, in the recording from before it is made to behind its answer.
class RecordedCall {
  public:
    explicit RecordedCall(const Link::REQUEST& request) {
        if (s_pWatch != nullptr) {
            s_pWatch->BeginCall(m_Running, request);
        }
    }

    /// Of a failed call while what it threw is being handled.
    void End(const Link::ANSWER& answer, bool bFailed) noexcept {
        if (s_pWatch != nullptr) {
            s_pWatch->EndCall(m_Running, answer, bFailed);
        }
    }

  private:
    RUNNING_CALL m_Running;
};

/// Does what is no call: only what it throws is in the recording.
template <class Work>
auto PassUncalled(
    const char* pszFunction, std::uint32_t (Watch::*pCount)() noexcept, const Work& work) {
    const std::uint32_t number = s_pWatch != nullptr ? (s_pWatch->*pCount)() : 0;
    try {
        return work();
    } catch (...) {
        if (s_pWatch != nullptr) {
            s_pWatch->NoteThrow(pszFunction, number);
        }
        throw;
    }
}

}  // namespace

extern "C" BODYLNK_API OperationWatch* TuneBenchOperationWatch3() {
    return s_pWatch;
}

namespace Link {

Behind& WhoStandsBehind() {
    if (s_pLink == nullptr) {
        throw new CException(
            "[VALU] Recorder without " + RecordedName(LINK_FILE_NAME), NO_RECORDED_LINK);
    }
    return *s_pLink;
}

void PassCall(const REQUEST& request, const std::function<void()>& work) {
    RecordedCall call(request);
    try {
        work();
    } catch (...) {
        call.End({}, true);
        throw;
    }
    call.End(AnswerTo(request), false);
}

void PassConstruction(const char* pszFunction, const std::function<void()>& work) {
    PassUncalled(pszFunction, &Watch::CountConstruction, work);
}

std::string PassLinePrefix(const std::function<std::string()>& work) {
    std::string prefix = PassUncalled(LINE_PREFIX_FUNCTION, &Watch::CountLinePrefix, work);
    if (s_pWatch != nullptr) {
        s_pWatch->NoteLogLine(prefix);
    }
    return prefix;
}

}  // namespace Link
