// Who stands behind the classes of the camera link: the simulated body, or another library. The
// functions are those of link/BodyLink.h, with the caller's own references and pointers, and throw
// what their callers are to catch. An object behind lives as long as the one that it stands behind.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "link/BodyLink.h"

namespace Link {

/// Behind a CEventProcedure, a CPublicProperty among them.
class Procedure {
  public:
    Procedure() = default;
    Procedure(const Procedure&) = delete;
    Procedure& operator=(const Procedure&) = delete;
    virtual ~Procedure() = default;

    virtual void Execute(
        const std::string& name, const std::int32_t& parameter, std::int32_t* result) = 0;
    virtual void ClearParameters() = 0;
    virtual void PushParameterAsInteger(const std::int32_t& value, const std::int32_t& kind) = 0;
    virtual void PushParameterAsSafeArray(const void* data, const std::uint32_t& size) = 0;
    virtual void Execute(const std::string& name, std::int32_t* result) = 0;
    virtual void ExecuteAndGetSize(
        const std::string& name, std::uint32_t* size, std::int32_t* result) = 0;
    virtual void GetReturnData(void* data, std::uint32_t* size, std::int32_t* result) = 0;
    virtual void ExecuteAndGetData(
        const std::string& name, void* data, std::uint32_t* size, std::int32_t* result) = 0;

    // Of a CProperty alone.
    virtual void Get(const std::uint32_t& id, const std::uint32_t& size, void* data) = 0;
    virtual void Set(const std::uint32_t& id, const std::uint32_t& size, const void* data) = 0;
    virtual void InitializeList(const std::uint32_t& count) = 0;
    virtual void PushList(const std::uint32_t& id) = 0;
    virtual void SaveList() = 0;
};

/// Behind a CSLRMonitor.
class Monitor {
  public:
    Monitor() = default;
    Monitor(const Monitor&) = delete;
    Monitor& operator=(const Monitor&) = delete;
    virtual ~Monitor() = default;

    virtual void OpenSession() = 0;
    virtual void ChangeBank(const SLR_MONITOR::tagBANK_KIND_T& bank) = 0;
    virtual void WriteMemory(
        const std::uint32_t& address, const std::uint32_t& size, const std::uint8_t* data) = 0;
    virtual void ReadMemory(
        const std::uint32_t& address, const std::uint32_t& size, std::uint8_t* data) = 0;
    virtual void CallFunction(const std::uint32_t& number) = 0;
    virtual void CloseSession() = 0;
};

/// Behind a CFilePath.
class FilePath {
  public:
    FilePath() = default;
    FilePath(const FilePath&) = delete;
    FilePath& operator=(const FilePath&) = delete;
    virtual ~FilePath() = default;

    virtual std::string GetPropertyFullPath(const std::string& name) = 0;
};

/// Behind what belongs to no object.
class Behind {
  public:
    Behind() = default;
    Behind(const Behind&) = delete;
    Behind& operator=(const Behind&) = delete;

    virtual std::unique_ptr<Procedure> NewEventProcedure() = 0;
    virtual std::unique_ptr<Procedure> NewPublicProperty() = 0;
    virtual std::unique_ptr<Monitor> NewMonitor() = 0;
    virtual std::unique_ptr<FilePath> NewFilePath() = 0;
    virtual void Save(const std::uint32_t& id) = 0;
    /// For `_gt`.
    virtual std::string LinePrefix(const std::uint32_t& value) = 0;

  protected:
    ~Behind() = default;
};

}  // namespace Link
