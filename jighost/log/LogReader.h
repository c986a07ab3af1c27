// The module's log read back: which operations ran, what ran within what, and how each one ended.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

/// One operation as its log tells it. Texts are cut to a fixed length and hold no control
/// characters.
struct LOGGED_OPERATION {
    std::string name;     ///< as the log has it; for some not the registered name
    std::size_t depth{};  ///< 0 for one that ran within no other
    std::string begin;    ///< what stands ahead of the opening line's tag, mostly the time
    std::string end;      ///< the same of the closing line
    std::string error;    ///< of its error lines; empty without any
    /// Nothing if the closing line is missing. A result of decimal digits alone counts as decimal:
    /// behind a failure while the EEPROM is printed the module writes it in hexadecimal.
    std::optional<std::int32_t> result;

    bool HasFailed() const;
};

/// Takes a log in pieces of any size. What it keeps does not grow with the log: rubbish, lines of
/// any length and openings without end included.
class LogReader {
  public:
    /// Gets an operation and all that ran within it, in the order of their opening lines, when the
    /// outermost one has ended.
    using Sink = std::function<void(std::span<const LOGGED_OPERATION>)>;

    explicit LogReader(Sink sink) : m_Sink(std::move(sink)) {}

    /// Reads on. A line counts as soon as its end is there.
    void Add(std::string_view bytes);

    /// Forgets the line whose end has not come: the next bytes are those of a new file.
    void BeginFile();

    /// Hands over what is open, without a result. A last line without its end does not count: its
    /// result may lack digits.
    void End();

  private:
    void KeepPart(std::string_view part);
    void ReadLine(std::string_view line);
    void ReadFunctionLine(std::string_view prefix, std::string_view tagged);
    void ReadErrorLine(std::string_view text);
    void Open(std::string_view prefix, std::string_view name);
    void Close(std::string_view prefix, std::string_view name, std::string_view result);

    Sink m_Sink;
    std::string m_Part;       // of a line whose end has not come
    bool m_bTooLong = false;  // that line is longer than any that matters
    std::string m_Error;      // of the error lines since the last opening or closing line
    std::size_t m_Count = 0;  // of m_Tree: elements stay for their memory
    std::vector<LOGGED_OPERATION> m_Tree;
    std::vector<std::size_t> m_Open;  // places in m_Tree, the innermost last
};
