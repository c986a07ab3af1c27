// The three shapes of an image setting: write, read, switch.
#include "features/ImageSetting.h"

#include "link/BodyLink.h"

static void ReplaceWord(CPublicProperty& property, std::uint32_t id, const std::uint32_t& unValue) {
    std::uint32_t unSetting = 0;
    property.Get(id, sizeof(unSetting), &unSetting);
    unSetting = unValue;
    property.Set(id, sizeof(unSetting), &unSetting);
}

std::int32_t SetImageSetting(
    const OPERATION& operation, const IMAGE_SETTING& setting, const void* argument) noexcept {
    return RunOperation<CPublicProperty>(operation, [&](auto& property) {
        CheckPointer(argument, setting.pszArgument);
        ReplaceWord(property, setting.id, *static_cast<const std::uint32_t*>(argument));
    });
}

std::int32_t GetImageSetting(
    const OPERATION& operation, const IMAGE_SETTING& setting, void* argument) noexcept {
    return RunOperation<CPublicProperty>(operation, [&](auto& property) {
        CheckPointer(argument, setting.pszArgument);
        std::uint32_t unSetting = 0;
        property.Get(setting.id, sizeof(unSetting), &unSetting);
        *static_cast<std::uint32_t*>(argument) = unSetting;
    });
}

std::int32_t SwitchImageSetting(
    const OPERATION& operation, std::uint32_t id, std::uint32_t unValue) noexcept {
    return RunOperation<CPublicProperty>(
        operation, [&](auto& property) { ReplaceWord(property, id, unValue); });
}
