// The contract with the camera link library BODYLNK, which alone reaches the camera.
//
// All member functions return nothing: a failure of the link arrives as a thrown exception, as a
// rule a `CException*` that the catcher deletes. Scalars are passed by constant reference; memory
// behind a pointer belongs to the caller and is used only during the call. Constructors may
// throw too; destructors never do.
#pragma once

#include <cstdint>
#include <string>

#include "link/CException.h"
#include "platform/Export.h"

/// Runs a named event procedure in the camera.
class BODYLNK_API CEventProcedure {
  public:
    CEventProcedure();
    CEventProcedure(const CEventProcedure&) = delete;
    CEventProcedure& operator=(const CEventProcedure&) = delete;
    virtual ~CEventProcedure();

    /// Runs the event with one parameter. `*result` takes its result word, or its data where the
    /// event answers with data.
    void Execute(const std::string& name, const std::int32_t& parameter, std::int32_t* result);

    /// Empties the parameter list.
    void ClearParameters();

    /// Appends an integer to the parameter list; `kind` is always 2.
    void PushParameterAsInteger(const std::int32_t& value, const std::int32_t& kind);

    /// Appends a block of `size` bytes to the parameter list.
    void PushParameterAsSafeArray(const void* data, const std::uint32_t& size);

    /// Runs the event with the parameter list.
    void Execute(const std::string& name, std::int32_t* result);

    /// Runs the event with the parameter list; `*size` takes the byte count of its return data.
    void ExecuteAndGetSize(const std::string& name, std::uint32_t* size, std::int32_t* result);

    /// Copies `*size` bytes of the return data of the last ExecuteAndGetSize to `data`.
    void GetReturnData(void* data, std::uint32_t* size, std::int32_t* result);

    /// Runs the event with the parameter list and copies its return data, at most the preset
    /// `*size` bytes, to `data`.
    void ExecuteAndGetData(
        const std::string& name, void* data, std::uint32_t* size, std::int32_t* result);

  protected:
    struct STATE;
    /// For the library's own derived classes, which bring a state of theirs.
    explicit CEventProcedure(STATE* pOwn);

    STATE* pState;  // the library's own
};

/// Reads, writes and saves camera properties by id.
class BODYLNK_API CProperty : public CEventProcedure {
  public:
    ~CProperty() override;

    /// Fills `data` with `size` bytes of the property.
    void Get(const std::uint32_t& id, const std::uint32_t& size, void* data);

    /// Gives the property `size` bytes; the value stays unsaved.
    void Set(const std::uint32_t& id, const std::uint32_t& size, const void* data);

    /// Stores the property's value in the camera.
    static void Save(const std::uint32_t& id);

    /// Saves several properties at once: InitializeList, one PushList for each id, SaveList.
    void InitializeList(const std::uint32_t& count);
    void PushList(const std::uint32_t& id);
    void SaveList();

  protected:
    CProperty();
};

/// The only property class that the module constructs.
class BODYLNK_API CPublicProperty : public CProperty {
  public:
    CPublicProperty();
    ~CPublicProperty() override;
};

namespace SLR_MONITOR {
/// Banks of the camera's monitor memory.
enum tagBANK_KIND_T : std::uint32_t {
    BANK_EE = 0xEE,
    BANK_FC = 0xFC,
};
}  // namespace SLR_MONITOR

/// Opens the camera's memory: OpenSession, ChangeBank, the work, CloseSession.
class BODYLNK_API CSLRMonitor {
  public:
    CSLRMonitor();
    CSLRMonitor(const CSLRMonitor&) = delete;
    CSLRMonitor& operator=(const CSLRMonitor&) = delete;
    virtual ~CSLRMonitor();

    void OpenSession();
    void ChangeBank(const SLR_MONITOR::tagBANK_KIND_T& bank);
    void WriteMemory(
        const std::uint32_t& address, const std::uint32_t& size, const std::uint8_t* data);
    void ReadMemory(const std::uint32_t& address, const std::uint32_t& size, std::uint8_t* data);
    void CallFunction(const std::uint32_t& number);
    void CloseSession();

  private:
    struct STATE;
    STATE* pState;  // the library's own
};

/// Knows where files of the installation lie.
class BODYLNK_API CFilePath {
  public:
    CFilePath();
    ~CFilePath();

    /// The full path of the file with this bare name.
    std::string GetPropertyFullPath(const std::string& name);
};

/// The text that opens a log line; `value` is always 10.
BODYLNK_API std::string _gt(const std::uint32_t& value);
