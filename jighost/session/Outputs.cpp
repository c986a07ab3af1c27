// Files are the same by what they are; those that are not there yet, by where they will be.
#include "jighost/session/Outputs.h"

#include <filesystem>

#include "jighost/text/HostError.h"
#include "platform/Utf8Path.h"
#include "platform/WholeFile.h"

namespace fs = std::filesystem;

static bool IsSameFile(const fs::path& left, const fs::path& right) {
    std::error_code ignored;
    if (fs::exists(left, ignored) && fs::exists(right, ignored)) {
        return fs::is_regular_file(left, ignored) && fs::equivalent(left, right, ignored);
    }
    return WithExitCode(EXIT_WRONG_USE, [&] {  // of a circle of links
        const fs::path place = fs::weakly_canonical(BehindLinks(left), ignored);
        return !place.empty() && place == fs::weakly_canonical(BehindLinks(right), ignored);
    });
}

static void CheckApart(const NAMED_FILE& output, const NAMED_FILE& other) {
    if (!output.path.empty() && !other.path.empty() &&
        IsSameFile(PathOf(output.path), PathOf(other.path))) {
        throw HostError(
            EXIT_WRONG_USE, output.name + " " + output.path + " is the same file as " + other.name);
    }
}

void CheckOutputs(const std::vector<NAMED_FILE>& outputs, const std::vector<NAMED_FILE>& inputs) {
    for (std::size_t i = 0; i < outputs.size(); ++i) {
        for (const NAMED_FILE& input : inputs) {
            CheckApart(outputs[i], input);
        }
        for (std::size_t j = 0; j < i; ++j) {
            CheckApart(outputs[i], outputs[j]);
        }
    }
}
