// Integers of the camera in thousandths, handed to the host as fractions.
#include "adjustment/SensorGeometry.h"

#include "frame/OperationFrame.h"
#include "link/BodyLink.h"

// Signed 32-bit integers, although the catalogue gives both two bytes.
static const std::uint32_t PROP_SENSOR_PIXEL_PITCH = 0x1000003;
static const std::uint32_t PROP_SENSOR_OPTICAL_PATH_LENGTH = 0x1000004;

static LogBuffer s_byLogBuffer;
static CLogStream s_LogStream(s_byLogBuffer);

static std::int32_t GetThousandths(CPublicProperty& property, std::uint32_t id) {
    std::int32_t nThousandths = 0;
    property.Get(id, sizeof(nThousandths), &nThousandths);
    return nThousandths;
}

std::int32_t GetSensorPixelPitch(void* argument) noexcept {
    return RunOperation<CPublicProperty>(
        {s_LogStream, s_byLogBuffer, "GetSensorPixelPitch"}, [&](auto& property) {
            auto* pdblPixelPitch = static_cast<double*>(argument);
            CheckPointer(pdblPixelPitch, "&pdblPixelPitch");
            *pdblPixelPitch = GetThousandths(property, PROP_SENSOR_PIXEL_PITCH) / 1000.0;
        });
}

std::int32_t GetSensorOpticalLength(void* argument) noexcept {
    return RunOperation<CPublicProperty>(
        {s_LogStream, s_byLogBuffer, "GetSensorOpticalLength"}, [&](auto& property) {
            auto* pdblOpticalLength = static_cast<double*>(argument);
            CheckPointer(pdblOpticalLength, "&pdblOpticalLength");
            // In whole numbers, unlike the pitch.
            const std::int32_t nWhole =
                GetThousandths(property, PROP_SENSOR_OPTICAL_PATH_LENGTH) / 1000;
            *pdblOpticalLength = nWhole;
        });
}
