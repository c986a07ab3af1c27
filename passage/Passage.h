// The one place that every call of the camera link passes, on its way from the classes of
// link/BodyLink.h to who stands behind them. The sources of this folder are compiled into each
// library that has those classes; the library defines the functions of the first part below.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "link/Call.h"

namespace Link {

class Behind;

/// A call on its way. Refers to the caller's memory, and costs nothing unless somebody listens.
struct REQUEST {
    const char* pszFunction;
    std::uint32_t id = 0;
    std::int64_t value = 0;
    std::string_view name = {};
    bool fromList = false;
    const void* pSent = nullptr;
    std::uint32_t sentSize = 0;
    // Where the answer goes; null where the call has no such answer.
    void* pReceive = nullptr;
    std::uint32_t room = 0;  ///< bytes at pReceive
    std::string* pText = nullptr;
    std::uint32_t* pSizeLeft = nullptr;
    std::int32_t* pResult = nullptr;
};

/// What came back; refers to the caller's memory too.
struct ANSWER {
    const void* pReceived = nullptr;
    std::uint32_t size = 0;
    std::optional<std::uint32_t> sizeLeft = {};
    std::optional<std::int32_t> result = {};
};

// --- Defined by the library that has the classes ---

/// Who stands behind the objects that are constructed from now on.
Behind& WhoStandsBehind();

/// Makes a call of a member function: `work` has who stands behind do it.
void PassCall(const REQUEST& request, const std::function<void()>& work);
/// Constructs a link object by `work`; the function is such as "CSLRMonitor::CSLRMonitor".
void PassConstruction(const char* pszFunction, const std::function<void()>& work);
/// Gives a line prefix by `work`; also called when static objects are gone already.
std::string PassLinePrefix(const std::function<std::string()>& work);

// --- For those who define them ---

/// What stands in the caller's memory when a call has returned. No more is taken than the caller
/// has room for, whatever size was left.
ANSWER AnswerTo(const REQUEST& request);

/// What is being handled, as data. What is no exception of a known kind is one of the standard
/// library's, of unknown text.
FAILURE CaughtFailure();

/// The request as data that lasts.
CALL CallOf(const REQUEST& request);
/// Adds what came back. Of a failed call also what it threw, which is being handled meanwhile.
void Complete(CALL& call, const ANSWER& answer, bool failed);

}  // namespace Link
