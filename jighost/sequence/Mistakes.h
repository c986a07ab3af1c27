// All that is wrong in the files of a run, gathered to be told at once.
#pragma once

#include <functional>
#include <string>
#include <vector>

class Mistakes {
  public:
    /// Does `work`, and keeps the lines of a HostError that it throws, each with `suffix` behind
    /// it. When there are very many, all are thrown.
    void Gather(const std::function<void()>& work, const std::string& suffix = "");

    std::size_t Count() const { return m_Count; }

    /// Throws EXIT_WRONG_USE with a line for each.
    void ThrowIfAny() const;

  private:
    void Add(const std::string& line);

    std::vector<std::string> m_Lines;  // each once ...
    std::size_t m_Count = 0;           // ... and however often they came
};
