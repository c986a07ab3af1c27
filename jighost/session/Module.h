// The module as this host has it: loaded by its path, its operations known from the callback.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "frame/Registration.h"
#include "platform/Platform.h"

/// What the callback got. The name and the procedure live as long as the module is loaded.
struct REGISTERED_OPERATION {
    const char* name;
    EVENT_PROC procedure;
    std::int32_t size;
    std::int32_t direction;
};

/// Where the module of a path given by a person lies; an empty path stands for the one that
/// belongs to this program. Absolute, since the loader searches its own folders for a bare name.
std::string FullModulePath(const std::string& path);

class Module {
  public:
    /// Loads the module of `path`, as FullModulePath takes it, and has it register its operations.
    /// Throws EXIT_NO_MODULE if that fails.
    explicit Module(const std::string& path);
    ~Module();
    Module(const Module&) = delete;
    Module& operator=(const Module&) = delete;

    /// In the order of registration.
    const std::vector<REGISTERED_OPERATION>& Operations() const { return m_Operations; }

    /// Throws EXIT_NO_MODULE if the module has not registered the name, with a procedure.
    const REGISTERED_OPERATION& Find(std::string_view name) const;

  private:
    std::int32_t Register();
    void CheckOperations() const;

    std::string m_Path;
    HMODULE m_Library;
    std::vector<REGISTERED_OPERATION> m_Operations;
};
