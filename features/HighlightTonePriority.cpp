// An image setting with two fixed values.
#include "features/HighlightTonePriority.h"

#include "features/ImageSetting.h"

static const std::uint32_t PROP_HIGHLIGHT_TONE_PRIORITY = 0x8000004a;
static const std::uint32_t TONE_PRIORITY_DISABLED = 0;
static const std::uint32_t TONE_PRIORITY_ENABLED = 1;

static LogBuffer s_byLogBuffer;
static CLogStream s_LogStream(s_byLogBuffer);

std::int32_t DisableHighlightTonePriority(void* /*argument*/) noexcept {
    return SwitchImageSetting(
        {s_LogStream, s_byLogBuffer, "DisableHighlightTonePriority"}, PROP_HIGHLIGHT_TONE_PRIORITY,
        TONE_PRIORITY_DISABLED);
}

std::int32_t EnableHighlightTonePriority(void* /*argument*/) noexcept {
    return SwitchImageSetting(
        {s_LogStream, s_byLogBuffer, "EnableHighlightTonePriority"}, PROP_HIGHLIGHT_TONE_PRIORITY,
        TONE_PRIORITY_ENABLED);
}
