// The one exception type of the module and of the camera link, and what carries a failure.
#pragma once

#include <cstdint>
#include <string>
#include <utility>

/// Always created on the heap and thrown as a pointer; whoever catches it deletes it.
class CException {
  public:
    CException(std::string text, std::int32_t result) : message(std::move(text)), code(result) {}

    std::string message;  ///< what failed; begins with a log tag such as "[VALU] "
    std::int32_t code;    ///< the result code that the operation is to return
};

/// Runs `work` and drops whatever it throws: for places that have nobody to report to.
template <class Work>
void SwallowExceptions(const Work& work) noexcept {
    try {
        work();
    } catch (CException* e) {
        delete e;
    } catch (...) {  // NOLINT(bugprone-empty-catch): dropping it is the purpose
    }
}
