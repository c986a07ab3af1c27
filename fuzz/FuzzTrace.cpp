// A trace read for replay. What is taken, written anew and read back, is the same.
#include <algorithm>
#include <tuple>

#include "fuzz/Target.h"
#include "jighost/replay/ReplayRun.h"
#include "trace/TraceReader.h"
#include "trace/TraceWriter.h"

namespace {

using Operations = std::vector<TRACED_OPERATION>;

void WriteOperation(TraceWriter& writer, const TRACED_OPERATION& operation) {
    const TraceWriter::Milliseconds time(1);
    writer.WriteOperation(operation.name, operation.record);
    std::uint32_t number = 0;
    for (const Link::CALL& call : operation.calls) {
        writer.WriteCall(call, ++number);
        if (!operation.bUnanswered || number < operation.calls.size()) {
            writer.WriteAnswer(call, number, time);
        }
    }
    if (operation.result) {
        writer.WriteResult(*operation.result, operation.returned, time);
    }
}

Operations WriteAndRead(const Operations& operations) {
    const InputFile file("");
    TraceWriter writer(file.Path());
    for (const TRACED_OPERATION& operation : operations) {
        WriteOperation(writer, operation);
    }
    writer.Finish();
    return ReadTrace(file.Path());
}

bool IsSame(const TRACED_OPERATION& one, const TRACED_OPERATION& other) {
    const auto fields = [](const TRACED_OPERATION& each) {
        return std::tie(
            each.name, each.record, each.calls, each.bUnanswered, each.result, each.returned);
    };
    return fields(one) == fields(other);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* pData, std::size_t size) {
    const InputFile file(InputText(pData, size));
    Operations read;
    if (IsTaken(file, [&](const std::string& path) { read = ReadOperations(path); })) {
        const Operations again = WriteAndRead(read);
        Require(
            std::equal(read.begin(), read.end(), again.begin(), again.end(), IsSame), "trace",
            "reads otherwise when written anew");
    }
    return 0;
}
