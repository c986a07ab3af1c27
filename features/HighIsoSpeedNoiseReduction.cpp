// An image setting that is written and read.
#include "features/HighIsoSpeedNoiseReduction.h"

#include "features/ImageSetting.h"

static const IMAGE_SETTING PROP_HIGH_ISO_SPEED_NOISE_REDUCTION = {
    0x80000049, "pHighIsoSpeedNoiseReduction"};

static LogBuffer s_byLogBuffer;
static CLogStream s_LogStream(s_byLogBuffer);

std::int32_t SetHighIsoSpeedNoiseReduction(void* argument) noexcept {
    return SetImageSetting(
        {s_LogStream, s_byLogBuffer, "SetHighIsoSpeedNoiseReduction"},
        PROP_HIGH_ISO_SPEED_NOISE_REDUCTION, argument);
}

std::int32_t GetHighIsoSpeedNoiseReduction(void* argument) noexcept {
    return GetImageSetting(
        {s_LogStream, s_byLogBuffer, "GetHighIsoSpeedNoiseReduction"},
        PROP_HIGH_ISO_SPEED_NOISE_REDUCTION, argument);
}
