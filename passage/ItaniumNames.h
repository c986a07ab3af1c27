// The decorated names of the camera link's functions in the scheme of GCC and Clang, on ELF systems
// and, for GCC, on Windows. They are the same for 32 and 64 bits: the contract has no type that
// depends on the word size. Each build compares them with what the compiler makes of
// link/BodyLink.h (cmake/CheckLinkNames.cmake).
#pragma once

namespace Link {

struct ItaniumNames {
    // C1 and D1 are the constructor and the destructor of a whole object.
    static constexpr char EVENT_PROCEDURE[] = "_ZN15CEventProcedureC1Ev";
    static constexpr char EVENT_PROCEDURE_END[] = "_ZN15CEventProcedureD1Ev";
    static constexpr char EXECUTE_WITH_PARAMETER[] =
        "_ZN15CEventProcedure7ExecuteERKNSt7__cxx1112basic_stringIcSt11char_traitsIcESaIcEEERKiPi";
    static constexpr char CLEAR_PARAMETERS[] = "_ZN15CEventProcedure15ClearParametersEv";
    static constexpr char PUSH_INTEGER[] = "_ZN15CEventProcedure22PushParameterAsIntegerERKiS1_";
    static constexpr char PUSH_SAFE_ARRAY[] =
        "_ZN15CEventProcedure24PushParameterAsSafeArrayEPKvRKj";
    static constexpr char EXECUTE[] =
        "_ZN15CEventProcedure7ExecuteERKNSt7__cxx1112basic_stringIcSt11char_traitsIcESaIcEEEPi";
    static constexpr char EXECUTE_AND_GET_SIZE[] =
        "_ZN15CEventProcedure17ExecuteAndGetSizeERKNSt7__cxx1112basic_stringIcSt11char_"
        "traitsIcESaIcEEE"
        "PjPi";
    static constexpr char GET_RETURN_DATA[] = "_ZN15CEventProcedure13GetReturnDataEPvPjPi";
    static constexpr char EXECUTE_AND_GET_DATA[] =
        "_ZN15CEventProcedure17ExecuteAndGetDataERKNSt7__cxx1112basic_stringIcSt11char_"
        "traitsIcESaIcEEE"
        "PvPjPi";

    static constexpr char PUBLIC_PROPERTY[] = "_ZN15CPublicPropertyC1Ev";
    static constexpr char PUBLIC_PROPERTY_END[] = "_ZN15CPublicPropertyD1Ev";
    static constexpr char GET[] = "_ZN9CProperty3GetERKjS1_Pv";
    static constexpr char SET[] = "_ZN9CProperty3SetERKjS1_PKv";
    static constexpr char SAVE[] = "_ZN9CProperty4SaveERKj";
    static constexpr char INITIALIZE_LIST[] = "_ZN9CProperty14InitializeListERKj";
    static constexpr char PUSH_LIST[] = "_ZN9CProperty8PushListERKj";
    static constexpr char SAVE_LIST[] = "_ZN9CProperty8SaveListEv";

    static constexpr char MONITOR[] = "_ZN11CSLRMonitorC1Ev";
    static constexpr char MONITOR_END[] = "_ZN11CSLRMonitorD1Ev";
    static constexpr char OPEN_SESSION[] = "_ZN11CSLRMonitor11OpenSessionEv";
    static constexpr char CHANGE_BANK[] =
        "_ZN11CSLRMonitor10ChangeBankERKN11SLR_MONITOR14tagBANK_KIND_TE";
    static constexpr char WRITE_MEMORY[] = "_ZN11CSLRMonitor11WriteMemoryERKjS1_PKh";
    static constexpr char READ_MEMORY[] = "_ZN11CSLRMonitor10ReadMemoryERKjS1_Ph";
    static constexpr char CALL_FUNCTION[] = "_ZN11CSLRMonitor12CallFunctionERKj";
    static constexpr char CLOSE_SESSION[] = "_ZN11CSLRMonitor12CloseSessionEv";

    static constexpr char FILE_PATH[] = "_ZN9CFilePathC1Ev";
    static constexpr char FILE_PATH_END[] = "_ZN9CFilePathD1Ev";
    static constexpr char GET_PROPERTY_FULL_PATH[] =
        "_ZN9CFilePath19GetPropertyFullPathERKNSt7__cxx1112basic_stringIcSt11char_traitsIcESaIcEEE";

    static constexpr char LINE_PREFIX[] = "_Z3_gtB5cxx11RKj";
};

}  // namespace Link
