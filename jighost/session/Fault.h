// Faults that a person asks for: calls of the camera link that fail, or that answer another word
// than the body would. The body does nothing in such a call.
#pragma once

#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "bodylnk/SimulatedBody.h"

/// How a fault is written.
constexpr char FAULT_FORMS[] =
    "OPERATION:CALL=CODE, OPERATION:CALL:word=WORD, EVENT=CODE or EVENT:word=WORD; behind CALL "
    "or EVENT @ATTEMPT for one attempt alone";

class Faults {
  public:
    /// Takes the faults as they are written; throws EXIT_WRONG_USE for one that can't be.
    explicit Faults(const std::vector<std::string>& texts);

    bool IsEmpty() const { return m_Faults.empty(); }

    /// From now on the calls are those of this operation, in the n-th attempt of its step. Those of
    /// attempt 0 are not for faults to meet.
    void BeginOperation(std::string_view name, std::uint32_t attempt);
    /// The answer to the next call; nothing leaves it to the body. The first fault that fits
    /// strikes.
    std::optional<Link::CALL> Answer(const Link::CALL& call);

    /// The faults, as written, that no call has met so far; another thread may ask meanwhile.
    std::vector<std::string> NotMet() const;

  private:
    struct FAULT {
        std::string text;
        std::string name;           // of the operation, or of the event
        std::uint32_t number = 0;   // of the operation's call, from 1; 0 for an event
        std::uint32_t attempt = 0;  // of the operation's step, from 1; 0 for any
        bool bWord = false;         // answers the word; else fails with the code
        std::int32_t value = 0;     // code or word
        bool bMet = false;
    };

    static FAULT Parse(const std::string& text);
    bool IsMetBy(const FAULT& fault, const Link::CALL& call) const;

    mutable std::mutex m_Mutex;  // of what calls have met
    std::vector<FAULT> m_Faults;
    std::string m_Operation;
    std::uint32_t m_Attempt = 0;
    std::uint32_t m_Calls = 0;  // of this operation
};
