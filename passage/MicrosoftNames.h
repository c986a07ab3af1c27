// The decorated names of the camera link's functions in the scheme of the Microsoft C++ ABI, for 32
// and for 64 bits. Each build with clang-cl compares those of its word size with what it makes of
// link/BodyLink.h (cmake/CheckLinkNames.cmake).
#pragma once

namespace Link {

/// That of the two which fits the word size.
constexpr const char* ForWord(const char* psz32, const char* psz64) {
    return sizeof(void*) == 4 ? psz32 : psz64;
}

struct MicrosoftNames {
    // ??0 and ??1 are the constructor and the destructor.
    static constexpr const char* EVENT_PROCEDURE =
        ForWord("??0CEventProcedure@@QAE@XZ", "??0CEventProcedure@@QEAA@XZ");
    static constexpr const char* EVENT_PROCEDURE_END =
        ForWord("??1CEventProcedure@@UAE@XZ", "??1CEventProcedure@@UEAA@XZ");
    static constexpr const char* EXECUTE_WITH_PARAMETER = ForWord(
        "?Execute@CEventProcedure@@QAEXABV?$basic_string@DU?$char_traits@D@std@@V?$allocator@D@2@@"
        "std@@ABHPAH@Z",
        "?Execute@CEventProcedure@@QEAAXAEBV?$basic_string@DU?$char_traits@D@std@@V?$allocator@D@2@"
        "@std@@AEBHPEAH@Z");
    static constexpr const char* CLEAR_PARAMETERS = ForWord(
        "?ClearParameters@CEventProcedure@@QAEXXZ", "?ClearParameters@CEventProcedure@@QEAAXXZ");
    static constexpr const char* PUSH_INTEGER = ForWord(
        "?PushParameterAsInteger@CEventProcedure@@QAEXABH0@Z",
        "?PushParameterAsInteger@CEventProcedure@@QEAAXAEBH0@Z");
    static constexpr const char* PUSH_SAFE_ARRAY = ForWord(
        "?PushParameterAsSafeArray@CEventProcedure@@QAEXPBXABI@Z",
        "?PushParameterAsSafeArray@CEventProcedure@@QEAAXPEBXAEBI@Z");
    static constexpr const char* EXECUTE = ForWord(
        "?Execute@CEventProcedure@@QAEXABV?$basic_string@DU?$char_traits@D@std@@V?$allocator@D@2@@"
        "std@@PAH@Z",
        "?Execute@CEventProcedure@@QEAAXAEBV?$basic_string@DU?$char_traits@D@std@@V?$allocator@D@2@"
        "@std@@PEAH@Z");
    static constexpr const char* EXECUTE_AND_GET_SIZE = ForWord(
        "?ExecuteAndGetSize@CEventProcedure@@QAEXABV?$basic_string@DU?$char_traits@D@std@@V?$"
        "allocator@D@2@@std@@PAIPAH@Z",
        "?ExecuteAndGetSize@CEventProcedure@@QEAAXAEBV?$basic_string@DU?$char_traits@D@std@@V?$"
        "allocator@D@2@@std@@PEAIPEAH@Z");
    static constexpr const char* GET_RETURN_DATA = ForWord(
        "?GetReturnData@CEventProcedure@@QAEXPAXPAIPAH@Z",
        "?GetReturnData@CEventProcedure@@QEAAXPEAXPEAIPEAH@Z");
    static constexpr const char* EXECUTE_AND_GET_DATA = ForWord(
        "?ExecuteAndGetData@CEventProcedure@@QAEXABV?$basic_string@DU?$char_traits@D@std@@V?$"
        "allocator@D@2@@std@@PAXPAIPAH@Z",
        "?ExecuteAndGetData@CEventProcedure@@QEAAXAEBV?$basic_string@DU?$char_traits@D@std@@V?$"
        "allocator@D@2@@std@@PEAXPEAIPEAH@Z");

