// The file of a sequence. Of one that is taken each step can be run and judged.
#include "fuzz/Target.h"
#include "jighost/sequence/SequenceFile.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* pData, std::size_t size) {
    const InputFile file(InputText(pData, size));
    SEQUENCE sequence;
    if (!IsTaken(file, [&](const std::string& path) { sequence = ReadSequence(path); })) {
        return 0;
    }
    Require(!sequence.steps.empty(), "sequence", "has no step");
    for (const STEP& step : sequence.steps) {
        const RecordBytes record = BuildRecord(*step.info, step.fields);
        const RecordBytes expected = BuildRecord(*step.info, step.resultFields);
        for (const FIELD_VALUE& each : step.resultFields) {
            FieldText(*step.info->record, record, each.field);
            IsSameField(*step.info->record, expected, record, each.field);
        }
    }
    return 0;
}
