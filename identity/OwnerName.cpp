// The owner name's block written, read, cleared and saved.
#include "identity/OwnerName.h"

#include <algorithm>
#include <string_view>

#include "frame/OperationFrame.h"
#include "frame/OperationShapes.h"
#include "link/BodyLink.h"

static const PROPERTY PROP_OWNER_NAME = {0x2000004, OWNER_NAME_SIZE, "pOwnerName"};

static LogBuffer s_byLogBuffer;
static CLogStream s_LogStream(s_byLogBuffer);

// The name ends at its first zero byte, or with its block if there is none.
static std::string_view OwnerNameText(const char* pOwnerName) {
    const char* pEnd = std::find(pOwnerName, pOwnerName + OWNER_NAME_SIZE, '\0');
    return {pOwnerName, static_cast<std::size_t>(pEnd - pOwnerName)};
}

std::int32_t SetOwnerName(void* argument) noexcept {
    return WriteProperty({s_LogStream, s_byLogBuffer, "SetOwnerName"}, PROP_OWNER_NAME, argument);
}

std::int32_t GetOwnerName(void* argument) noexcept {
    return RunOperation<CPublicProperty>(
        {s_LogStream, s_byLogBuffer, "GetOwnerName"}, [&](auto& property) {
            auto* pOwnerName = static_cast<char*>(argument);
            CheckPointer(pOwnerName, PROP_OWNER_NAME.pszArgument);
            property.Get(PROP_OWNER_NAME.id, PROP_OWNER_NAME.size, pOwnerName);
            BeginLine(s_LogStream) << "[FUNC] pOwnerName - " << OwnerNameText(pOwnerName) << '\n';
        });
}

std::int32_t ClearOwnerName(void* /*argument*/) noexcept {
    return RunOperation({s_LogStream, s_byLogBuffer, "ClearOwnerName"}, [] {
        char szOwnerName[OWNER_NAME_SIZE] = {};
        CheckNested(SetOwnerName(szOwnerName), "SetOwnerName");
    });
}

std::int32_t SaveOwnerName(void* /*argument*/) noexcept {
    return SaveProperty({s_LogStream, s_byLogBuffer, "SaveOwnerName"}, PROP_OWNER_NAME.id);
}

void RegisterOwnerName(EVENT_PROC_REGISTER_FUNC callback) {
    static const REGISTRATION registrations[] = {
        {"SetOwnerName", SetOwnerName},
        {"GetOwnerName", GetOwnerName},
        {"ClearOwnerName", ClearOwnerName},
        {"SaveOwnerName", SaveOwnerName},
    };
    RegisterEventProcs(callback, registrations);
}
