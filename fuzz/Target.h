// What all fuzz targets share: the fuzzer's entry, the end of a run that found something, the input
// as a text or as a file, and what a reader may refuse.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

/// Runs one input.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* pData, std::size_t size);

/// Ends the program where a rule is broken, which the fuzzer takes for a find.
void Require(bool bHolds, std::string_view subject, std::string_view rule);

inline std::string_view InputText(const std::uint8_t* pData, std::size_t size) {
    return {reinterpret_cast<const char*>(pData), size};
}

/// A file in memory, for what takes a path.
class InputFile {
  public:
    explicit InputFile(std::string_view bytes);
    InputFile(const InputFile&) = delete;
    InputFile& operator=(const InputFile&) = delete;
    ~InputFile();

    std::string Path() const;

  private:
    int m_nFile;
};

/// Whether the host's reader takes the file. Refusing it is a HostError of wrong use that names the
/// file in each of its lines, in which nothing steers a terminal; all else is a find.
bool IsTaken(const InputFile& file, const std::function<void(const std::string& path)>& read);
