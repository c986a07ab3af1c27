// The search for a name, and the dump: row by row one read and one file.
#include "adjustment/PropertyData.h"

#include <algorithm>
#include <cstring>
#include <memory>

#include "adjustment/PropertySearch.h"
#include "frame/OperationFrame.h"
#include "link/BodyLink.h"
#include "link/SharedMemory.h"
#include "platform/Platform.h"

static const std::size_t PATH_SIZE = CFolderSharedMemory::PATH_SIZE;
static const std::size_t ID_DIGITS = 8;  // in a file name
static const std::size_t ID_TEXT_SIZE = ID_DIGITS + 1;

static LogBuffer s_byLogBuffer;
static CLogStream s_LogStream(s_byLogBuffer);

void RegisterPropertyData() {
    const OPERATION routine{s_LogStream, s_byLogBuffer, "RegisterPropertyData"};
    OpenFramelessRoutine(routine);
    const PROPERTY_DATA_T* pRow = PropertyDataTable.data();
    do {
        InsertPropertyNode(*pRow++);
    } while (pRow->PropertyId != PROP_END_ID);
    CloseFramelessRoutine(routine);
}

static std::int32_t GetPropertyDataCount(std::uint32_t* pnCount) noexcept {
    return RunOperation({s_LogStream, s_byLogBuffer, "GetPropertyDataCount"}, [&] {
        std::uint32_t nCount = 1;
        while (PropertyDataTable[nCount].PropertyId != PROP_END_ID) {
            ++nCount;
        }
        BeginLine(s_LogStream) << "[VALU] nCount - " << nCount << '\n';
        *pnCount = nCount;
    });
}

// The caller answers for a buffer of all rows, the sentinel's included.
static std::int32_t GetPropertyDataList(PROPERTY_DATA_T* pPropertyData) {
    const OPERATION routine{s_LogStream, s_byLogBuffer, "GetPropertyDataList"};
    OpenFramelessRoutine(routine);
    std::copy(PropertyDataTable.begin(), PropertyDataTable.end(), pPropertyData);
    CloseFramelessRoutine(routine);
    return RESULT_SUCCESS;
}

std::int32_t SearchPropertyData(void* argument) noexcept {
    return RunOperation({s_LogStream, s_byLogBuffer, "SearchPropertyData"}, [&] {
        auto* pPropertyData = static_cast<PROPERTY_DATA_T*>(argument);
        CheckPointer(pPropertyData, "pPropertyData");
        // Ended here, because the host's name may fill its whole field.
        char szName[sizeof(pPropertyData->PropertyName) + 1] = {};
        std::memcpy(szName, pPropertyData->PropertyName, sizeof(pPropertyData->PropertyName));
        const PROPERTY_HASH_NODE_T* pNode = LookUpPropertyData(szName);
        if (pNode == nullptr) {
            Fail("[CMNT] Not Found", RESULT_NOT_FOUND);
        }
        pPropertyData->PropertyId = pNode->PropertyId;
        pPropertyData->PropertySize = pNode->PropertySize;
    });
}

namespace {

/// A dump file; closed exactly once, also when its row fails.
class CDumpFile {
  public:
    explicit CDumpFile(const char* pszFullPath) {
        if (_sopen_s(
                &m_nFile, pszFullPath, _O_WRONLY | _O_CREAT | _O_TRUNC | _O_BINARY, _SH_DENYNO,
                _S_IWRITE) != 0) {
            Fail("[STDF] _sopen_s", RESULT_RUNTIME_ERROR);
        }
    }
    CDumpFile(const CDumpFile&) = delete;
    CDumpFile& operator=(const CDumpFile&) = delete;
    ~CDumpFile() {
        if (m_nFile != -1) {
            _close(m_nFile);
        }
    }

    void Write(const std::uint8_t* pbyData, std::uint32_t nSize) {
        if (_write(m_nFile, pbyData, nSize) != static_cast<int>(nSize)) {
            Fail("[STDF] _write", RESULT_SYSTEM_ERROR);
        }
    }

    void Close() {
        const int nFile = m_nFile;
        m_nFile = -1;
        if (_close(nFile) != 0) {
            Fail("[STDF] _close", RESULT_SYSTEM_ERROR);
        }
    }

