// The checks, one behind the other: each needs the ones before it.
#include "jighost/check/Doctor.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <memory>
#include <optional>

#include "bodylnk/OtherLink.h"
#include "jighost/check/LibraryFormat.h"
#include "jighost/check/SharedBlockCheck.h"
#include "jighost/operations/OperationTable.h"
#include "jighost/session/ChosenLink.h"
#include "jighost/session/Module.h"
#include "jighost/text/HostError.h"
#include "platform/LibraryError.h"

static const char* const EXPORTS[] = {
    "RegisterEventProcList", "GetEventProcList", "_RegisterInitializeFuncList@4"};

static const char LOG_FILE[] = "JigDll.log";

namespace {

struct FreeLibraryDeleter {
    void operator()(void* library) const { FreeLibrary(library); }
};
using Library = std::unique_ptr<void, FreeLibraryDeleter>;

}  // namespace

static CHECK Result(const char* name, bool bGood, const std::string& text) {
    return {name, bGood ? STATE::OK : STATE::FAILED, text};
}

static CHECK CheckFound(const char* name, const std::string& path) {
    std::error_code error;
    const bool bFound = std::filesystem::is_regular_file(path, error);
    return Result(name, bFound, bFound ? path : "there is no file " + path);
}

static CHECK CheckWordSize(const char* name, const std::string& path) {
    const LIBRARY_FORMAT format = ReadLibraryFormat(path);
    return Result(name, format.bLoadable, format.text);
}

/// The library that the system's text says is not there; empty if it says something else.
static std::string MissingDependency(const std::string& text, const std::string& path) {
    const std::string name = text.substr(0, text.find(": "));
    const bool bMissing = text.find("cannot open shared object file") != std::string::npos;
    return bMissing && name != path ? name : "";
}

static CHECK CheckLoads(const std::string& path, Library& library) {
    library.reset(LoadLibraryA(path.c_str()));
    if (library != nullptr) {
        return {"loads", STATE::OK, "with all that it depends on"};
    }
    const std::string text = LastLibraryError();
    const std::string missing = MissingDependency(text, path);
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

static std::vector<std::string> ExpectedNames() {
    std::vector<std::string> names;
    for (const OPERATION_GROUP& group : OperationGroups()) {
        for (const OPERATION_INFO& info : group.operations) {
            names.emplace_back(info.name);
        }
    }
    return names;
}

/// The sorted names of `from` that `without` has not, or has not as often.
static std::vector<std::string> Surplus(
    const std::vector<std::string>& from, const std::vector<std::string>& without) {
    std::vector<std::string> surplus;
    std::set_difference(
        from.begin(), from.end(), without.begin(), without.end(), std::back_inserter(surplus));
    return surplus;
}

static std::string RegistrationFaults(
    std::vector<std::string> expected, std::vector<std::string> registered) {
    if (expected == registered) {
        return "";
    }
    std::sort(expected.begin(), expected.end());
    std::sort(registered.begin(), registered.end());
    const std::string missing = Listed(Surplus(expected, registered));
    const std::string foreign = Listed(Surplus(registered, expected));
    if (missing.empty() && foreign.empty()) {
        return ", in another order than expected";
    }
    return (missing.empty() ? "" : ", missing: " + missing) +
           (foreign.empty() ? "" : ", too many: " + foreign);
}

static CHECK CheckRegistrations(const std::string& path) {
    try {
        const Module module(path);
        std::vector<std::string> registered;
        for (const REGISTERED_OPERATION& operation : module.Operations()) {
            registered.emplace_back(operation.name);
        }
        const std::string faults = RegistrationFaults(ExpectedNames(), registered);
        return Result("registrations", faults.empty(), std::to_string(registered.size()) + faults);
    } catch (const HostError& e) {
        return {"registrations", STATE::FAILED, e.what()};
    }
}

// --- What the module needs around it ---

static CHECK CheckLogFile() {
    const bool bExisted = std::filesystem::exists(LOG_FILE);
    errno = 0;
    const bool bWritable = std::ofstream(LOG_FILE, std::ios::app).is_open();
    const std::string reason = bWritable ? "" : std::string(": ") + std::strerror(errno);
    if (bWritable && !bExisted) {
        std::filesystem::remove(LOG_FILE);
    }
    const std::string path = (std::filesystem::current_path() / LOG_FILE).string();
    return Result("log file", bWritable, bWritable ? path : "can't write " + path + reason);
}

static CHECK CheckSharedBlocks() {
    const std::string fault = SharedBlockFault();
    return Result("shared blocks", fault.empty(), fault.empty() ? "can be opened" : fault);
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

/// The checks made so far.
class Examination {
  public:
    explicit Examination(const std::function<void(const CHECK&)>& onCheck) : m_OnCheck(onCheck) {}

    void Add(const CHECK& check) {
        checks.push_back(check);
        m_OnCheck(check);
    }

    template <class Check>
    void AddBehindGood(const char* name, const Check& check) {
        const bool bGood = checks.back().state == STATE::OK;
        Add(bGood ? check() : CHECK{name, STATE::NOT_TESTED, "not tested"});
    }

    std::vector<CHECK> checks;

  private:
    const std::function<void(const CHECK&)>& m_OnCheck;
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

std::vector<CHECK> CheckAll(
    const std::string& path, const std::string& linkPath,
    const std::function<void(const CHECK&)>& onCheck) {
    Examination examination(onCheck);
    std::optional<ChosenLink> link;
    if (!linkPath.empty()) {
        ExamineLink(linkPath, examination, link);
    }
    ExamineModule(path, examination);
    examination.Add(CheckLogFile());
    examination.Add(CheckSharedBlocks());
    return examination.checks;
}
