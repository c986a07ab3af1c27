// An image setting that is written and read.
#include "features/LongExposureNoiseReduction.h"

#include "features/ImageSetting.h"

static const IMAGE_SETTING PROP_LONG_EXPOSURE_NOISE_REDUCTION = {
    0x80000048, "pLongExposureNoiseReduction"};

static LogBuffer s_byLogBuffer;
static CLogStream s_LogStream(s_byLogBuffer);

std::int32_t SetLongExposureNoiseReduction(void* argument) noexcept {
    return SetImageSetting(
        {s_LogStream, s_byLogBuffer, "SetLongExposureNoiseReduction"},
        PROP_LONG_EXPOSURE_NOISE_REDUCTION, argument);
}

std::int32_t GetLongExposureNoiseReduction(void* argument) noexcept {
    return GetImageSetting(
        {s_LogStream, s_byLogBuffer, "GetLongExposureNoiseReduction"},
        PROP_LONG_EXPOSURE_NOISE_REDUCTION, argument);
}
