// Both texts cleared or saved, one behind the other.
#include "identity/CopyRight.h"

#include "frame/OperationFrame.h"
#include "frame/OperationShapes.h"
#include "link/BodyLink.h"

static const std::uint32_t INFO_SIZE = 64;  // bytes of each text
static const PROPERTY PROP_ARTIST_INFO = {0xE070000, INFO_SIZE, "pArtistInfo"};
static const PROPERTY PROP_COPYRIGHT_INFO = {0xE070001, INFO_SIZE, "pCopyRightInfo"};

static LogBuffer s_byLogBuffer;
static CLogStream s_LogStream(s_byLogBuffer);

static std::int32_t _SetArtistInfo(const void* pArtistInfo) noexcept {
    return WriteProperty(
        {s_LogStream, s_byLogBuffer, "_SetArtistInfo"}, PROP_ARTIST_INFO, pArtistInfo);
}

// Without its "t", in the log too.
static std::int32_t _SetCopyRighInfo(const void* pCopyRightInfo) noexcept {
    return WriteProperty(
        {s_LogStream, s_byLogBuffer, "_SetCopyRighInfo"}, PROP_COPYRIGHT_INFO, pCopyRightInfo);
}

std::int32_t ClearCopyRightInfo(void* /*argument*/) noexcept {
    return RunOperation({s_LogStream, s_byLogBuffer, "ClearCopyRightInfo"}, [] {
        const char szArtistInfo[INFO_SIZE] = {};
        CheckNested(_SetArtistInfo(szArtistInfo), "_SetArtistInfo");
        const char szCopyRightInfo[INFO_SIZE] = {};
        CheckNested(_SetCopyRighInfo(szCopyRightInfo), "_SetCopyRighInfo");
    });
}

std::int32_t SaveCopyRightInfo(void* /*argument*/) noexcept {
    return RunOperation<CPublicProperty>(
        {s_LogStream, s_byLogBuffer, "SaveCopyRightInfo"}, [](auto& property) {
            property.InitializeList(2);
            property.PushList(PROP_ARTIST_INFO.id);
            property.PushList(PROP_COPYRIGHT_INFO.id);
            property.SaveList();
        });
}
