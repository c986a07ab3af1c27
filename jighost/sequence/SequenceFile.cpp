// A file is read once without values, which tells what is wrong with it, and then for each run.
#include "jighost/sequence/SequenceFile.h"

#include "jighost/sequence/Mistakes.h"
#include "jighost/sequence/ParameterReader.h"
#include "jighost/sequence/SequenceFormat.h"
#include "jighost/sequence/SequenceReader.h"

RecordBytes BuildRecord(const OPERATION_INFO& info, const std::vector<FIELD_VALUE>& fields) {
    RecordBytes bytes = NewRecord(*info.record);
    SetFields(info.name, *info.record, bytes, fields);
    return bytes;
}

SequenceFile::SequenceFile(const std::string& path) : m_File(path, SEQUENCE_FORMAT) {
    Mistakes mistakes;
    if (const YAML::Node parameters = m_File.Root()["parameters"]) {
        mistakes.Gather([&] {
            RequireNewFormat(m_File, parameters, "no parameters:");
            m_Parameters = ReadParameters(m_File, parameters, mistakes);
        });
    }
    VALUES unknown;
    for (const PARAMETER& each : m_Parameters) {
        unknown[each.name];
    }
    ReadWithValues(m_File, unknown, mistakes);
    mistakes.ThrowIfAny();
}

SEQUENCE SequenceFile::Read(const VALUES& values) const {
    Mistakes mistakes;
    SEQUENCE sequence = ReadWithValues(m_File, values, mistakes);
    mistakes.ThrowIfAny();
    return sequence;
}
