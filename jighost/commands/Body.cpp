// jighost body: files of simulated bodies made and shown.
#include <algorithm>
#include <iomanip>
#include <iostream>
#include <memory>

#include "bodylnk/SimulatedBody.h"
#include "jighost/commands/CommonOptions.h"
#include "jighost/operations/Record.h"
#include "jighost/output/Json.h"
#include "jighost/session/BodyFile.h"
#include "jighost/text/Numbers.h"
#include "trace/Hex.h"

static void ShowBody(const HOST& host, const std::string& path);
static void NewBody(const std::string& path);
static Command AddFileCommand(
    Command& body, const std::string& name, const std::string& description,
    const std::function<void(const std::string&)>& work);

void AddBodyCommand(Command& program, HOST& host) {
    Command command = program.AddCommand("body", "Makes and shows files for --body");
    command.RequireCommand();
    command.SetFooter(
        "Examples:\n"
        "  jighost body new desk.yaml\n"
        "  jighost run SaveOwnerName --body desk.yaml\n"
        "  jighost body show desk.yaml");
    AddFileCommand(command, "new", "Makes the file of a factory-new body", NewBody);
    Command show = AddFileCommand(
        command, "show", "Shows what a body has saved",
        [&host](const std::string& path) { ShowBody(host, path); });
    AddJsonOption(show, host);
}

/// What a person may want to change by hand: properties of no more bytes than this.
static const std::uint32_t EDITABLE_SIZE = 128;

static const std::size_t VALUE_BYTES_SHOWN = 16;

static void NewBody(const std::string& path) {
    SimulatedBody::Reset();
    for (const auto& [id, size] : SimulatedBody::Properties()) {
        if (size <= EDITABLE_SIZE) {
            SimulatedBody::SetProperty(id, SimulatedBody::SavedValue(id));
        }
    }
    WriteNewBody(path, BodyText());
}

/// A text in quotes, or else the first bytes.
static std::string ValueText(const SimulatedBody::Bytes& bytes) {
    const std::string text = RecordText(bytes);
    if (text.size() > 2 && text.find('\\') == std::string::npos) {
        return '"' + text + '"';
    }
    const std::size_t shown = std::min(bytes.size(), VALUE_BYTES_SHOWN);
    return HexBytes(std::span(bytes).first(shown)) + (shown < bytes.size() ? " ..." : "");
}

static void ShowText() {
    const auto& calendar = SimulatedBody::Calendar();
    std::cout << std::setfill('0') << "calendar " << calendar[5] << '-' << std::setw(2)
              << calendar[4] << '-' << std::setw(2) << calendar[3] << ' ' << std::setw(2)
              << calendar[2] << ':' << std::setw(2) << calendar[1] << ':' << std::setw(2)
              << calendar[0] << std::setfill(' ') << "\neeprom";
    for (const std::uint16_t word : SimulatedBody::Eeprom()) {
        std::cout << ' ' << HexText(word, 4);
    }
    std::cout << '\n';
    for (const auto& [id, bytes] : SimulatedBody::SavedProperties()) {
        std::cout << "0x" << HexText(id, 8) << std::right << std::setw(7) << bytes.size() << "  "
                  << std::left << std::setw(32) << PropertyName(id) << ' ' << ValueText(bytes)
                  << '\n';
    }
}

static void ShowJson() {
    Json properties = Json::array();
    for (const auto& [id, bytes] : SimulatedBody::SavedProperties()) {
        properties.push_back({{"id", id}, {"name", PropertyName(id)}, {"bytes", HexBytes(bytes)}});
    }
    WriteJson(
        std::cout, {{"format", JSON_FORMAT},
                    {"calendar", SimulatedBody::Calendar()},
                    {"eeprom", SimulatedBody::Eeprom()},
                    {"properties", properties}});
}

static void ShowBody(const HOST& host, const std::string& path) {
    SimulatedBody::Reset();
    LoadBody(path);
    host.bJson ? ShowJson() : ShowText();
}

static Command AddFileCommand(
    Command& body, const std::string& name, const std::string& description,
    const std::function<void(const std::string&)>& work) {
    Command command = body.AddCommand(name, description);
    const auto pPath = std::make_shared<std::string>();
    command.AddArgument("file", *pPath, "The body's file");
    command.SetWork([pPath, work] { work(*pPath); });
    command.SetFooter("Example:\n  jighost body " + name + " desk.yaml");
    return command;
}
