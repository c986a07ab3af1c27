// The library loaded, and its registrations collected.
#include "jighost/session/Module.h"

#include <algorithm>
#include <filesystem>

#include "frame/Result.h"
#include "jighost/operations/ResultName.h"
#include "jighost/session/Installation.h"
#include "jighost/session/LibraryFormat.h"
#include "jighost/text/HostError.h"
#include "platform/LibraryError.h"
#include "platform/Utf8Path.h"

// The callback has no place for a context: what it collects into stands here while it is in use.
static std::vector<REGISTERED_OPERATION>* g_pCollected = nullptr;

// A null name is kept as an empty one, to be told when the module's own code is left.
static void CollectOperation(
    const char* name, EVENT_PROC procedure, std::int32_t* size, std::int32_t* direction,
    std::int32_t* /*reserved*/) {
    g_pCollected->push_back(
        {name == nullptr ? "" : name, procedure, size == nullptr ? 0 : *size,
         direction == nullptr ? EVENT_PROC_NONE : *direction});
}

std::string FullModulePath(const std::string& path) {
    return (path.empty() ? OwnModule() : std::filesystem::absolute(PathOf(path))).string();
}

Module::Module(const std::string& path) : m_Path(FullModulePath(path)), m_Library(nullptr) {
    RequireLoadable(m_Path, "module");
    m_Library = LoadLibraryA(m_Path.c_str());
    if (m_Library == nullptr) {
        throw HostError(EXIT_NO_MODULE, "can't load " + m_Path + ": " + LastLibraryError());
    }
    try {
        const std::int32_t result = Register();
        if (IsFailure(result)) {
            throw HostError(EXIT_NO_MODULE, m_Path + " does not register: " + ResultText(result));
        }
        CheckOperations();
    } catch (...) {
        FreeLibrary(m_Library);
        throw;
    }
}

Module::~Module() {
    FreeLibrary(m_Library);
}

std::int32_t Module::Register() {
    using REGISTER_PROC = std::int32_t (*)(EVENT_PROC_REGISTER_FUNC);
    // By way of the type that stands for any function.
    const auto anyFunction =
        reinterpret_cast<void (*)()>(GetProcAddress(m_Library, "RegisterEventProcList"));
    const auto registerList = reinterpret_cast<REGISTER_PROC>(anyFunction);
    if (registerList == nullptr) {
        throw HostError(EXIT_NO_MODULE, m_Path + " has no RegisterEventProcList");
    }
    g_pCollected = &m_Operations;
    const std::int32_t result = registerList(&CollectOperation);
    g_pCollected = nullptr;
    return result;
}

void Module::CheckOperations() const {
    for (const REGISTERED_OPERATION& operation : m_Operations) {
        if (operation.name[0] == '\0') {
            throw HostError(EXIT_NO_MODULE, m_Path + " registers an operation without a name");
        }
    }
}

const REGISTERED_OPERATION& Module::Find(std::string_view name) const {
    const auto found =
        std::find_if(m_Operations.begin(), m_Operations.end(), [&](const auto& operation) {
            return operation.name == name && operation.procedure != nullptr;
        });
    if (found == m_Operations.end()) {
        throw HostError(EXIT_NO_MODULE, m_Path + " does not register " + std::string(name));
    }
    return *found;
}
