// Records as their fields, each step held against its record before it counts.
#include "jighost/sequence/SequenceOfTrace.h"

#include <algorithm>
#include <filesystem>
#include <span>

#include "frame/Result.h"
#include "jighost/operations/ResultName.h"
#include "jighost/output/Json.h"
#include "jighost/sequence/SequenceFile.h"
#include "jighost/text/HostError.h"
#include "trace/TraceReader.h"

/// As YAML takes any text: it takes what JSON has between quotes.
static std::string Quoted(const std::string& text) {
    return JsonText(text, ON_ONE_LINE);
}

/// A text's characters without the zeros behind it.
static std::string TextOf(std::span<const std::uint8_t> bytes) {
    std::string text(bytes.begin(), bytes.end());
    return text.substr(0, text.find_last_not_of('\0') + 1);
}

static bool IsZero(std::span<const std::uint8_t> bytes) {
    return std::all_of(bytes.begin(), bytes.end(), [](std::uint8_t byte) { return byte == 0; });
}

/// Whether the text is UTF-8.
static bool IsQuotable(const std::string& text) {
    return Json::parse(Quoted(text)) == text;
}

/// The fields that make up the record, as far as a text file can have them: of many of one name
/// those that are not zero, or the last one.
static std::vector<FIELD_VALUE> FieldsOf(const RECORD& record, const RecordBytes& bytes) {
    std::vector<FIELD_VALUE> fields;
    for (const FIELD& field : record.fields) {
        for (std::uint32_t i = 0; i < field.count; ++i) {
            const auto element =
                std::span(bytes).subspan(field.offset + std::size_t{i} * field.width, field.width);
            if (field.count > 1 && IsZero(element) && !(fields.empty() && i + 1 == field.count)) {
                continue;
            }
            const std::string index = field.count > 1 ? '[' + std::to_string(i) + ']' : "";
            const std::string name = field.name + index;
            const std::string value =
                field.kind == FIELD_KIND::TEXT ? TextOf(element) : FieldText(record, bytes, name);
            if (IsQuotable(value)) {
                fields.push_back({name, value});
            }
        }
    }
    return fields;
}

namespace {

class Writer {
  public:
    using Listener = std::function<void(const std::string& text)>;

    Writer(std::ostream& out, const std::string& path, const Listener& tell)
        : m_Out(out), m_Path(path), m_Tell(tell) {}

    void WriteAll();

  private:
    void Write(const TRACED_OPERATION& operation);
    void WriteHead();
    void WriteRecord(const OPERATION_INFO& info, const TRACED_OPERATION& operation);
    void WriteResult(const TRACED_OPERATION& operation);
    void Tell(const TRACED_OPERATION& operation, const std::string& text) const;

    std::ostream& m_Out;
    const std::string& m_Path;
    const Listener& m_Tell;
    bool m_bAny = false;
    bool m_bDump = false;
};

void Writer::Tell(const TRACED_OPERATION& operation, const std::string& text) const {
    m_Tell(
        m_Path + ':' + std::to_string(operation.line) + ": operation " +
        std::to_string(operation.number) + ", " + operation.name + ", " + text);
}

void Writer::WriteHead() {
    const std::string name = std::filesystem::path(m_Path).filename().string();
    m_Out
        << "# What ran by a recording. Data of the body that it read are not expected of another.\n"
        << "format: 1\nname: " << Quoted(name) << "\nsteps:\n";
    m_bAny = true;
}

void Writer::Write(const TRACED_OPERATION& operation) {
    const OPERATION_INFO* pInfo = FindOperation(operation.name);
    if (pInfo == nullptr) {
        Tell(operation, "is none that the module has");
        return;
    }
    const bool bReads = pInfo->use == RECORD_USE::IN || pInfo->use == RECORD_USE::IN_OUT;
    if (operation.bNullRecord && pInfo->use != RECORD_USE::NONE) {
        Tell(operation, "got a null pointer, which a sequence can't give");
        return;
    }
    if (!m_bAny) {
        WriteHead();
    }
    m_bDump = m_bDump || IsDump(*pInfo);
    m_Out << "  - operation: " << operation.name << '\n';
    if (bReads) {
        WriteRecord(*pInfo, operation);
    }
    WriteResult(operation);
}

void Writer::WriteRecord(const OPERATION_INFO& info, const TRACED_OPERATION& operation) {
    RecordBytes bytes = NewRecord(*info.record);
    if (operation.record.size() > bytes.size()) {
        Tell(operation, "has more bytes than its record");
        return;
    }
    std::copy(operation.record.begin(), operation.record.end(), bytes.begin());
    const std::vector<FIELD_VALUE> fields = FieldsOf(*info.record, bytes);
    const char* pszBetween = "    record: {";
    for (const FIELD_VALUE& field : fields) {
        m_Out << pszBetween << Quoted(field.field) << ": " << Quoted(field.value);
        pszBetween = ", ";
    }
    m_Out << (fields.empty() ? "" : "}\n");
    if (operation.record.empty()) {
        Tell(operation, "stands with zeros: the recording lacks its record");
    } else if (BuildRecord(info, fields) != bytes) {
        Tell(operation, "has a record with bytes that the fields of a sequence can't have");
    }
}

/// A failure is expected the next time too; it would end the sequence otherwise.
void Writer::WriteResult(const TRACED_OPERATION& operation) {
    if (!operation.result) {
        m_Out << "    # it never ended\n";
    } else if (IsFailure(*operation.result)) {
        const std::string name = ResultName(*operation.result);
        const bool bName = ParseResult(name) == operation.result;
        m_Out << "    expect: " << (bName ? name : std::to_string(*operation.result)) << '\n';
    }
}

void Writer::WriteAll() {
    TraceReader reader({m_Path}, [](const TRACED_OPERATION&) { return true; });
    for (TRACE_ITEM item = reader.Next(); item != TRACE_ITEM::END; item = reader.Next()) {
        if (item == TRACE_ITEM::OPERATION) {
            Write(reader.Operation());
        } else if (item == TRACE_ITEM::GAP) {
            m_Tell(
                m_Path + ':' + std::to_string(reader.Gap().line) + ": " +
                std::to_string(reader.Gap().entries) +
                " entries are missing here: " + reader.Gap().why);
        }
    }
    if (!m_bAny) {
        throw TraceError(m_Path + ": expected an operation at least, got none");
    }
    if (m_bDump) {
        m_Out << "# Of the dumps; it must exist.\nfolder: dump\n";
    }
}

}  // namespace

void WriteSequenceOfTrace(
    std::ostream& out, const std::string& path,
    const std::function<void(const std::string& text)>& tell) {
    try {
        Writer(out, path, tell).WriteAll();
    } catch (const TraceError& e) {
        throw HostError(EXIT_WRONG_USE, e.what());
    }
}
