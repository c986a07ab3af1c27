// The functions of a camera link that was loaded by its path.
#pragma once

#include <string>
#include <vector>

#include "link/BodyLink.h"
#include "passage/OtherObject.h"
#include "platform/Platform.h"

namespace Link {

using PlainMethod = void (OtherObject::*)();

/// How objects of a class come and go.
struct LIFE {
    PlainMethod construct;
    PlainMethod destroy;
};

struct OTHER_FUNCTIONS {
    LIFE eventProcedure;
    MethodOf<void (CEventProcedure::*)(const std::string&, const std::int32_t&, std::int32_t*)>
        executeWithParameter;
    MethodOf<decltype(&CEventProcedure::ClearParameters)> clearParameters;
    MethodOf<decltype(&CEventProcedure::PushParameterAsInteger)> pushInteger;
    MethodOf<decltype(&CEventProcedure::PushParameterAsSafeArray)> pushSafeArray;
    MethodOf<void (CEventProcedure::*)(const std::string&, std::int32_t*)> execute;
    MethodOf<decltype(&CEventProcedure::ExecuteAndGetSize)> executeAndGetSize;
    MethodOf<decltype(&CEventProcedure::GetReturnData)> getReturnData;
    MethodOf<decltype(&CEventProcedure::ExecuteAndGetData)> executeAndGetData;

    LIFE publicProperty;
    MethodOf<decltype(&CProperty::Get)> get;
    MethodOf<decltype(&CProperty::Set)> set;
    decltype(&CProperty::Save) save;
    MethodOf<decltype(&CProperty::InitializeList)> initializeList;
    MethodOf<decltype(&CProperty::PushList)> pushList;
    MethodOf<decltype(&CProperty::SaveList)> saveList;

    LIFE monitor;
    MethodOf<decltype(&CSLRMonitor::OpenSession)> openSession;
    MethodOf<decltype(&CSLRMonitor::ChangeBank)> changeBank;
    MethodOf<decltype(&CSLRMonitor::WriteMemory)> writeMemory;
    MethodOf<decltype(&CSLRMonitor::ReadMemory)> readMemory;
    MethodOf<decltype(&CSLRMonitor::CallFunction)> callFunction;
    MethodOf<decltype(&CSLRMonitor::CloseSession)> closeSession;

    LIFE filePath;
    MethodOf<decltype(&CFilePath::GetPropertyFullPath)> getPropertyFullPath;

    decltype(&_gt) linePrefix;
};

/// Fills in what the library has and gives the decorated names of what it lacks.
std::vector<std::string> FindFunctions(HMODULE library, OTHER_FUNCTIONS& functions);

}  // namespace Link
