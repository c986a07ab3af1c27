// The hash with its chains; its nodes live as long as the process.
#include "adjustment/PropertySearch.h"

#include <cstring>

#include "frame/EventProcTable.h"
#include "frame/Log.h"

static LogBuffer s_byLogBuffer;
static CLogStream s_LogStream(s_byLogBuffer);

static std::array<PROPERTY_HASH_NODE_T*, HASH_BUCKETS> PropertyHashTable = {};

void InsertPropertyNode(const PROPERTY_DATA_T& row) {
    PROPERTY_HASH_NODE_T*& pHead = PropertyHashTable[HashName(row.PropertyName)];
    pHead = new PROPERTY_HASH_NODE_T{row.PropertyName, row.PropertyId, row.PropertySize, pHead};
}

static const PROPERTY_HASH_NODE_T* FindPropertyNode(const char* pszName) {
    const PROPERTY_HASH_NODE_T* pNode = PropertyHashTable[HashName(pszName)];
    while (pNode != nullptr && std::strcmp(pNode->pName, pszName) != 0) {
        pNode = pNode->pNext;
    }
    return pNode;
}

const PROPERTY_HASH_NODE_T* LookUpPropertyData(const char* pszName) {
    const PROPERTY_HASH_NODE_T* pNode = FindPropertyNode(pszName);
    if (pNode == nullptr) {
        // Without the prefix, and meant to stay in the stream, which drops what no longer fits.
        s_LogStream << "[CMNT] Not Found - " << pszName << '\n';
    }
    return pNode;
}
