// Files and folders of histories, before a database looks at them.
#include "jighost/history/History.h"

#include <cstdlib>
#include <filesystem>

#include "jighost/history/Schema.h"
#include "jighost/text/HostError.h"
#include "platform/Utf8Path.h"

namespace fs = std::filesystem;

static fs::path Variable(const char* pszName) {
    const char* pszValue = std::getenv(pszName);
    return pszValue == nullptr ? "" : PathOf(pszValue);
}

std::string DefaultHistory() {
    const fs::path data = Variable("XDG_DATA_HOME");
    const fs::path home = Variable("HOME");
    if (!data.is_absolute() && home.empty()) {
        throw HostError(
            EXIT_WRONG_USE, "expected --database, since neither XDG_DATA_HOME nor HOME is set");
    }
    const fs::path folder = data.is_absolute() ? data : home / ".local" / "share";
    return TextOf(folder / "tunebench" / "history.sqlite");
}

static std::string PlaceOf(const std::string& place) {
    return place.empty() ? DefaultHistory() : place;
}

std::unique_ptr<Database> OpenOrMakeHistory(const std::string& place) {
    if (place.empty()) {
        WithExitCode(EXIT_HOST_ERROR, [] {
            fs::create_directories(PathOf(DefaultHistory()).parent_path());
        });
    }
    auto pDatabase = std::make_unique<Database>(PlaceOf(place));
    MakeHistory(*pDatabase);
    return pDatabase;
}

std::unique_ptr<Database> OpenHistory(const std::string& place) {
    const std::string file = PlaceOf(place);
    std::error_code error;
    if (!Database::IsServer(file) && !fs::exists(PathOf(file), error)) {
        throw HostError(
            EXIT_HOST_ERROR, file + ": there is no history yet; jighost history import makes one");
    }
    auto pDatabase = std::make_unique<Database>(file);
    RequireHistory(*pDatabase);
    return pDatabase;
}
