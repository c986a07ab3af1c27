// Valid records, and the closing lines of a log.
#include "tests/support/Driver.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <sstream>

std::vector<const OPERATION_INFO*> AllOperations() {
    std::vector<const OPERATION_INFO*> all;
    for (const OPERATION_GROUP& group : OperationGroups()) {
        for (const OPERATION_INFO& operation : group.operations) {
            all.push_back(&operation);
        }
    }
    return all;
}

RecordBytes ValidRecord(const OPERATION_INFO& operation) {
    struct VALUE {
        std::string_view record;
        const char* pszField;
        const char* pszValue;
    };
    // All other records may be zero.
    static const VALUE VALUES[] = {
        {"ABOARD_EEPROM_DATA_T", "Address", "10"},
        {"ABOARD_EEPROM_DATA_T", "Count", "3"},
        {"PROPERTY_DATA_T", "PropertyName", "PROP_BODY_ID"},
    };
    RecordBytes bytes = NewRecord(*operation.record);
    const auto spare = bytes.begin() + operation.record->size;
    std::fill(operation.use == RECORD_USE::OUT ? bytes.begin() : spare, bytes.end(), SPARE_BYTE);
    for (const VALUE& value : VALUES) {
        if (value.record == operation.record->name) {
            SetField(operation.name, *operation.record, bytes, value.pszField, value.pszValue);
        }
    }
    return bytes;
}

bool IsSpareUntouched(const OPERATION_INFO& operation, const RecordBytes& record) {
    return std::all_of(
        record.begin() + operation.record->size, record.end(),
        [](std::uint8_t byte) { return byte == SPARE_BYTE; });
}

std::string ClosingText(const std::string& cleanLog) {
    const std::size_t start = cleanLog.rfind('[');
    return cleanLog.substr(start, cleanLog.rfind(' ') + 1 - start);
}

bool EndsWithClosing(const std::string& log, const std::string& closing, std::int32_t result) {
    std::ostringstream hexadecimal;
    hexadecimal << closing << std::hex << result << '\n';
    return log.ends_with(closing + std::to_string(result) + "\n") ||
           log.ends_with(hexadecimal.str());
}

bool ClosesOnce(const std::string& log, const std::string& closing, std::int32_t result) {
    return EndsWithClosing(log, closing, result) && log.find(closing) == log.rfind(closing);
}

Surroundings::Surroundings() {
    std::ofstream("BoardInf.ini") << "[DLResonantFrequency]\nAddress=100\nSize=20\n";
    std::filesystem::create_directory("dump");
    m_Block.Write(FolderBlockText("dump"));
}

static bool IsObjectHeld(HANDLE handle, DWORD lastError) {
    CloseHandle(handle);
    return lastError == ERROR_ALREADY_EXISTS;
}

bool IsBlockHeld(const std::string& name) {
    const HANDLE hBlock = CreateFileMappingA(
        INVALID_HANDLE_VALUE, nullptr, PAGE_READWRITE, 0, 1, ("SHARED_NAME_" + name).c_str());
    const bool bBlockHeld = IsObjectHeld(hBlock, GetLastError());
    const HANDLE hMutex = CreateMutexA(nullptr, FALSE, ("MUTEX_NAME_" + name).c_str());
    return IsObjectHeld(hMutex, GetLastError()) || bBlockHeld;
}
