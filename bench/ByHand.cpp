// The kernel calls and copies of an operation, one by one.
#include "bench/ByHand.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <fstream>
#include <iterator>
#include <stdexcept>

#include "platform/Platform.h"

Flushes ReadFlushes(const std::vector<std::size_t>& linesOfFlushes) {
    const std::string log = ReadFile("JigDll.log");
    Flushes flushes;
    auto begin = log.begin();
    for (const std::size_t lines : linesOfFlushes) {
        auto end = begin;
        for (std::size_t i = 0; i < lines && end != log.end(); ++i) {
            end = std::find(end, log.end(), '\n');
            end += end == log.end() ? 0 : 1;
        }
        flushes.emplace_back(begin, end);
        begin = end;
    }
    if (begin != log.end() || flushes.back().empty()) {
        throw std::runtime_error("the log is not made of the flushes that were expected:\n" + log);
    }
    return flushes;
}

static void WriteByHand(const char* pszName, int openFlags, const std::string& bytes) {
    const int nFile = open(pszName, O_WRONLY | O_CREAT | openFlags, 0600);
    const bool bWritten = nFile >= 0 && write(nFile, bytes.data(), bytes.size()) ==
                                            static_cast<ssize_t>(bytes.size());
    if (!bWritten || close(nFile) != 0) {
        throw std::runtime_error(std::string("can't write ") + pszName);
    }
}

void FlushByHand(const std::string& text) {
    WriteByHand("JigDll.log", O_APPEND, text);
}

void WriteFileByHand(const std::string& name, const std::string& bytes) {
    WriteByHand(name.c_str(), O_TRUNC, bytes);
}

void StoreBodyIDByHand() {
    const std::uint64_t bytes = 0;
    HANDLE mapping = CreateFileMappingA(
        INVALID_HANDLE_VALUE, nullptr, PAGE_READWRITE, 0, sizeof bytes, "SHARED_NAME_BODYID");
    void* pView = MapViewOfFile(mapping, FILE_MAP_ALL_ACCESS, 0, 0, 0);
    HANDLE mutex = CreateMutexA(nullptr, FALSE, "MUTEX_NAME_BODYID");
    // Twice, as for every block that nobody else holds: its creator zeroes it, then it is filled.
    for (int i = 0; i < 2; ++i) {
        WaitForSingleObject(mutex, INFINITE);
        std::memcpy(pView, &bytes, sizeof bytes);
        ReleaseMutex(mutex);
    }
    UnmapViewOfFile(pView);
    CloseHandle(mapping);
    CloseHandle(mutex);
}

std::string ReadFile(const std::string& name) {
    std::ifstream file(name, std::ios::binary);
    if (!file) {
        throw std::runtime_error("can't read " + name);
    }
    return {std::istreambuf_iterator<char>(file), {}};
}