    static constexpr const char* PUBLIC_PROPERTY =
        ForWord("??0CPublicProperty@@QAE@XZ", "??0CPublicProperty@@QEAA@XZ");
    static constexpr const char* PUBLIC_PROPERTY_END =
        ForWord("??1CPublicProperty@@UAE@XZ", "??1CPublicProperty@@UEAA@XZ");
    static constexpr const char* GET =
        ForWord("?Get@CProperty@@QAEXABI0PAX@Z", "?Get@CProperty@@QEAAXAEBI0PEAX@Z");
    static constexpr const char* SET =
        ForWord("?Set@CProperty@@QAEXABI0PBX@Z", "?Set@CProperty@@QEAAXAEBI0PEBX@Z");
    static constexpr const char* SAVE =
        ForWord("?Save@CProperty@@SAXABI@Z", "?Save@CProperty@@SAXAEBI@Z");
    static constexpr const char* INITIALIZE_LIST =
        ForWord("?InitializeList@CProperty@@QAEXABI@Z", "?InitializeList@CProperty@@QEAAXAEBI@Z");
    static constexpr const char* PUSH_LIST =
        ForWord("?PushList@CProperty@@QAEXABI@Z", "?PushList@CProperty@@QEAAXAEBI@Z");
    static constexpr const char* SAVE_LIST =
        ForWord("?SaveList@CProperty@@QAEXXZ", "?SaveList@CProperty@@QEAAXXZ");

    static constexpr const char* MONITOR =
        ForWord("??0CSLRMonitor@@QAE@XZ", "??0CSLRMonitor@@QEAA@XZ");
    static constexpr const char* MONITOR_END =
        ForWord("??1CSLRMonitor@@UAE@XZ", "??1CSLRMonitor@@UEAA@XZ");
    static constexpr const char* OPEN_SESSION =
        ForWord("?OpenSession@CSLRMonitor@@QAEXXZ", "?OpenSession@CSLRMonitor@@QEAAXXZ");
    static constexpr const char* CHANGE_BANK = ForWord(
        "?ChangeBank@CSLRMonitor@@QAEXABW4tagBANK_KIND_T@SLR_MONITOR@@@Z",
        "?ChangeBank@CSLRMonitor@@QEAAXAEBW4tagBANK_KIND_T@SLR_MONITOR@@@Z");
    static constexpr const char* WRITE_MEMORY = ForWord(
        "?WriteMemory@CSLRMonitor@@QAEXABI0PBE@Z", "?WriteMemory@CSLRMonitor@@QEAAXAEBI0PEBE@Z");
    static constexpr const char* READ_MEMORY = ForWord(
        "?ReadMemory@CSLRMonitor@@QAEXABI0PAE@Z", "?ReadMemory@CSLRMonitor@@QEAAXAEBI0PEAE@Z");
    static constexpr const char* CALL_FUNCTION =
        ForWord("?CallFunction@CSLRMonitor@@QAEXABI@Z", "?CallFunction@CSLRMonitor@@QEAAXAEBI@Z");
    static constexpr const char* CLOSE_SESSION =
        ForWord("?CloseSession@CSLRMonitor@@QAEXXZ", "?CloseSession@CSLRMonitor@@QEAAXXZ");

    static constexpr const char* FILE_PATH =
        ForWord("??0CFilePath@@QAE@XZ", "??0CFilePath@@QEAA@XZ");
    static constexpr const char* FILE_PATH_END =
        ForWord("??1CFilePath@@QAE@XZ", "??1CFilePath@@QEAA@XZ");
    static constexpr const char* GET_PROPERTY_FULL_PATH = ForWord(
        "?GetPropertyFullPath@CFilePath@@QAE?AV?$basic_string@DU?$char_traits@D@std@@V?$allocator@"
        "D@2@@std@@ABV23@@Z",
        "?GetPropertyFullPath@CFilePath@@QEAA?AV?$basic_string@DU?$char_traits@D@std@@V?$allocator@"
        "D@2@@std@@AEBV23@@Z");

    static constexpr const char* LINE_PREFIX = ForWord(
        "?_gt@@YA?AV?$basic_string@DU?$char_traits@D@std@@V?$allocator@D@2@@std@@ABI@Z",
        "?_gt@@YA?AV?$basic_string@DU?$char_traits@D@std@@V?$allocator@D@2@@std@@AEBI@Z");
};

}  // namespace Link
