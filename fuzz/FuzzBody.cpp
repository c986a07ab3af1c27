// The file of a simulated body. One that is taken, written anew and read back, is the same body.
#include "bodylnk/SimulatedBody.h"
#include "fuzz/Target.h"
#include "jighost/session/BodyFile.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* pData, std::size_t size) {
    const InputFile file(InputText(pData, size));
    SimulatedBody::Reset();
    if (IsTaken(file, LoadBody)) {
        const std::string text = BodyText();
        SimulatedBody::Reset();
        LoadBody(InputFile(text).Path());
        Require(BodyText() == text, "body", "reads otherwise when written anew");
    }
    return 0;
}
