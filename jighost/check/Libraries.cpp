// The checks, one behind the other: each needs the ones before it.
#include "jighost/check/Libraries.h"

#include <algorithm>
#include <filesystem>
#include <memory>
#include <optional>
#include <type_traits>

#include "bodylnk/OtherLink.h"
#include "jighost/check/Registrations.h"
#include "jighost/session/ChosenLink.h"
#include "jighost/session/LibraryFormat.h"
#include "jighost/session/Module.h"
#include "jighost/text/HostError.h"
#include "platform/LibraryError.h"
#include "platform/Utf8Path.h"

static const char* const EXPORTS[] = {
    "RegisterEventProcList", "GetEventProcList", "_RegisterInitializeFuncList@4"};

namespace {

struct FreeLibraryDeleter {
    void operator()(HMODULE library) const { FreeLibrary(library); }
};
using Library = std::unique_ptr<std::remove_pointer_t<HMODULE>, FreeLibraryDeleter>;

}  // namespace

static CHECK Result(const std::string& name, bool bGood, const std::string& text) {
    return {name, bGood ? STATE::OK : STATE::FAILED, text};
}

static CHECK CheckFound(const std::string& name, const std::string& path) {
    std::error_code error;
    const bool bFound = std::filesystem::is_regular_file(PathOf(path), error);
    return Result(name, bFound, bFound ? path : "there is no file " + path);
}

static CHECK CheckWordSize(const std::string& name, const std::string& path) {
    const LIBRARY_FORMAT format = ReadLibraryFormat(path);
    return Result(name, format.bLoadable, format.text);
}

static CHECK CheckLoads(const std::string& path, Library& library) {
    library.reset(LoadLibraryA(path.c_str()));
    if (library != nullptr) {
        return {"loads", STATE::OK, "with all that it depends on"};
    }
    const std::string text = LastLibraryError();
    const std::string missing = MissingLibrary(path, text);
    return {"loads", STATE::FAILED, missing.empty() ? text : missing + " is missing: " + text};
}

static std::string Listed(const std::vector<std::string>& names) {
    std::string list;
    for (const std::string& name : names) {
        list += (list.empty() ? "" : ", ") + name;
    }
    return list;
}

static CHECK CheckExports(HMODULE library) {
    std::vector<std::string> missing;
    for (const char* pszName : EXPORTS) {
        if (GetProcAddress(library, pszName) == nullptr) {
            missing.emplace_back(pszName);
        }
    }
    return Result(
        "exports", missing.empty(),
        missing.empty() ? Listed({std::begin(EXPORTS), std::end(EXPORTS)})
                        : "without " + Listed(missing));
}

// --- Registrations ---

static CHECK CheckRegistrations(const std::string& path) {
    try {
        const Module module(path);
        const std::string faults = RegistrationFaults(module.Operations());
        return Result(
            "registrations", faults.empty(), std::to_string(module.Operations().size()) + faults);
    } catch (const HostError& e) {
        return {"registrations", STATE::FAILED, e.what()};
    }
}

// --- The camera link ---

static CHECK CheckLinkLoads(const std::string& path, std::vector<std::string>& missing) {
    try {
        missing = OtherLink::MissingNames(path);
        return {"link loads", STATE::OK, "with all that it depends on"};
    } catch (const std::exception& e) {
        return {"link loads", STATE::FAILED, e.what()};
    }
}

static CHECK CheckLinkFunctions(const std::vector<std::string>& missing) {
    return Result(
        "link functions", missing.empty(),
        missing.empty() ? "all that a camera link has" : "without " + Listed(missing));
}

/// Puts the link in the simulated body's place.
static CHECK CheckLinkServes(const std::string& path, std::optional<ChosenLink>& link) {
    try {
        link.emplace(path);
        return {"link serves", STATE::OK, "in place of the simulated body"};
    } catch (const HostError& e) {
        return {"link serves", STATE::FAILED, e.what()};
    }
}

// --- All together ---

namespace {

/// Tells the checks, one behind the other.
class Examination {
  public:
    explicit Examination(const std::function<void(const CHECK&)>& onCheck) : m_OnCheck(onCheck) {}

    void Add(const CHECK& check) {
        m_bGood = check.state == STATE::OK;
        m_OnCheck(check);
    }

    template <class Check>
    void AddBehindGood(const char* name, const Check& check) {
        Add(m_bGood ? check() : CHECK{name, STATE::NOT_TESTED, "not tested"});
    }

  private:
    const std::function<void(const CHECK&)>& m_OnCheck;
    bool m_bGood = true;  // the check before
};

}  // namespace

static void ExamineLink(
    const std::string& path, Examination& examination, std::optional<ChosenLink>& link) {
    std::vector<std::string> missing;
    examination.Add(CheckFound("link found", path));
    examination.AddBehindGood(
        "link word size", [&] { return CheckWordSize("link word size", path); });
    examination.AddBehindGood("link loads", [&] { return CheckLinkLoads(path, missing); });
    examination.AddBehindGood("link functions", [&] { return CheckLinkFunctions(missing); });
    examination.AddBehindGood("link serves", [&] { return CheckLinkServes(path, link); });
}

static void ExamineModule(const std::string& path, Examination& examination) {
    Library library;
    examination.Add(CheckFound("found", path));
    examination.AddBehindGood("word size", [&] { return CheckWordSize("word size", path); });
    examination.AddBehindGood("loads", [&] { return CheckLoads(path, library); });
    examination.AddBehindGood("exports", [&] { return CheckExports(library.get()); });
    examination.AddBehindGood("registrations", [&] { return CheckRegistrations(path); });
}

void ExamineLibraries(
    const std::string& path, const std::string& linkPath,
    const std::function<void(const CHECK&)>& onCheck) {
    Examination examination(onCheck);
    std::optional<ChosenLink> link;
    if (!linkPath.empty()) {
        ExamineLink(linkPath, examination, link);
    }
    ExamineModule(path, examination);
    examination.AddBehindGood("unloads", [] {
        return CHECK{"unloads", STATE::OK, "without harm"};
    });
}
