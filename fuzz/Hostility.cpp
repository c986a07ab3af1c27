// Each HOSTILE bit takes its bytes here, in a fixed order.
#include "fuzz/Hostility.h"

#include <algorithm>

#include "bodylnk/SimulatedBody.h"
#include "fuzz/MemoryFiles.h"

/// A property of more bytes than this costs time and shows nothing new.
static const std::int64_t LARGEST_PROPERTY = 4096;

ASKED AskedBy(std::span<const Link::CALL> calls) {
    // As many as a dump gets to, and more than any other operation reads.
    const std::size_t MOST_PROPERTIES = 8;
    ASKED asked;
    for (const Link::CALL& call : calls) {
        const auto isSame = [&](const Link::CALL& other) { return other.id == call.id; };
        if (call.function == "CProperty::Get" && call.value <= LARGEST_PROPERTY &&
            asked.properties.size() < MOST_PROPERTIES &&
            std::none_of(asked.properties.begin(), asked.properties.end(), isSame)) {
            asked.properties.push_back(call);
        }
        if (!call.name.empty() &&
            std::find(asked.events.begin(), asked.events.end(), call.name) == asked.events.end()) {
            asked.events.push_back(call.name);
        }
    }
    return asked;
}

void ResetSurroundings(const FolderBlock& folder) {
    SimulatedBody::Reset();
    SimulatedBody::SetLinePrefix("20:10:29.123 ");
    MemoryFiles().ini = "[DLResonantFrequency]\nAddress=100\nSize=4\n";
    MemoryFiles().bDiskFull = false;
    folder.Write("");
}

static void SetProperties(const ASKED& asked, Input& input) {
    for (const Link::CALL& call : asked.properties) {
        SimulatedBody::SetProperty(call.id, input.Bytes(static_cast<std::size_t>(call.value)));
    }
}

static void SetEvents(const ASKED& asked, Input& input) {
    for (const std::string& name : asked.events) {
        const auto first = input.Take<std::int32_t>();
        const auto second = input.Take<std::int32_t>();
        SimulatedBody::ScriptEvent(name, {first, second});
    }
}

static void SetSizes(Input& input) {
    const auto reported = input.Take<std::uint32_t>();
    SimulatedBody::ScriptReturnSize(reported, input.Take<std::uint32_t>());
}

// Paths of a dump must stay in memory: a text with a backslash, where a path ends, begins with a
// folder.
static void SetFolder(const FolderBlock& folder, Input& input) {
    const std::size_t LONGEST = 260;
    const auto kind = input.Take<std::uint8_t>();
    std::string text = "dump\\";
    if (kind % 4 == 0) {
        text = input.Text();
        std::replace(text.begin(), text.end(), '\\', '/');
    } else if (kind % 4 == 1) {
        text += input.Text();
    } else if (kind % 4 == 2) {
        text.resize(LONGEST, 'x');  // up to the block's end, and no zero
    }
    folder.Write(text.substr(0, LONGEST));
    MemoryFiles().dumpFiles = kind / 4 % 4;
    MemoryFiles().bDiskFull = kind / 16 % 4 == 1;
}

static void SetMemory(Input& input) {
    SimulatedBody::SetLensAnswer(input.Take<std::uint8_t>());
    const std::string log = input.Text();
    SimulatedBody::SetCameraLog({log.begin(), log.end()});
    auto& calendar = SimulatedBody::Calendar();
    calendar = input.Take<std::array<std::int32_t, 9>>();
}

static void PlanFault(Input& input) {
    const auto kind = input.Take<std::uint8_t>();
    const std::uint32_t n = 1U + input.Take<std::uint8_t>();
    const SimulatedBody::FAILURE failure = {
        .kind = static_cast<SimulatedBody::FAULT>(kind % 3),
        .moment = static_cast<SimulatedBody::MOMENT>(kind / 4 % 2),
        .code = input.Take<std::int32_t>() | 1,
        .message = input.Text()};
    switch (kind / 16 % 3) {
        case 0:
            SimulatedBody::FailCall(n, failure);
            break;
        case 1:
            SimulatedBody::FailConstruction(n, failure);
            break;
        default:
            SimulatedBody::FailLinePrefix(n, failure);
    }
}

void SetUpHostility(unsigned hostile, const ASKED& asked, const FolderBlock& folder, Input& input) {
    const auto with = [hostile](HOSTILE bit, const auto& setUp) {
        if ((hostile & bit) != 0) {
            setUp();
        }
    };
    with(HOSTILE_PROPERTIES, [&] { SetProperties(asked, input); });
    with(HOSTILE_EVENTS, [&] { SetEvents(asked, input); });
    with(HOSTILE_SIZES, [&] { SetSizes(input); });
    with(HOSTILE_INI, [&] { MemoryFiles().ini = "[DLResonantFrequency]\n" + input.Text(); });
    with(HOSTILE_FOLDER, [&] { SetFolder(folder, input); });
    with(HOSTILE_MEMORY, [&] { SetMemory(input); });
    with(HOSTILE_FAULT, [&] { PlanFault(input); });
}
