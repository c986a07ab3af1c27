// Runs a fuzz target on the files of a folder, for builds that have no fuzzer.
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include "fuzz/Target.h"

/// Null in a target that has nothing to do ahead of its first input.
extern "C" __attribute__((weak)) int LLVMFuzzerInitialize(int* pCount, char*** pArguments);

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fputs("usage: fuzz_TARGET FOLDER\n", stderr);
        return 2;
    }
    if (LLVMFuzzerInitialize != nullptr) {
        LLVMFuzzerInitialize(&argc, &argv);
    }
    std::size_t count = 0;
    for (const auto& entry :
         std::filesystem::directory_iterator(std::filesystem::absolute(argv[1]))) {
        std::printf("%s\n", entry.path().filename().string().c_str());
        std::fflush(stdout);  // the last line tells which one ended the program
        std::ifstream file(entry.path(), std::ios::binary);
        const std::string bytes{std::istreambuf_iterator<char>(file), {}};
        LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
        ++count;
    }
    std::printf("%zu inputs\n", count);
    return count != 0 ? 0 : 1;
}
