// A trace read for replay and for the list of its operations, and shown. What is taken, written
// anew and read back, is the same; the list tells the same of it.
#include <algorithm>
#include <sstream>
#include <tuple>

#include "fuzz/Target.h"
#include "jighost/recording/WholeOperation.h"
#include "jighost/replay/ChosenOperations.h"
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
    return ReadOperations(file.Path(), {}).operations;
}

bool IsSame(const TRACED_OPERATION& one, const TRACED_OPERATION& other) {
    const auto fields = [](const TRACED_OPERATION& each) {
        return std::tie(
            each.name, each.record, each.calls, each.bUnanswered, each.result, each.returned);
    };
    return fields(one) == fields(other);
}

/// All but those that lack entries, in the order in which they began.
Operations ReadList(const std::string& path) {
    Operations operations;
    TraceReader reader({path}, [](const TRACED_OPERATION&) { return false; });
    for (TRACE_ITEM item = reader.Next(); item != TRACE_ITEM::END; item = reader.Next()) {
        if (item == TRACE_ITEM::OPERATION && !reader.Operation().bTorn) {
            operations.push_back(reader.Operation());
        }
    }
    std::sort(operations.begin(), operations.end(), [](const auto& left, const auto& right) {
        return left.number < right.number;
    });
    return operations;
}

bool IsListedAs(const TRACED_OPERATION& listed, const TRACED_OPERATION& whole) {
    return listed.number == whole.number && listed.name == whole.name &&
           listed.result == whole.result && listed.callCount == whole.calls.size() &&
           listed.bUnanswered == whole.bUnanswered && listed.serial == whole.serial;
}

void Show(const TRACED_OPERATION& operation) {
    std::ostringstream out;
    ShowOperation(out, operation, "");
    out << JsonText(WholeOperationJson(operation));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* pData, std::size_t size) {
    const InputFile file(InputText(pData, size));
    Operations read;
    const auto readWhole = [&](const std::string& path) {
        read = ReadOperations(path, {}).operations;
    };
    if (IsTaken(file, readWhole) && !read.empty()) {
        const Operations list = ReadList(file.Path());
        Require(
            std::equal(list.begin(), list.end(), read.begin(), read.end(), IsListedAs), "trace",
            "is listed otherwise than it is read");
        std::for_each(read.begin(), read.end(), Show);
        const Operations again = WriteAndRead(read);
        Require(
            std::equal(read.begin(), read.end(), again.begin(), again.end(), IsSame), "trace",
            "reads otherwise when written anew");
    }
    return 0;
}
