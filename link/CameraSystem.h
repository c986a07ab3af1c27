// The guard over the camera's power saving: off while an operation works, on again afterwards.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>

#include "link/BodyLink.h"

/// State of one guard.
struct CAMERA_SYSTEM_STATE_T {
    std::uint8_t byPowerSaveEnabled;  ///< 1 while power saving is on as far as the guard knows
    std::int32_t nResult;             ///< the camera's word for the last event; nothing reads it
};
static_assert(sizeof(CAMERA_SYSTEM_STATE_T) == 8);
static_assert(offsetof(CAMERA_SYSTEM_STATE_T, byPowerSaveEnabled) == 0);
static_assert(offsetof(CAMERA_SYSTEM_STATE_T, nResult) == 4);

/// A local object of one operation. Guards know nothing of each other.
class CCameraSystem : public CEventProcedure {
  public:
    /// Takes power saving to be on, and sends nothing.
    CCameraSystem();
    /// Turns power saving on if it is off; what the link throws there is dropped.
    ~CCameraSystem() override;

    /// Each sends its event only if the state calls for it. If the link throws, the state stays.
    void DisablePowerSave();
    void EnablePowerSave();

  private:
    std::unique_ptr<CAMERA_SYSTEM_STATE_T> pState;
};
