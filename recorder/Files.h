// The names of files in a host's folder with a recorder.
#pragma once

#include <cstdint>
#include <string>

#include "platform/Program.h"

namespace Recorder {

/// What a library is called while the recorder has its name, such as "libBODYLNK.recorded.so".
inline std::string RecordedName(const std::string& name) {
    const std::size_t ending = name.rfind('.');
    return name.substr(0, ending) + ".recorded" + name.substr(ending);
}

/// Beside the libraries; who has it not gets the settings that stand in Settings.h.
constexpr char SETTINGS_FILE_NAME[] = "recorder.ini";

/// Beside the libraries; the last reason for which nothing could be recorded.
constexpr char FAILURE_FILE_NAME[] = "recorder.failed";

/// Stands in both libraries of the recorder and nowhere else in a host's folder.
constexpr char MARK[] = "TuneBench recorder: in the place of another library";

/// Of the exception by which a call fails that the recorder knows no camera link for.
constexpr std::int32_t NO_RECORDED_LINK = 0x1011;

/// The end of a recording's name.
constexpr char RECORDING_ENDING[] = ".jsonl";

}  // namespace Recorder
