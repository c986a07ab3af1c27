// The file of a sequence. Of one that is taken each step can be run and judged.
#include "fuzz/Target.h"
#include "jighost/sequence/SequenceFile.h"

/// Parameters without a default get the least that some of their kinds take.
static SEQUENCE ReadWithValues(const std::string& path) {
    const SequenceFile file(path);
    VALUES values = DefaultValues(file.Parameters());
    for (auto& [name, value] : values) {
        value = value.value_or("0");
    }
    return file.Read(values);
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* pData, std::size_t size) {
    const InputFile file(InputText(pData, size));
    SEQUENCE sequence;
    if (!IsTaken(file, [&](const std::string& path) { sequence = ReadWithValues(path); })) {
        return 0;
    }
    Require(!sequence.steps.empty(), "sequence", "has no step");
    for (const STEP& step : sequence.steps) {
        const RecordBytes record = BuildRecord(*step.info, step.fields);
        const RecordBytes expected = BuildRecord(*step.info, step.resultFields);
        for (const MEASUREMENT& each : Measured(step.measures, *step.info->record, record)) {
            MeasurementText(each);
        }
        for (const FIELD_VALUE& each : step.resultFields) {
            FieldText(*step.info->record, record, each.field);
            IsSameField(*step.info->record, expected, record, each.field);
        }
    }
    return 0;
}
