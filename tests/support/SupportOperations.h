// What must hold of each operation: its registration, its steps up to the closing line, the host's
// record behind it, and how it fails of itself, as tests/operations/facts.txt tells it.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "tests/support/Support.h"

/// Bytes are written as Hex does, many of a kind as "00*504".
struct OPERATION_FACTS {
    std::string name = {};      ///< registered
    std::string secondOf = {};  ///< the name that has the same procedure; empty if there is none
    Steps steps = {};           ///< between opening and closing lines, on the body of SetUpBody
    std::uint32_t objects = 0;  ///< of the link, constructed during the run
    std::string given = {};     ///< the record's first bytes ...
    std::string left = {};      ///< ... and what it then begins with; empty if it stays as it was
    bool bFilledAtTheEnd = false;  ///< none of it is there before all calls have returned
    std::string pointer = {};      ///< in the message of a null one; empty if it is not tested
    std::string wordError = {};  ///< line of an odd word of the last event; empty if not looked at
    std::optional<std::int32_t> word = {};  ///< with which all of its events answer
    std::string logName = name;
    std::string closing = "> [FUNC] " + logName;
    std::string errorLine = "> [ERR!] - ";  ///< the start of it
    std::int32_t result = 0;
    std::int32_t size = 0;  ///< registered, as is the direction
    std::int32_t direction = 3;
    std::vector<std::pair<std::uint32_t, std::string>> properties = {};  ///< of the camera, by id
};

/// What follows in a line of such a table: a word or a text in quotation marks; a number.
std::string TextIn(std::istream& line);
std::int64_t NumberIn(std::istream& line);
/// Takes the value of a key from the line. Throws if there is no such key.
void TakeFact(OPERATION_FACTS& facts, const std::string& key, std::istream& line);

/// All operations, in the order of registration. Throws if they can't be read.
const std::vector<OPERATION_FACTS>& AllFacts();
/// Throws if there is no such operation.
const OPERATION_FACTS& FactsOf(const std::string& name);

/// All steps of a run: opening lines, the given ones, closing line.
Steps WholeRun(const OPERATION_FACTS& facts, std::int32_t result, const Steps& steps);

/// A factory-new body with the line prefix "> " that the steps of `facts` were written for; and the
/// INI file in the current directory.
void SetUpBody(const OPERATION_FACTS& facts);

/// The events that the steps run, in order.
std::vector<std::string> EventsOf(const OPERATION_FACTS& facts);

/// A record that goes on far behind the operation's, and how it begins behind a run.
SimulatedBody::Bytes LongRecord(const std::string& firstBytes);
const std::string& Left(const OPERATION_FACTS& facts);

/// Bytes from "b5 0d 00*504".
SimulatedBody::Bytes FromHex(const std::string& text);
