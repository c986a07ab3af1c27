// Everything passes on: the caller's own references and pointers go in, and what is thrown goes
// through without being touched.
#include "passage/OtherLibrary.h"

#include <filesystem>

#include "passage/ItaniumNames.h"
#include "passage/OtherFunctions.h"
#include "platform/LibraryError.h"
#include "platform/Surroundings.h"
#include "platform/Utf8Path.h"

namespace Link {

namespace {

/// An object of one of the library's classes.
class Life {
  public:
    explicit Life(const LIFE& life) : m_Life(life) {
        (object.*m_Life.construct)();
        try {
            object.CheckLimit();
        } catch (...) {
            (object.*m_Life.destroy)();
            throw;
        }
    }
    Life(const Life&) = delete;
    Life& operator=(const Life&) = delete;
    ~Life() { (object.*m_Life.destroy)(); }

  private:
    const LIFE& m_Life;

  public:
    // The last one: an object that is too large reaches none of the others.
    OtherObject object;
};

class OtherProcedure : public Procedure {
  public:
    OtherProcedure(const OTHER_FUNCTIONS& functions, const LIFE& life)
        : m_Functions(functions), m_Life(life) {}

    void Execute(
        const std::string& name, const std::int32_t& parameter, std::int32_t* result) override {
        m_Life.object.Call(m_Functions.executeWithParameter, name, parameter, result);
    }
    void ClearParameters() override { m_Life.object.Call(m_Functions.clearParameters); }
    void PushParameterAsInteger(const std::int32_t& value, const std::int32_t& kind) override {
        m_Life.object.Call(m_Functions.pushInteger, value, kind);
    }
    void PushParameterAsSafeArray(const void* data, const std::uint32_t& size) override {
        m_Life.object.Call(m_Functions.pushSafeArray, data, size);
    }
    void Execute(const std::string& name, std::int32_t* result) override {
        m_Life.object.Call(m_Functions.execute, name, result);
    }
    void ExecuteAndGetSize(
        const std::string& name, std::uint32_t* size, std::int32_t* result) override {
        m_Life.object.Call(m_Functions.executeAndGetSize, name, size, result);
    }
    void GetReturnData(void* data, std::uint32_t* size, std::int32_t* result) override {
        m_Life.object.Call(m_Functions.getReturnData, data, size, result);
    }
    void ExecuteAndGetData(
        const std::string& name, void* data, std::uint32_t* size, std::int32_t* result) override {
        m_Life.object.Call(m_Functions.executeAndGetData, name, data, size, result);
    }

    void Get(const std::uint32_t& id, const std::uint32_t& size, void* data) override {
        m_Life.object.Call(m_Functions.get, id, size, data);
    }
    void Set(const std::uint32_t& id, const std::uint32_t& size, const void* data) override {
        m_Life.object.Call(m_Functions.set, id, size, data);
    }
    void InitializeList(const std::uint32_t& count) override {
        m_Life.object.Call(m_Functions.initializeList, count);
    }
    void PushList(const std::uint32_t& id) override {
        m_Life.object.Call(m_Functions.pushList, id);
    }
    void SaveList() override { m_Life.object.Call(m_Functions.saveList); }

  private:
    const OTHER_FUNCTIONS& m_Functions;
    Life m_Life;
};

class OtherMonitor : public Monitor {
  public:
    explicit OtherMonitor(const OTHER_FUNCTIONS& functions)
        : m_Functions(functions), m_Life(functions.monitor) {}

    void OpenSession() override { m_Life.object.Call(m_Functions.openSession); }
    void ChangeBank(const SLR_MONITOR::tagBANK_KIND_T& bank) override {
        m_Life.object.Call(m_Functions.changeBank, bank);
    }
    void WriteMemory(
        const std::uint32_t& address, const std::uint32_t& size,
        const std::uint8_t* data) override {
        m_Life.object.Call(m_Functions.writeMemory, address, size, data);
    }
    void ReadMemory(
        const std::uint32_t& address, const std::uint32_t& size, std::uint8_t* data) override {
        m_Life.object.Call(m_Functions.readMemory, address, size, data);
    }
    void CallFunction(const std::uint32_t& number) override {
        m_Life.object.Call(m_Functions.callFunction, number);
    }
    void CloseSession() override { m_Life.object.Call(m_Functions.closeSession); }

  private:
    const OTHER_FUNCTIONS& m_Functions;
    Life m_Life;
};

class OtherFilePath : public FilePath {
  public:
    explicit OtherFilePath(const OTHER_FUNCTIONS& functions)
        : m_Functions(functions), m_Life(functions.filePath) {}

    std::string GetPropertyFullPath(const std::string& name) override {
        return (m_Life.object.*m_Functions.getPropertyFullPath)(name);
    }

  private:
    const OTHER_FUNCTIONS& m_Functions;
    Life m_Life;
};

HMODULE Load(const std::string& path) {
    const auto fullPath = std::filesystem::absolute(PathOf(path)).make_preferred();
    HMODULE library = LoadBesideNamesake(fullPath, ItaniumNames::LINE_PREFIX);
    if (library == nullptr) {
        throw LibraryError("can't load " + path + ": " + LastLibraryError());
    }
    return library;
}

}  // namespace

OtherLibrary::OtherLibrary(const std::string& path)
    : m_Library(Load(path)), m_pFunctions(std::make_unique<OTHER_FUNCTIONS>()) {
    std::string problem;
    for (const std::string& name : FindFunctions(m_Library, *m_pFunctions)) {
        problem += (problem.empty() ? " is no camera link: it lacks " : ", ") + name;
    }
    if (m_pFunctions->linePrefix == &_gt) {
        problem = " is no other camera link: its functions are those of this one";
    }
    if (!problem.empty()) {
        FreeLibrary(m_Library);
        throw LibraryError(path + problem);
    }
}

OtherLibrary::~OtherLibrary() {
    FreeLibrary(m_Library);
}

std::unique_ptr<Procedure> OtherLibrary::NewEventProcedure() {
    return std::make_unique<OtherProcedure>(*m_pFunctions, m_pFunctions->eventProcedure);
}

std::unique_ptr<Procedure> OtherLibrary::NewPublicProperty() {
    return std::make_unique<OtherProcedure>(*m_pFunctions, m_pFunctions->publicProperty);
}

std::unique_ptr<Monitor> OtherLibrary::NewMonitor() {
    return std::make_unique<OtherMonitor>(*m_pFunctions);
}

std::unique_ptr<FilePath> OtherLibrary::NewFilePath() {
    return std::make_unique<OtherFilePath>(*m_pFunctions);
}

void OtherLibrary::Save(const std::uint32_t& id) {
    m_pFunctions->save(id);
}

std::string OtherLibrary::LinePrefix(const std::uint32_t& value) {
    return m_pFunctions->linePrefix(value);
}

std::vector<std::string> MissingNames(const std::string& path) {
    HMODULE library = Load(path);
    OTHER_FUNCTIONS functions;
    std::vector<std::string> missing = FindFunctions(library, functions);
    FreeLibrary(library);
    return missing;
}

}  // namespace Link
