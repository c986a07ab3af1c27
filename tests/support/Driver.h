// All operations, each with a record that it succeeds with, for tests that run them blindly.
#pragma once

#include <string>
#include <vector>

#include "jighost/operations/OperationTable.h"
#include "jighost/session/FolderBlock.h"

/// In the order of registration.
std::vector<const OPERATION_INFO*> AllOperations();

/// A record that the operation accepts. What the operation is to fill, and what lies behind the
/// record, holds SPARE_BYTE; there is more behind it than an INI file may sensibly ask for.
RecordBytes ValidRecord(const OPERATION_INFO& operation);
constexpr std::uint8_t SPARE_BYTE = 0xA5;

/// Whether the bytes behind the record are as ValidRecord gave them.
bool IsSpareUntouched(const OPERATION_INFO& operation, const RecordBytes& record);

// An operation's closing line, up to its result and without the line prefix: the last line of the
// log of a run that gave 0 shows it.
std::string ClosingText(const std::string& cleanLog);
/// Whether the log's last line is such a line with this result. Decimal and hexadecimal count
/// alike: a work line that fails behind its switch to hexadecimal leaves that on.
bool EndsWithClosing(const std::string& log, const std::string& closing, std::int32_t result);
/// The same, and there is no other such line.
bool ClosesOnce(const std::string& log, const std::string& closing, std::int32_t result);

/// What operations need around them, in the current directory: the INI file, and the folder "dump"
/// with the block that names it.
class Surroundings {
  public:
    Surroundings();

    void SetFolderText(const std::string& text) const { m_Block.Write(text); }

  private:
    FolderBlock m_Block;
};

/// Whether anybody has SHARED_NAME_<name> or its mutex open.
bool IsBlockHeld(const std::string& name);
