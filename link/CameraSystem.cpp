// The events that switch power saving off and on.
#include "link/CameraSystem.h"

CCameraSystem::CCameraSystem() : pState(std::make_unique<CAMERA_SYSTEM_STATE_T>()) {
    pState->byPowerSaveEnabled = 1;
}

CCameraSystem::~CCameraSystem() {
    SwallowExceptions([this] { EnablePowerSave(); });
}

void CCameraSystem::DisablePowerSave() {
    if (pState->byPowerSaveEnabled != 1) {
        return;
    }
    Execute("DisablePowerSave", 0, &pState->nResult);
    pState->byPowerSaveEnabled = 0;
}

void CCameraSystem::EnablePowerSave() {
    if (pState->byPowerSaveEnabled != 0) {
        return;
    }
    Execute("EnablePowerSave", 0, &pState->nResult);
    pState->byPowerSaveEnabled = 1;
}
