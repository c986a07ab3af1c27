// The exchange with the lens through a monitor session.
#include "inspection/Lens.h"

#include <algorithm>
#include <array>

#include "frame/OperationFrame.h"
#include "link/BodyLink.h"

// The lens exchange: a block is put into the camera's monitor memory, a function of the camera
// works on it, and the answer is read back from its place. A second round ends the exchange.
using LensBlock = std::array<std::uint8_t, 8>;

static const std::uint32_t LENS_BLOCK_ADDRESS = 0;
static const std::uint32_t LENS_FUNCTION = 15;
static const LensBlock FIRST_WRITE = {0x07, 0x12, 0x80, 0x12, 0x20, 0x90, 0x00, 0x00};
// The head of the second write; the bytes behind it are those of the answer.
static const std::array<std::uint8_t, 3> SECOND_WRITE_HEAD = {0x02, 0x12, 0x80};
static const std::size_t STATUS_OFFSET = 7;
static const std::uint8_t STATUS_MASK = 1;
static const std::int32_t LENS_ACTIVE = 1;

static LogBuffer s_byLogBuffer;
static CLogStream s_LogStream(s_byLogBuffer);

static void SendBlock(CSLRMonitor& monitor, const LensBlock& byBlock) {
    monitor.WriteMemory(LENS_BLOCK_ADDRESS, sizeof(byBlock), byBlock.data());
    monitor.CallFunction(LENS_FUNCTION);
}

// Gives the lens status. The exchange is finished whatever the status is.
static std::int32_t ExchangeWithLens(CSLRMonitor& monitor) {
    LensBlock byBlock = FIRST_WRITE;
    SendBlock(monitor, byBlock);
    monitor.ReadMemory(LENS_BLOCK_ADDRESS, sizeof(byBlock), byBlock.data());
    const std::int32_t lStatus = byBlock[STATUS_OFFSET] & STATUS_MASK;
    BeginLine(s_LogStream) << "[VALU] lStatus - " << lStatus << '\n';
    FlushLog(s_LogStream, s_byLogBuffer);
    std::copy(SECOND_WRITE_HEAD.begin(), SECOND_WRITE_HEAD.end(), byBlock.begin());
    SendBlock(monitor, byBlock);
    return lStatus;
}

std::int32_t CheckLensActivity(void* /*argument*/) noexcept {
    return RunOperation<CSLRMonitor>(
        {s_LogStream, s_byLogBuffer, "CheckLensActivity"}, [&](auto& monitor) {
            monitor.OpenSession();
            monitor.ChangeBank(SLR_MONITOR::BANK_FC);
            const std::int32_t lStatus = ExchangeWithLens(monitor);
            monitor.CloseSession();
            if (lStatus != LENS_ACTIVE) {
                Fail("[VALU] lStatus", RESULT_INVALID_CAMERA_VALUE);
            }
        });
}
