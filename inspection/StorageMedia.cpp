// One property for each card slot.
#include "inspection/StorageMedia.h"

#include "frame/OperationFrame.h"
#include "link/BodyLink.h"

// Signed 32-bit integers.
static const std::uint32_t PROP_CARD_SLOT1 = 0x8000001d;
static const std::uint32_t PROP_CARD_SLOT2 = 0x8000001e;

static LogBuffer s_byLogBuffer;
static CLogStream s_LogStream(s_byLogBuffer);

std::int32_t CheckStorageMediaExistence(void* argument) noexcept {
    return RunOperation<CPublicProperty>(
        {s_LogStream, s_byLogBuffer, "CheckStorageMediaExistence"}, [&](auto& property) {
            auto* pStorageMediaExistence = static_cast<STORAGE_MEDIA_EXISTENCE_T*>(argument);
            CheckPointer(pStorageMediaExistence, "pStorageMediaExistence");
            *pStorageMediaExistence = {};
            std::int32_t nExistence = 0;
            // The two lines go without the prefix of other lines, and leave with the closing line.
            property.Get(PROP_CARD_SLOT1, sizeof(nExistence), &nExistence);
            s_LogStream << "[VALU] CARD Slot1 : " << nExistence << '\n';
            pStorageMediaExistence->Slot1 = nExistence;
            property.Get(PROP_CARD_SLOT2, sizeof(nExistence), &nExistence);
            s_LogStream << "[VALU] CARD Slot2 : " << nExistence << '\n';
            pStorageMediaExistence->Slot2 = nExistence;
        });
}
