// Two signed 16-bit deltas of one property, widened for the host.
#include "adjustment/DigitalParaAdjData.h"

#include "frame/OperationFrame.h"
#include "link/BodyLink.h"

static const std::uint32_t PROP_DIGITAL_PARA_ADJ_DATA = 0x1F000010;  // two signed 16-bit integers

static LogBuffer s_byLogBuffer;
static CLogStream s_LogStream(s_byLogBuffer);

static void LogUnsigned(const char* pszLabel, std::int32_t nValue) {
    BeginLine(s_LogStream) << pszLabel << static_cast<std::uint32_t>(nValue) << '\n';
}

std::int32_t GetDigitalParaAdjData(void* argument) noexcept {
    return RunOperation<CPublicProperty>(
        {s_LogStream, s_byLogBuffer, "GetDigitalParaAdjData"}, [&](auto& property) {
            auto* pDigitalParaData = static_cast<DIGITAL_PARA_DATA_T*>(argument);
            CheckPointer(pDigitalParaData, "pDigitalParaData");
            std::int16_t sDelta[2] = {};
            property.Get(PROP_DIGITAL_PARA_ADJ_DATA, sizeof(sDelta), sDelta);
            const DIGITAL_PARA_DATA_T data{sDelta[0], sDelta[1]};
            LogUnsigned("[VALU] DeltaX - ", data.DeltaX);
            LogUnsigned("[VALU] DeltaY - ", data.DeltaY);
            FlushLog(s_LogStream, s_byLogBuffer);
            *pDigitalParaData = data;
        });
}
