// A step is added behind those before it, so that a long run takes no longer for each; whatever
// goes wrong with that, the next step replaces the file by all that has come so far.
#include "jighost/sequence/RecordFile.h"

#include <algorithm>

#include "jighost/output/Json.h"
#include "jighost/text/HostError.h"
#include "platform/FileStream.h"
#include "platform/Utf8Path.h"
#include "platform/WholeFile.h"

namespace fs = std::filesystem;

RecordFile::RecordFile(const RECORD_PLACE& place)
    : m_Path(PathOf(place.path)), m_Folder(PathOf(place.folder)) {
    std::error_code ignored;
    if (!m_Folder.empty() && !fs::is_directory(m_Folder, ignored)) {
        throw HostError(
            EXIT_WRONG_USE, "--records " + place.folder + ": expected a folder that is there");
    }
    if (!m_Path.empty()) {
        WithExitCode(EXIT_WRONG_USE, [this] { CheckReplaceable(m_Path); });
    }
}

static std::string OnOneLine(const Json& json) {
    return JsonText(json, ON_ONE_LINE) + '\n';
}

void RecordFile::Begin(const RUN_RECORD& record) {
    m_Head = OnOneLine(RunRecordJson(record));
    WithExitCode(EXIT_HOST_ERROR, [&] {
        if (!m_Folder.empty()) {
            m_Path = MakeInFolder(record, m_Head);
        } else if (!m_Path.empty()) {
            Replace(m_Head);
        }
    });
}

void RecordFile::AddStep(const RUN_RECORD& record) {
    if (m_Path.empty()) {
        return;
    }
    try {
        if (!m_bTorn && IsAsLeft()) {
            AppendToFile(m_Path, OnOneLine(RecordedStepJson(record.steps.back())));
        } else {
            Replace(Lines(record));
        }
        m_bTorn = false;
    } catch (const std::runtime_error&) {
        m_bTorn = true;
    }
}

/// Each replacing leaves a moment in which another run may take the file: then that one has it, or
/// this one replaces it again.
void RecordFile::Replace(const std::string& lines) {
    HoldAnother();
    do {
        ReplaceFile(m_Path, lines, OUTLASTS::POWER_FAILURES);
        Hold();
    } while (!IsAsLeft());
}

/// Takes whatever stands in the place of the file that this run has left there.
void RecordFile::HoldAnother() {
    if (!IsAsLeft() && fs::exists(m_Path)) {
        Hold();
    }
}

void RecordFile::Hold() {
    m_Lock.emplace();
    if (!m_Lock->Take(TextOf(m_Path))) {
        throw HostError(
            EXIT_HOST_ERROR, "another run of jighost writes the record " + TextOf(m_Path));
    }
}

/// Nobody has put another file in its place.
bool RecordFile::IsAsLeft() const {
    std::string head(m_Head.size(), '\0');
    FileStream(m_Path).read(head.data(), static_cast<std::streamsize>(head.size()));
    return head == m_Head;
}

std::string RecordFile::Lines(const RUN_RECORD& record) const {
    std::string lines = m_Head;
    for (const RECORDED_STEP& step : record.steps) {
        lines += OnOneLine(RecordedStepJson(step));
    }
    return lines;
}

void RecordFile::Finish(const RUN_RECORD& record) {
    const std::string text = RunRecordText(record);
    WithExitCode(EXIT_HOST_ERROR, [&] {
        if (!m_Folder.empty()) {
            MakeInFolder(record, text);
            fs::remove(m_Path);
        } else if (!m_Path.empty()) {
            HoldAnother();
            ReplaceFile(m_Path, text, OUTLASTS::POWER_FAILURES);
        }
    });
}

/// Such as "2026-11-23T092000-12345-passed".
static std::string NameOf(const RUN_RECORD& record) {
    std::string moment = record.started.substr(0, record.started.find('.'));
    std::erase(moment, ':');
    const std::string serial = record.serial ? std::to_string(*record.serial) : "unknown";
    return moment + '-' + serial + '-' + VerdictName(record.verdict);
}

/// A new file; where the name is taken, another number stands behind it.
fs::path RecordFile::MakeInFolder(const RUN_RECORD& record, const std::string& text) const {
    const std::string name = NameOf(record);
    fs::path path = m_Folder / PathOf(name + ".json");
    for (int number = 2; !MakeFile(path, text); ++number) {
        path = m_Folder / PathOf(name + '-' + std::to_string(number) + ".json");
    }
    return path;
}
