// A value of an INI file. What stands behind it does not matter, and a default is given as it is or
// not at all.
#include "fuzz/Target.h"
#include "platform/Platform.h"

static UINT ReadSize(std::string_view text, int nDefault) {
    const InputFile file(text);
    return GetPrivateProfileIntA("DLResonantFrequency", "Size", nDefault, file.Path().c_str());
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* pData, std::size_t size) {
    const std::string_view text = InputText(pData, size);
    const UINT value = ReadSize(text, 1);
    const UINT other = ReadSize(text, 2);
    Require(value == other || (value == 1 && other == 2), "default", "is mixed with a value");
    if (value == other) {
        const std::string longer = std::string(text) + "\n[DLResonantFrequency]\nSize=3\n";
        Require(ReadSize(longer, 1) == value, "value", "is not the first");
    }
    return 0;
}
