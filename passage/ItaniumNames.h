// The decorated names of the camera link's functions in the scheme of GCC and Clang, on ELF systems
// and, for GCC, on Windows. They are the same for 32 and 64 bits: the contract has no type that
// depends on the word size. Each build compares them with what the compiler makes of
// link/BodyLink.h (cmake/CheckLinkNames.cmake).
#pragma once

namespace Link::Decorated {

// C1 and D1 are the constructor and the destructor of a whole object.
constexpr char EVENT_PROCEDURE[] = "_ZN15CEventProcedureC1Ev";
constexpr char EVENT_PROCEDURE_END[] = "_ZN15CEventProcedureD1Ev";
constexpr char EXECUTE_WITH_PARAMETER[] =
    "_ZN15CEventProcedure7ExecuteERKNSt7__cxx1112basic_stringIcSt11char_traitsIcESaIcEEERKiPi";
constexpr char CLEAR_PARAMETERS[] = "_ZN15CEventProcedure15ClearParametersEv";
constexpr char PUSH_INTEGER[] = "_ZN15CEventProcedure22PushParameterAsIntegerERKiS1_";
constexpr char PUSH_SAFE_ARRAY[] = "_ZN15CEventProcedure24PushParameterAsSafeArrayEPKvRKj";
constexpr char EXECUTE[] =
    "_ZN15CEventProcedure7ExecuteERKNSt7__cxx1112basic_stringIcSt11char_traitsIcESaIcEEEPi";
constexpr char EXECUTE_AND_GET_SIZE[] =
    "_ZN15CEventProcedure17ExecuteAndGetSizeERKNSt7__cxx1112basic_stringIcSt11char_traitsIcESaIcEEE"
    "PjPi";
constexpr char GET_RETURN_DATA[] = "_ZN15CEventProcedure13GetReturnDataEPvPjPi";
constexpr char EXECUTE_AND_GET_DATA[] =
    "_ZN15CEventProcedure17ExecuteAndGetDataERKNSt7__cxx1112basic_stringIcSt11char_traitsIcESaIcEEE"
    "PvPjPi";

constexpr char PUBLIC_PROPERTY[] = "_ZN15CPublicPropertyC1Ev";
constexpr char PUBLIC_PROPERTY_END[] = "_ZN15CPublicPropertyD1Ev";
constexpr char GET[] = "_ZN9CProperty3GetERKjS1_Pv";
constexpr char SET[] = "_ZN9CProperty3SetERKjS1_PKv";
constexpr char SAVE[] = "_ZN9CProperty4SaveERKj";
constexpr char INITIALIZE_LIST[] = "_ZN9CProperty14InitializeListERKj";
constexpr char PUSH_LIST[] = "_ZN9CProperty8PushListERKj";
constexpr char SAVE_LIST[] = "_ZN9CProperty8SaveListEv";

constexpr char MONITOR[] = "_ZN11CSLRMonitorC1Ev";
constexpr char MONITOR_END[] = "_ZN11CSLRMonitorD1Ev";
constexpr char OPEN_SESSION[] = "_ZN11CSLRMonitor11OpenSessionEv";
constexpr char CHANGE_BANK[] = "_ZN11CSLRMonitor10ChangeBankERKN11SLR_MONITOR14tagBANK_KIND_TE";
constexpr char WRITE_MEMORY[] = "_ZN11CSLRMonitor11WriteMemoryERKjS1_PKh";
constexpr char READ_MEMORY[] = "_ZN11CSLRMonitor10ReadMemoryERKjS1_Ph";
constexpr char CALL_FUNCTION[] = "_ZN11CSLRMonitor12CallFunctionERKj";
constexpr char CLOSE_SESSION[] = "_ZN11CSLRMonitor12CloseSessionEv";

constexpr char FILE_PATH[] = "_ZN9CFilePathC1Ev";
constexpr char FILE_PATH_END[] = "_ZN9CFilePathD1Ev";
constexpr char GET_PROPERTY_FULL_PATH[] =
    "_ZN9CFilePath19GetPropertyFullPathERKNSt7__cxx1112basic_stringIcSt11char_traitsIcESaIcEEE";

constexpr char LINE_PREFIX[] = "_Z3_gtB5cxx11RKj";

}  // namespace Link::Decorated
