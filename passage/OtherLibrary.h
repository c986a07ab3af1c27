// Another camera link, loaded by its path: whoever stands behind the classes may pass everything on
// to it. Order, arguments, results and thrown objects are its caller's and its own.
#pragma once

#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "passage/Behind.h"
#include "platform/Platform.h"

namespace Link {

/// Why a library can't be used; for people.
class LibraryError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

struct OTHER_FUNCTIONS;

/// Unloads the library at the end: no object of it may be left then.
class OtherLibrary final : public Behind {
  public:
    /// Throws LibraryError for a library that can't be loaded, that lacks functions of the camera
    /// link, or that is the one which calls this.
    explicit OtherLibrary(const std::string& path);
    ~OtherLibrary();

    std::unique_ptr<Procedure> NewEventProcedure() override;
    std::unique_ptr<Procedure> NewPublicProperty() override;
    std::unique_ptr<Monitor> NewMonitor() override;
    std::unique_ptr<FilePath> NewFilePath() override;
    void Save(const std::uint32_t& id) override;
    std::string LinePrefix(const std::uint32_t& value) override;

  private:
    HMODULE m_Library;
    std::unique_ptr<OTHER_FUNCTIONS> m_pFunctions;
};

/// The decorated names of the functions that the library at the path lacks. Throws LibraryError if
/// it can't be loaded.
std::vector<std::string> MissingNames(const std::string& path);

}  // namespace Link