  private:
    int m_nFile = -1;
};

void RoundUpToFourBytes(std::uint32_t* pnSize) {
    CheckPointer(pnSize, "pnSize");
    if (*pnSize % 4 != 0) {
        *pnSize = (*pnSize / 4 + 1) * 4;
    }
}

void LoadFolder(const CFolderSharedMemory& block, char* pszFullPath) {
    CheckSharedMemory(block);
    char szText[PATH_SIZE];
    block.Load(szText);
    // Another process wrote it: its end is looked for before a string routine gets to see it.
    if (std::memchr(szText, '\0', PATH_SIZE) == nullptr ||
        strcpy_s(pszFullPath, PATH_SIZE, szText) != 0) {
        Fail("[STDF] strcpy_s", RESULT_RUNTIME_ERROR);
    }
}

void AppendText(char* pszFileName, const char* pszText) {
    if (strcat_s(pszFileName, PATH_SIZE, pszText) != 0) {
        Fail("[STDF] strcat_s", RESULT_RUNTIME_ERROR);
    }
}

// Puts the file name of a property, eight digits of its id and ".bin", into `pszFileName`.
void BuildFileName(std::uint32_t id, char* pszFileName) {
    char szId[ID_TEXT_SIZE] = {};
    if (_itoa_s(static_cast<int>(id), szId, sizeof(szId), 16) != 0) {
        Fail("[STDF] _itoa_s", RESULT_RUNTIME_ERROR);
    }
    if (strcpy_s(pszFileName, PATH_SIZE, "") != 0) {
        Fail("[STDF] strcpy_s", RESULT_RUNTIME_ERROR);
    }
    for (std::size_t digits = std::strlen(szId); digits < ID_DIGITS; ++digits) {
        AppendText(pszFileName, "0");
    }
    AppendText(pszFileName, szId);
    AppendText(pszFileName, ".bin");
}

// Replaces what stands behind the last backslash of `pszFullPath` by the property's file name,
// which is built in `_pszFileName`.
void SetFileName(char* pszFullPath, char* _pszFileName, std::uint32_t id) {
    char* pszLastBackslash = std::strrchr(pszFullPath, '\\');
    if (pszLastBackslash == nullptr) {
        Fail("[VALU] pszFileName", RESULT_SYSTEM_ERROR);
    }
    char* pszFileName = pszLastBackslash + 1;
    BuildFileName(id, _pszFileName);
    const auto room = PATH_SIZE - static_cast<std::size_t>(pszFileName - pszFullPath);
    // Tested first, because a run-time library may end the process where a copy does not fit.
    if (std::strlen(_pszFileName) >= room || strcpy_s(pszFileName, room, _pszFileName) != 0) {
        Fail("[STDF] strcpy_s", RESULT_RUNTIME_ERROR);
    }
    // Without the prefix, unlike the other value lines.
    s_LogStream << "[VALU] pszFileName - " << pszFileName << '\n';
}

void WriteDashes() {
    BeginLine(s_LogStream) << "[CMNT] ----------------------------------------"
                              "----------------------------------------\n";
}

void DumpProperty(
    CPublicProperty& property, const PROPERTY_DATA_T& row, char* pszFullPath, char* _pszFileName) {
    WriteDashes();
    BeginLine(s_LogStream) << "[VALU] PropertyName - " << row.PropertyName << '\n';
    std::uint32_t nSize = row.PropertySize;
    RoundUpToFourBytes(&nSize);
    // A failure here is the allocator's own exception: this buffer has no message.
    const std::unique_ptr<std::uint8_t[]> pbyData(new std::uint8_t[nSize]());
    property.Get(row.PropertyId, nSize, pbyData.get());
    SetFileName(pszFullPath, _pszFileName, row.PropertyId);
    CDumpFile file(pszFullPath);
    file.Write(pbyData.get(), nSize);
    file.Close();
    FlushLog(s_LogStream, s_byLogBuffer);
}

}  // namespace

std::int32_t LoadPropertyData(void* /*argument*/) noexcept {
    return RunOperation<CPublicProperty, CFolderSharedMemory>(
        {s_LogStream, s_byLogBuffer, "LoadPropertyData"}, [](auto& property, auto& block) {
            const auto pszFullPath = AllocateBuffer<char>(PATH_SIZE, "pszFullPath");
            LoadFolder(block, pszFullPath.get());
            BeginLine(s_LogStream) << "[VALU] pszFullPath - " << pszFullPath.get() << '\n';
            FlushLog(s_LogStream, s_byLogBuffer);

            std::uint32_t nCount = 0;
            CheckNested(GetPropertyDataCount(&nCount), "GetPropertyDataCount");
            // Room for all rows that the list holds, whatever the count came to.
            const auto pPropertyData =
                AllocateBuffer<PROPERTY_DATA_T>(PropertyDataTable.size(), "pPropertyData");
            CheckNested(GetPropertyDataList(pPropertyData.get()), "GetPropertyDataList");

            const auto _pszFileName = AllocateBuffer<char>(PATH_SIZE, "_pszFileName");
            for (std::uint32_t row = 0; row < nCount; ++row) {
                DumpProperty(property, pPropertyData[row], pszFullPath.get(), _pszFileName.get());
            }
            WriteDashes();
        });
}
