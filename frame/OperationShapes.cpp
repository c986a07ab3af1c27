// The work of each shape inside the frame.
#include "frame/OperationShapes.h"

#include "link/BodyLink.h"

std::int32_t WriteProperty(
    const OPERATION& operation, const PROPERTY& property, const void* argument) noexcept {
    return RunOperation<CPublicProperty>(operation, [&](auto& camera) {
        CheckPointer(argument, property.pszArgument);
        camera.Set(property.id, property.size, argument);
    });
}

std::int32_t ReadProperty(
    const OPERATION& operation, const PROPERTY& property, void* argument) noexcept {
    return RunOperation<CPublicProperty>(operation, [&](auto& camera) {
        CheckPointer(argument, property.pszArgument);
        camera.Get(property.id, property.size, argument);
    });
}

std::int32_t WriteFixedValue(
    const OPERATION& operation, std::uint32_t id, std::uint32_t size, const void* pValue) noexcept {
    return RunOperation<CPublicProperty>(
        operation, [&](auto& camera) { camera.Set(id, size, pValue); });
}

std::int32_t SaveProperty(const OPERATION& operation, std::uint32_t id) noexcept {
    return RunOperation(operation, [&] { CProperty::Save(id); });
}

std::int32_t RunEvent(
    const OPERATION& operation, const char* pszEvent, std::int32_t parameter) noexcept {
    return RunOperation<CEventProcedure>(operation, [&](auto& procedure) {
        std::int32_t nResult = 0;
        procedure.Execute(pszEvent, parameter, &nResult);
    });
}

std::int32_t RunTestedEvent(
    const OPERATION& operation, const char* pszEvent, std::int32_t parameter,
    const char* pszMessage) noexcept {
    return RunOperation<CEventProcedure>(operation, [&](auto& procedure) {
        std::int32_t nResult = 0;
        procedure.Execute(pszEvent, parameter, &nResult);
        if (IsFailure(nResult)) {
            Fail(pszMessage, nResult);
        }
    });
}
