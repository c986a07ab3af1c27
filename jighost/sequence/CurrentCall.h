// The link call that an operation stands in, as another thread may ask for it.
#pragma once

#include <mutex>
#include <optional>
#include <string>

#include "bodylnk/SimulatedBody.h"

class CurrentCall {
  public:
    /// Told by the session of each call before it is made and when it is complete.
    void OnCall(const Link::CALL& call, bool bComplete);

    /// Such as "Set 0x1000007 8: 36 57 31 45 00 00 00 00"; empty between two calls.
    std::string Text() const;

  private:
    mutable std::mutex m_Mutex;
    std::optional<Link::CALL> m_Call;
};
