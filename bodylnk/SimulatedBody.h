// The simulated body behind the camera link, for those who set it up and look into it: tests, the
// host, fuzz targets. The module knows nothing of this header.
//
// One body for each process. Ids are property ids, addresses are byte addresses of a monitor bank.
// Nothing here is locked: it is used from the thread that runs the operations.
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "link/Call.h"
#include "platform/Export.h"

namespace SimulatedBody {

using Link::Bytes;
using Link::CALL;
using Link::FAILURE;
using Link::FAULT;
using Link::MOMENT;

/// A factory-new body, with no scripts, faults, recording or observer, and with the installation
/// folder and the line prefix as at first.
BODYLNK_API void Reset();

// --- Properties ---
// A property that nobody has set has plausible contents that depend on its id alone.

/// Sets both the working and the saved value. The bytes fix the property's size.
BODYLNK_API void SetProperty(std::uint32_t id, const Bytes& bytes);
/// The working value; throws std::out_of_range for an id that the body does not have.
BODYLNK_API Bytes WorkingValue(std::uint32_t id);
/// The saved value; throws as WorkingValue does.
BODYLNK_API Bytes SavedValue(std::uint32_t id);
/// The saved values of the properties that have one of their own, not their factory value, by id.
BODYLNK_API std::map<std::uint32_t, Bytes> SavedProperties();
/// All properties that this body has, by id, with their sizes in bytes.
BODYLNK_API std::map<std::uint32_t, std::uint32_t> Properties();
/// Drops all working values in favour of the saved ones, as switching the body off and on does.
BODYLNK_API void PowerCycle();

// --- EEPROM, monitor memory, camera log ---

constexpr std::size_t EEPROM_WORDS = 128;
BODYLNK_API std::array<std::uint16_t, EEPROM_WORDS>& Eeprom();
/// `size` bytes of a bank from `address` on; bytes never written are zero.
BODYLNK_API Bytes Memory(std::uint32_t bank, std::uint32_t address, std::uint32_t size);
BODYLNK_API void SetMemory(std::uint32_t bank, std::uint32_t address, const Bytes& bytes);
/// What the lens exchange answers in byte 7 of its block; 1 at first.
BODYLNK_API void SetLensAnswer(std::uint8_t byte);
BODYLNK_API void SetCameraLog(const Bytes& bytes);
/// Seconds, minutes, hours, day, month, year and three further words, as "FA_GetCalendar" gives.
BODYLNK_API std::array<std::int32_t, 9>& Calendar();
BODYLNK_API bool PowerSaveEnabled();

/// What the events and monitor functions change, beside the above.
struct CONDITION {
    bool powerSaving = true;
    bool bootDisk = true;
    bool romAccess = true;
    bool releaseIgnoresExposure = false;
    bool displayOn = true;
    bool colourBars = false;
    bool specialMenu = false;
    bool slitRolling = false;         ///< release mode
    std::int32_t accumulateTime = 0;  ///< of slit rolling, an HD count
    std::int32_t dialClickGap = 0;    ///< also the result of the dial adjustment
    std::int32_t dispDialResult = 1;
    std::int32_t accTestResult = 0;  ///< accessory tests passed since the results were cleared
    std::int32_t soundVolume = 8;
    std::uint32_t strobeTests = 0;
    std::uint32_t setButtons = 0;  ///< times the set button was sent
    std::uint32_t sweeps = 0;
    std::uint32_t tuneSaves = 0;  ///< tune files written, of any kind
    std::uint32_t mpuResets = 0;
    bool operator==(const CONDITION&) const = default;
};
BODYLNK_API const CONDITION& Condition();

/// Where GetPropertyFullPath looks; the current directory unless set.
BODYLNK_API void SetInstallationFolder(const std::string& folder);

// --- Events ---

/// Makes every run of an event answer with these words in turn, the last one for ever after. The
/// event still does its work, refusals included, if the body knows it; with a script it need not.
/// No words take the script away.
BODYLNK_API void ScriptEvent(const std::string& name, const std::vector<std::int32_t>& words);
/// Overrules the size that ExecuteAndGetSize reports, and the size that GetReturnData leaves. The
/// bytes that GetReturnData copies stay within both the caller's size and the data that there is.
BODYLNK_API void ScriptReturnSize(std::uint32_t reported, std::optional<std::uint32_t> left = {});
/// The names of all events that the body knows.
BODYLNK_API std::vector<std::string> Events();

// --- Calls: recording and faults ---
// A call is one of a member function of the camera link, in the order made. Constructors,
// destructors and `_gt` are no calls here.

/// Recording is off at first, so that a long run keeps no bytes.
BODYLNK_API void RecordCalls(bool recording);
BODYLNK_API const std::vector<CALL>& Calls();
BODYLNK_API void ClearCalls();
/// Calls made since Reset or ClearCalls, recorded or not.
BODYLNK_API std::uint32_t CallCount();

/// Makes the n-th call from now on fail once, counted from 1.
BODYLNK_API void FailCall(std::uint32_t n, const FAILURE& failure = {});
/// Makes every run of this event fail.
BODYLNK_API void FailEvent(const std::string& name, const FAILURE& failure = {});
/// Makes the n-th construction of a link object from now on fail once, counted from 1; the moment
/// is not looked at.
BODYLNK_API void FailConstruction(std::uint32_t n, const FAILURE& failure = {});
/// Makes the n-th call of `_gt` from now on fail once, counted from 1; the moment is not looked at.
BODYLNK_API void FailLinePrefix(std::uint32_t n, const FAILURE& failure = {});

/// Called with each call before it is made and again when it is complete; for tracing. An empty
/// observer switches it off; what an observer throws on completion is dropped.
using Observer = std::function<void(const CALL& call, bool complete)>;
BODYLNK_API void Observe(Observer observer);

/// Called with each call ahead of the body. What it gives is the answer, and the body does nothing:
/// `received`, of which no more is taken than the caller has room for, `sizeLeft`, `result` and
/// `failure`; nothing leaves the call to the body. What it throws the call throws. An empty one
/// switches it off.
using Answerer = std::function<std::optional<CALL>(const CALL& call)>;
BODYLNK_API void AnswerCalls(Answerer answerer);

/// Called with each constructor of a link object and with `_gt`, by the name of the function, ahead
/// of the body. What it gives is thrown; nothing leaves it to the body. An empty one switches it
/// off.
using Thrower = std::function<std::optional<FAILURE>(std::string_view function)>;
BODYLNK_API void ThrowBy(Thrower thrower);

/// Called with each text that `_gt` gives, whoever stands behind the link; an empty one switches it
/// off. What it throws is dropped.
using PrefixObserver = std::function<void(const std::string& prefix)>;
BODYLNK_API void ObserveLinePrefixes(PrefixObserver observer);

/// A fixed text in place of the local date and time that `_gt` gives; empty for the time again.
BODYLNK_API void SetLinePrefix(const std::string& prefix);

}  // namespace SimulatedBody
