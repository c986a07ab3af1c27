// The string hash, and the copy of the module's own table.
#include "frame/EventProcTable.h"

#include "frame/OperationFrame.h"

static LogBuffer s_byLogBuffer;
static CLogStream s_LogStream(s_byLogBuffer);

// The module's own table. It has no writer: the host learns the operations by its callback.
static std::array<EVENT_PROC_T*, HASH_BUCKETS> EventProcHash = {};

std::uint32_t HashName(const char* pszName) {
    std::uint32_t h = 0;
    for (; *pszName != '\0'; ++pszName) {
        h = (h << 4) + static_cast<std::uint32_t>(static_cast<signed char>(*pszName));
        const std::uint32_t g = h & 0xF0000000;
        if (g != 0) {
            h = h ^ g ^ (g >> 24);
        }
    }
    return static_cast<std::uint32_t>(h % HASH_BUCKETS);
}

static void CopyNodeToHost(const EVENT_PROC_T& node, EVENT_PROC_T** ppTable) {
    BeginLine(s_LogStream) << node.name << '\n';
    FlushLog(s_LogStream, s_byLogBuffer);
    EVENT_PROC_T*& pHead = ppTable[HashName(node.name)];
    pHead = new EVENT_PROC_T{node.name, node.words, pHead};
}

void GetHash(EVENT_PROC_T** ppTable) {
    const OPERATION routine{s_LogStream, s_byLogBuffer, "GetHash"};
    OpenFramelessRoutine(routine);
    for (const EVENT_PROC_T* pNode : EventProcHash) {
        for (; pNode != nullptr; pNode = pNode->next) {
            CopyNodeToHost(*pNode, ppTable);
        }
    }
    CloseFramelessRoutine(routine);
}
