// The file of a simulated body: what the body keeps over power off, as YAML with a mark at its end.
//
// Kept are the properties that have a saved value of their own, the EEPROM and the calendar. All
// else of the body is as new at each start.
#pragma once

#include <cstdint>
#include <string>

/// Gives a factory-new body the values of the file. Throws EXIT_WRONG_USE with file, line and what
/// was expected for a bad file; the body is then good for nothing.
void LoadBody(const std::string& path);

/// The file's text for the body as it is now.
std::string BodyText();

/// Throws EXIT_WRONG_USE if the file can't be written, as far as that can be known before.
void CheckBodyWritable(const std::string& path);

/// Puts a body's text into the file: the whole text, or the file stays as it was. Throws
/// EXIT_HOST_ERROR if it can't be written.
void WriteBody(const std::string& path, const std::string& text);

/// The same for a file that is not there yet; throws EXIT_WRONG_USE if it is. Of several processes
/// that make it at once, one does.
void WriteNewBody(const std::string& path, const std::string& text);

/// The name of an adjustment property; empty for any other one.
std::string PropertyName(std::uint32_t id);
