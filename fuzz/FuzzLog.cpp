// A log read back, in pieces of the size that the first byte says. Whatever the pieces, the
// operations are the same as of the log in one piece.
#include <algorithm>
#include <tuple>
#include <vector>

#include "fuzz/Target.h"
#include "jighost/log/LogReader.h"

namespace {

using Operations = std::vector<LOGGED_OPERATION>;

void CheckTree(std::span<const LOGGED_OPERATION> tree) {
    std::size_t deepest = 0;
    for (const LOGGED_OPERATION& operation : tree) {
        Require(operation.depth <= deepest, operation.name, "ran within nothing");
        deepest = operation.depth + 1;
    }
}

Operations ReadLog(std::string_view log, std::size_t pieceSize) {
    Operations operations;
    LogReader reader([&](std::span<const LOGGED_OPERATION> tree) {
        CheckTree(tree);
        operations.insert(operations.end(), tree.begin(), tree.end());
    });
    for (; !log.empty(); log.remove_prefix(std::min(pieceSize, log.size()))) {
        reader.Add(log.substr(0, pieceSize));
    }
    reader.End();
    return operations;
}

bool IsSame(const LOGGED_OPERATION& one, const LOGGED_OPERATION& other) {
    const auto fields = [](const LOGGED_OPERATION& each) {
        return std::tie(
            each.name, each.depth, each.begin, each.end, each.error, each.result, each.bOpened,
            each.bInterleaved);
    };
    return fields(one) == fields(other);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* pData, std::size_t size) {
    if (size == 0) {
        return 0;
    }
    const std::string_view log = InputText(pData + 1, size - 1);
    const Operations whole = ReadLog(log, log.size());
    const Operations pieced = ReadLog(log, 1U + *pData);
    Require(
        std::equal(whole.begin(), whole.end(), pieced.begin(), pieced.end(), IsSame), "log",
        "reads otherwise in pieces");
    return 0;
}
