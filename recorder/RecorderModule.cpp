// The library in the module's place: loads the module under its new name, and hands its operations
// to the host with entries in front of them. The exported classes of link/SharedMemory.h are in it
// too.
#include <filesystem>

#include "frame/Result.h"
#include "module/Module.h"
#include "platform/Surroundings.h"
#include "recorder/Files.h"
#include "recorder/OperationWatch.h"
#include "recorder/RecordedOperations.h"

namespace {

/// An export's address, whose form the caller knows.
void (*FunctionIn(HMODULE library, const char* pszName))() {
    return reinterpret_cast<void (*)()>(GetProcAddress(library, pszName));
}

/// There from loading to unloading, as the module itself would be.
class InPlaceOfModule {
  public:
    InPlaceOfModule();
    InPlaceOfModule(const InPlaceOfModule&) = delete;
    InPlaceOfModule& operator=(const InPlaceOfModule&) = delete;
    ~InPlaceOfModule();

    decltype(&GetEventProcList) getEventProcList = nullptr;
    decltype(&RegisterEventProcList) registerEventProcList = nullptr;
    decltype(&RegisterInitializeFuncList) registerInitializeFuncList = nullptr;

  private:
    template <class Function>
    void Find(const char* pszName, Function& function) {
        function = reinterpret_cast<Function>(FunctionIn(m_Module, pszName));
    }

    HMODULE m_Module;
};

/// Null if the camera link's place has another library.
Recorder::OperationWatch* WatchOf(const std::filesystem::path& link) {
    HMODULE library = LoadedLibrary(link);
    if (library == nullptr) {
        return nullptr;
    }
    const auto getWatch =
        reinterpret_cast<Recorder::WATCH_PROC>(FunctionIn(library, Recorder::WATCH_EXPORT));
    return getWatch != nullptr ? getWatch() : nullptr;
}

InPlaceOfModule::InPlaceOfModule() {
    const auto folder = LibraryFileOf(Recorder::MARK).parent_path();
    m_Module = LoadBesideNamesake(
        folder / Recorder::RecordedName(MODULE_FILE_NAME), "RegisterEventProcList");
    if (m_Module != nullptr) {
        Find("GetEventProcList", getEventProcList);
        Find("RegisterEventProcList", registerEventProcList);
        Find("_RegisterInitializeFuncList@4", registerInitializeFuncList);
        Recorder::WatchOperations(WatchOf(folder / LINK_FILE_NAME));
    }
}

InPlaceOfModule::~InPlaceOfModule() {
    if (m_Module != nullptr) {
        FreeLibrary(m_Module);
    }
}

const InPlaceOfModule s_InPlaceOfModule;

// The callback has no place for a context: the host's stands here while it is in use.
thread_local EVENT_PROC_REGISTER_FUNC s_HostCallback = nullptr;

void RegisterEntry(
    const char* name, EVENT_PROC procedure, std::int32_t* size, std::int32_t* direction,
    std::int32_t* reserved) {
    const EVENT_PROC entry = Recorder::EntryFor(name, procedure, size != nullptr ? *size : 0);
    s_HostCallback(name, entry, size, direction, reserved);
}

}  // namespace

std::int32_t GetEventProcList(EVENT_PROC_T** ppTable) noexcept {
    const auto function = s_InPlaceOfModule.getEventProcList;
    return function != nullptr ? function(ppTable) : RESULT_SYSTEM_ERROR;
}

std::int32_t RegisterEventProcList(EVENT_PROC_REGISTER_FUNC callback) noexcept {
    const auto function = s_InPlaceOfModule.registerEventProcList;
    if (function == nullptr) {
        return RESULT_SYSTEM_ERROR;
    }
    const EVENT_PROC_REGISTER_FUNC around = s_HostCallback;
    s_HostCallback = callback;
    const std::int32_t result = function(&RegisterEntry);
    s_HostCallback = around;
    return result;
}

MODULE_EXPORT_AS(RegisterInitializeFuncList, "_RegisterInitializeFuncList@4");

std::int32_t WINAPI RegisterInitializeFuncList(void* pUnused) noexcept {
    const auto function = s_InPlaceOfModule.registerInitializeFuncList;
    return function != nullptr ? function(pUnused) : RESULT_SYSTEM_ERROR;
}
