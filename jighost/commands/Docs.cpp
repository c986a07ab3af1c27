// jighost docs: the document of all operations and their records, in Markdown.
#include <algorithm>
#include <iostream>
#include <map>

#include "frame/Result.h"
#include "jighost/commands/CommonOptions.h"
#include "jighost/operations/OperationText.h"
#include "jighost/operations/ResultName.h"
#include "jighost/session/Module.h"

static void WriteDocument(const HOST& host);

void AddDocsCommand(Command& program, HOST& host) {
    Command command =
        program.AddCommand("docs", "Prints the document of all operations and records");
    AddModuleOption(command, host);
    command.SetFooter("Example:\n  jighost docs > operations.md");
    command.SetWork([&host] { WriteDocument(host); });
}

static const char INTRODUCTION[] =
    "<!-- Written by ./dev docs; what stands here is changed in "
    "jighost/operations/OperationTable.cpp and\n"
    "jighost/operations/OperationRecords.h. -->\n"
    "# Operations\n"
    "\n"
    "All operations of the module, by group and in the order of registration. An operation takes\n"
    "one pointer and gives a result. `jighost run NAME Field=value ...` runs one on a simulated\n"
    "camera and shows the record that came back and the result.\n"
    "\n"
    "- **Record**: what the pointer points to, linked to its layout; \"-\" for an operation whose\n"
    "  pointer is not looked at. The host owns the memory, and must have all bytes of the record.\n"
    "- **Direction**: *in*, the host fills the record; *out*, the operation fills it.\n"
    "- **Registered**: the size and the direction that the callback is told. Most operations\n"
    "  describe no block there (`0, NONE`), also many that take a pointer.\n"
    "\n"
    "Writing and saving are two things: what an operation writes to a property is lost when the\n"
    "camera is switched off, unless the property is saved too.\n";

static const char FAILURES[] =
    "## Results and failures\n"
    "\n"
    "An odd result is a failure; 0 is success. Whatever an operation's row says, each of them can\n"
    "fail in two more ways: with the code of an exception of the camera link, and with 33 for\n"
    "anything else that is thrown. Nothing is undone: what was written before the failure stays\n"
    "written, and a record may be filled in part.\n"
    "\n"
    "An event is a procedure in the camera that answers with a result word. Where the word is\n"
    "looked at and is odd, it becomes the operation's result; any even word is success.\n"
    "\n"
    "| Result | Meaning |\n"
    "|---|---|\n";

static void WriteFailures() {
    static const std::pair<std::int32_t, const char*> meanings[] = {
        {RESULT_SUCCESS, "done"},
        {RESULT_SYSTEM_ERROR, "a file or a call of the system failed"},
        {RESULT_INVALID_PARAMETER, "a null pointer, or a value out of range"},
        {RESULT_OUT_OF_MEMORY, "no memory for a working buffer"},
        {RESULT_RUNTIME_ERROR, "a text that does not fit, or a file that can't be opened"},
        {RESULT_NOT_FOUND, "a name that the property catalogue has not"},
        {RESULT_UNEXPECTED_EXCEPTION, "something was thrown that nobody expects"},
        {RESULT_INVALID_CAMERA_VALUE, "the camera or a file gave a value that can't be accepted"},
    };
    std::cout << FAILURES;
    for (const auto& [result, pszMeaning] : meanings) {
        std::cout << "| " << ResultText(result) << " | " << pszMeaning << " |\n";
    }
    std::cout << "| any other odd value | an event's result word, or a code of the camera link |\n";
}

/// A link to the heading `text`; its target is the heading in lower case, with hyphens for blanks.
static std::string HeadingLink(const std::string& text) {
    std::string target;
    for (const char character : text) {
        const bool bUpper = character >= 'A' && character <= 'Z';
        target += character == ' ' ? '-' : bUpper ? static_cast<char>(character + 32) : character;
    }
    return "[" + text + "](#" + target + ")";
}

static std::string RecordText(const RECORD& record) {
    if (record.size == 0) {
        return "-";
    }
    return HeadingLink(record.name) + ", " + SizeText(record);
}

static std::string RegistrationText(const REGISTERED_OPERATION& operation) {
    static const std::map<std::int32_t, std::string> directions = {
        {EVENT_PROC_IN, "IN"}, {EVENT_PROC_OUT, "OUT"}, {EVENT_PROC_NONE, "NONE"}};
    const auto known = directions.find(operation.direction);
    return std::to_string(operation.size) + ", " +
           (known == directions.end() ? std::to_string(operation.direction) : known->second);
}

static void WriteGroup(const Module& module, const OPERATION_GROUP& group) {
    std::cout << "\n## " << group.name << "\n\n"
              << "| Operation | Record | Direction | Registered | What it does | How it fails |\n"
              << "|---|---|---|---|---|---|\n";
    for (const OPERATION_INFO& operation : group.operations) {
        const std::string failures = operation.failures;
        std::cout << "| `" << operation.name << "` | " << RecordText(*operation.record) << " | "
                  << UseText(operation.use) << " | "
                  << RegistrationText(module.Find(operation.name)) << " | " << operation.description
                  << " | " << (failures.empty() ? "-" : failures) << " |\n";
    }
}

static void WriteRecord(const RECORD& record) {
    std::cout << "\n### " << record.name << "\n\n"
              << (record.bAnyLength ? "Up to " : "") << record.size << " bytes.\n\n"
              << "| Offset | Width | Field | Type | Unit or meaning |\n"
              << "|---|---|---|---|---|\n";
    for (const FIELD& field : record.fields) {
        std::cout << "| " << field.offset << " | " << WidthText(field) << " | `"
                  << IndexedName(field) << "` | " << TypeText(field.kind) << " | " << field.meaning
                  << " |\n";
    }
}

/// Each record once, in the order in which the operations first take or fill it.
static std::vector<const RECORD*> Records() {
    std::vector<const RECORD*> records;
    for (const OPERATION_GROUP& group : OperationGroups()) {
        for (const OPERATION_INFO& operation : group.operations) {
            const auto known = std::find(records.begin(), records.end(), operation.record);
            if (operation.record->size != 0 && known == records.end()) {
                records.push_back(operation.record);
            }
        }
    }
    return records;
}

static void WriteContents() {
    std::cout << "\nGroups: ";
    const char* pszSeparator = "";
    for (const OPERATION_GROUP& group : OperationGroups()) {
        std::cout << pszSeparator << HeadingLink(group.name);
        pszSeparator = ",\n";
    }
    std::cout << ".\n\n";
}

/// A module that lacks an operation is told ahead of the first line.
static void RequireAll(const Module& module) {
    for (const OPERATION_GROUP& group : OperationGroups()) {
        for (const OPERATION_INFO& operation : group.operations) {
            module.Find(operation.name);
        }
    }
}

static void WriteDocument(const HOST& host) {
    const Module module(host.session.modulePath);
    RequireAll(module);
    std::cout << INTRODUCTION;
    WriteContents();
    WriteFailures();
    for (const OPERATION_GROUP& group : OperationGroups()) {
        WriteGroup(module, group);
    }
    std::cout << "\n## Records\n\n"
              << "Numbers have the host's byte order; nothing is packed or padded beyond what the\n"
              << "offsets say.\n";
    for (const RECORD* pRecord : Records()) {
        WriteRecord(*pRecord);
    }
}
