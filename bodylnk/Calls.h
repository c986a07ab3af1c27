// The one place that every call of the link passes: it counts the call, shows it to the observer,
// records it, and answers it in the body's place or makes it fail if that was asked for.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>

#include "bodylnk/SimulatedBody.h"

namespace SimulatedBody {

/// A call on its way to the body. Refers to the caller's memory, and costs nothing unless somebody
/// listens.
struct REQUEST {
    const char* pszFunction;
    std::uint32_t id = 0;
    std::int64_t value = 0;
    std::string_view name = {};
    bool fromList = false;
    const void* pSent = nullptr;
    std::uint32_t sentSize = 0;
    // Where an answer that is not the body's own goes; null where the call has no such answer.
    void* pReceive = nullptr;
    std::uint32_t room = 0;  // bytes at pReceive
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

/// Failures waiting for their turn, each at one occasion.
class FailurePlan {
  public:
    /// n counts the occasions from now on, from 1.
    void FailNth(std::uint32_t n, const FAILURE& failure) { m_Failures[m_Occasions + n] = failure; }
    /// Counts one occasion and gives the failure planned for it.
    std::optional<FAILURE> Next();

  private:
    std::uint64_t m_Occasions = 0;
    std::map<std::uint64_t, FAILURE> m_Failures;
};

[[noreturn]] void Throw(const FAILURE& failure);

/// Passes a construction of a link object; throws the failure planned for it.
void PassConstruction();

std::optional<FAILURE> BeginCall(const REQUEST& request);
/// A failed call is ended while what it threw is being handled.
void EndCall(const ANSWER& answer, bool failed) noexcept;

/// The answer to the call that has begun if it is not left to the body.
std::optional<CALL> AnswerInPlaceOfBody();
/// Gives the caller an answer that is not the body's; refers to the caller's memory alone.
ANSWER HandOver(const REQUEST& request, const CALL& answered);

void ResetCalls();

/// Makes a call: `work` does it and gives the ANSWER.
template <class Work>
void MakeCall(const REQUEST& request, const Work& work) {
    const std::optional<FAILURE> failure = BeginCall(request);
    const auto failAt = [&](MOMENT moment) {
        if (failure && failure->moment == moment) {
            Throw(*failure);
        }
    };
    ANSWER answer;
    try {
        failAt(MOMENT::BEFORE);
        const std::optional<CALL> answered = AnswerInPlaceOfBody();
        answer = answered ? HandOver(request, *answered) : work();
        if (answered && answered->failure) {
            Throw(*answered->failure);
        }
        failAt(MOMENT::AFTER);
    } catch (...) {
        EndCall(answer, true);
        throw;
    }
    EndCall(answer, false);
}

}  // namespace SimulatedBody
