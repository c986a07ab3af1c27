// Read, held and written as one: else the run that ends last would undo what another one has saved.
#include "jighost/session/KeptBody.h"

#include <filesystem>

#include "bodylnk/SimulatedBody.h"
#include "jighost/session/BodyFile.h"
#include "jighost/session/Installation.h"
#include "jighost/session/Patience.h"
#include "jighost/text/HostError.h"

/// The current directory's BoardInf.ini is the one that counts; the sample stands in for it.
static void UseSampleInstallation() {
    std::error_code error;
    if (!std::filesystem::exists("BoardInf.ini", error)) {
        SimulatedBody::SetInstallationFolder(SampleFolder().string());
    }
}

static void Hold(FileLock& lock, const std::string& path) {
    const auto attempt = [&] {
        return WithExitCode(EXIT_WRONG_USE, [&] { return lock.Take(path); });
    };
    if (!SucceedsInTime(attempt)) {
        throw HostError(EXIT_HOST_ERROR, "another run of jighost uses the body " + path);
    }
}

KeptBody::KeptBody(const std::string& path) : m_Path(path) {
    SimulatedBody::Reset();
    UseSampleInstallation();
    if (!m_Path.empty()) {
        Hold(m_Lock, m_Path);
        LoadBody(m_Path);
        CheckBodyWritable(m_Path);
        m_Text = BodyText();
    }
}

void KeptBody::WriteBack() const {
    const std::string text = m_Path.empty() ? "" : BodyText();
    if (text != m_Text) {
        WriteBody(m_Path, text);
    }
}
