// Operations run one by one against one simulated body, or on one camera link. Every command that
// runs operations does so through here, so that all of them have the same options and see the same.
//
//     Session session(options);
//     const OPERATION_RUN run = session.Run(info, NewRecord(*info.record));
//     const bool bWritten = session.Finish();
#pragma once

#include <chrono>
#include <memory>
#include <string>
#include <vector>

#include "bodylnk/SimulatedBody.h"
#include "jighost/operations/OperationTable.h"
#include "jighost/session/AddedLog.h"
#include "jighost/session/ChosenLink.h"
#include "jighost/session/Fault.h"
#include "jighost/session/HeldFolder.h"
#include "jighost/session/KeptBody.h"
#include "jighost/session/Module.h"
#include "jighost/session/SessionOptions.h"
#include "jighost/text/HostError.h"

class Trace;

/// What one run of an operation came to.
struct OPERATION_RUN {
    const OPERATION_INFO* info = nullptr;
    RecordBytes record;  ///< as the operation left it, with the spare bytes of NewRecord
    std::int32_t result = 0;
    std::chrono::duration<double, std::milli> time{};
    std::uint32_t callCount = 0;           ///< link calls made
    std::string failedCall;                ///< the first one that failed; empty if none did
    std::vector<std::string> log;          ///< what it added to the module's log, without line ends
    std::vector<std::string> interleaved;  ///< lines of the log that may be another process's
    std::string folderProblem;  ///< of a dump into another folder than the session's; else empty
};

/// Why the operation failed: its error in the log, or, if that is lost, the call that failed. May
/// be empty.
std::string FailureCause(const OPERATION_RUN& run);

/// The same, but of a failure whose error is lost the result's name stands first: never empty then.
std::string RunError(const OPERATION_RUN& run);

/// For people, of a fault as it was written.
std::string NotMetText(const std::string& fault);

class Session {
  public:
    /// Switches the simulated body on, with the saved values of --body's file, or puts another
    /// camera link in its place, loads the module and takes what the session needs for itself: the
    /// body's file, the folder of dumps. From now on Ctrl-C only sets IsInterrupted, and a pipe
    /// that nobody reads ends nothing: what lasts is written. Tells people if the module's log
    /// is lost. Throws EXIT_WRONG_USE for a bad file, a file that can't be written or a bad fault,
    /// EXIT_NO_MODULE for a bad module or link, EXIT_HOST_ERROR if another process keeps body or
    /// folder.
    explicit Session(const SESSION_OPTIONS& options);
    ~Session();  ///< writes nothing back
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;

    /// Throws EXIT_NO_MODULE if the module does not register the operation.
    void Require(const OPERATION_INFO& info) const { m_Module.Find(info.name); }

    /// Has `watcher` called with each link call before it is made and again when it is complete.
    /// All watchers are called, in the order given, as long as the session lasts.
    void Watch(SimulatedBody::Observer watcher);

    /// Runs an operation on a record from NewRecord, or with an empty one on a null pointer; faults
    /// know which attempt it is, and meet none of number 0. Throws as Require does.
    OPERATION_RUN Run(const OPERATION_INFO& info, RecordBytes record, std::uint32_t attempt = 1);

    /// Writes the body's saved values back to its file, the whole file or nothing; a body that has
    /// saved nothing leaves the file as it is. Tells people of faults that no call has met. Gives
    /// false if body or trace could not be written, and has told why.
    bool Finish() const;

    // Of the operation that runs, for another thread.

    /// The lines that it has logged so far are added to these.
    void AddLog(OwnLines& lines) const { m_Log.AddTo(lines); }
    /// Faults, as written, that no call has met so far.
    std::vector<std::string> FaultsNotMet() const { return m_Faults.NotMet(); }

    /// The exit code of a command that came to `exitCode` by itself: EXIT_HOST_ERROR if not all was
    /// written, EXIT_UNEXPECTED in place of success if a fault met no call: it tested nothing.
    EXIT_CODE Conclude(EXIT_CODE exitCode, bool bWritten) const;

  private:
    void OnCall(const Link::CALL& call, bool complete);
    void TakeLog(OPERATION_RUN& run);

    KeptBody m_Body;
    Faults m_Faults;
    ChosenLink m_Link;
    AddedLog m_Log;
    Module m_Module;
    std::unique_ptr<HeldFolder> m_pFolder;  // null: no dumps
    std::unique_ptr<Trace> m_pTrace;        // null: no trace
    std::vector<SimulatedBody::Observer> m_Watchers;
    std::string m_FailedCall;  // of the operation that runs
};
