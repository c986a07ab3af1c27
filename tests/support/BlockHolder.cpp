// Holds a shared block and its mutex as another program would. It takes one command a line from its
// standard input and answers each with one line:
//
//     open NAME SIZE   the block SHARED_NAME_<NAME> with its mutex: "created" or "existing"
//     read             the block's bytes, such as "b5 0d"
//     write BYTES      the same form, from the block's first byte on: "done"
//     lock, unlock     the mutex: "locked", also if its last owner died, "unlocked"
//     close            lets go of both: "closed"
//     churn NAME SIZE  "churning"; then, until it is killed: opens, locks, fills the block with one
//                      letter, the next one each time, unlocks, closes
//     quit             ends; so does the end of the input
//
// What goes wrong is answered with "failed" and the system's error number.
#include <algorithm>
#include <functional>
#include <iomanip>
#include <iostream>
#include <map>
#include <sstream>
#include <string>

#include "platform/Platform.h"

namespace {

struct HELD {
    HANDLE hBlock = nullptr;
    HANDLE hMutex = nullptr;
    unsigned char* pView = nullptr;
    std::size_t size = 0;
};

std::string Failed() {
    return "failed " + std::to_string(GetLastError());
}

std::string Open(HELD& held, const std::string& name, std::size_t size) {
    held.size = size;
    held.hBlock = CreateFileMappingA(
        INVALID_HANDLE_VALUE, nullptr, PAGE_READWRITE, 0, static_cast<DWORD>(held.size),
        ("SHARED_NAME_" + name).c_str());
    const bool bExisting = GetLastError() == ERROR_ALREADY_EXISTS;
    if (held.hBlock == nullptr) {
        return Failed();
    }
    held.pView =
        static_cast<unsigned char*>(MapViewOfFile(held.hBlock, FILE_MAP_ALL_ACCESS, 0, 0, 0));
    held.hMutex = CreateMutexA(nullptr, FALSE, ("MUTEX_NAME_" + name).c_str());
    if (held.pView == nullptr || held.hMutex == nullptr) {
        return Failed();
    }
    return bExisting ? "existing" : "created";
}

std::string Read(const HELD& held) {
    std::ostringstream text;
    text << std::hex << std::setfill('0');
    for (std::size_t i = 0; i < held.size; ++i) {
        text << (i == 0 ? "" : " ") << std::setw(2) << unsigned{held.pView[i]};
    }
    return text.str();
}

std::string Write(const HELD& held, std::istream& arguments) {
    unsigned byte = 0;
    for (std::size_t i = 0; i < held.size && arguments >> std::hex >> byte; ++i) {
        held.pView[i] = static_cast<unsigned char>(byte);
    }
    return "done";
}

std::string Lock(const HELD& held) {
    return WaitForSingleObject(held.hMutex, INFINITE) != WAIT_FAILED ? "locked" : Failed();
}

std::string Unlock(const HELD& held) {
    return ReleaseMutex(held.hMutex) != FALSE ? "unlocked" : Failed();
}

std::string Close(HELD& held) {
    UnmapViewOfFile(held.pView);
    CloseHandle(held.hBlock);
    CloseHandle(held.hMutex);
    held = {};
    return "closed";
}

[[noreturn]] std::string Churn(const std::string& name, std::size_t size) {
    std::cout << "churning" << std::endl;
    for (unsigned round = 0;; ++round) {
        HELD held;
        Open(held, name, size);
        Lock(held);
        std::fill_n(held.pView, size, static_cast<unsigned char>('a' + round % 26));
        Unlock(held);
        Close(held);
    }
}

std::string Answer(HELD& held, const std::string& command, std::istream& arguments) {
    using COMMAND = std::function<std::string()>;
    const std::map<std::string, COMMAND> ofAnOpenBlock = {
        {"read", [&] { return Read(held); }},   {"write", [&] { return Write(held, arguments); }},
        {"lock", [&] { return Lock(held); }},   {"unlock", [&] { return Unlock(held); }},
        {"close", [&] { return Close(held); }},
    };
    if (command == "open" || command == "churn") {
        std::string name;
        std::size_t size = 0;
        arguments >> name >> size;
        return command == "open" ? Open(held, name, size) : Churn(name, size);
    }
    return held.pView == nullptr ? "nothing is open" : ofAnOpenBlock.at(command)();
}

}  // namespace

int main() {
    HELD held;
    std::string line;
    while (std::getline(std::cin, line) && line != "quit") {
        std::istringstream arguments(line);
        std::string command;
        arguments >> command;
        std::cout << Answer(held, command, arguments) << std::endl;
    }
}
