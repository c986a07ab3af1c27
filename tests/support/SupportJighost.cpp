// The program run, with its standard error in a file.
#include "tests/support/SupportJighost.h"

#include <chrono>
#include <filesystem>
#include <iomanip>
#include <sstream>
#include <string>
#include <thread>

#include "platform/Program.h"

std::string JighostFile() {
    return (BuildFolder() / (IS_WINDOWS ? "jighost.exe" : "jighost")).string();
}

/// What is left of a run until its end.
static JIGHOST_RUN Rest(Process& process, const std::string& errorPath) {
    JIGHOST_RUN run;
    while (const auto line = process.ReadLine()) {
        run.output += *line + '\n';
    }
    run.exitCode = process.Wait();
    run.errors = ReadFile(errorPath);
    std::erase(run.errors, '\r');
    return run;
}

JIGHOST_RUN RunProgram(const std::string& program, const std::vector<std::string>& arguments) {
    static const char ERRORS_FILE[] = "errors.txt";
    Process process(program, arguments, ERRORS_FILE);
    return Rest(process, ERRORS_FILE);
}

JIGHOST_RUN RunJighost(const std::vector<std::string>& arguments) {
    return RunProgram(JighostFile(), arguments);
}

std::vector<std::string> Words(const std::string& line) {
    std::istringstream stream(line);
    std::vector<std::string> words;
    for (std::string word; stream >> std::quoted(word);) {
        words.push_back(word);
    }
    return words;
}

JIGHOST_RUN RunLine(const std::string& line) {
    return RunJighost(Words(line));
}

JIGHOST_RUN RunTo(int exitCode, const std::string& line, const std::string& error) {
    JIGHOST_RUN run = RunLine(line);
    EXPECT_EQ(run.exitCode, exitCode) << line << '\n' << run.errors;
    EXPECT_THAT(run.errors, testing::HasSubstr(error)) << line;
    return run;
}

std::vector<JIGHOST_RUN> RunAtOnce(const std::vector<std::string>& lines) {
    const auto errorPath = [](std::size_t i) { return "errors-" + std::to_string(i) + ".txt"; };
    std::vector<std::unique_ptr<Process>> processes;
    for (std::size_t i = 0; i < lines.size(); ++i) {
        processes.push_back(
            std::make_unique<Process>(JighostFile(), Words(lines[i]), errorPath(i)));
    }
    std::vector<JIGHOST_RUN> runs;
    for (std::size_t i = 0; i < lines.size(); ++i) {
        runs.push_back(Rest(*processes[i], errorPath(i)));
    }
    return runs;
}

bool ComesTrue(const std::function<bool()>& condition) {
    const auto end = std::chrono::steady_clock::now() + std::chrono::minutes(2);
    bool bTrue = condition();
    while (!bTrue && std::chrono::steady_clock::now() < end) {
        std::this_thread::yield();
        bTrue = condition();
    }
    return bTrue;
}

bool IsRenamed(const std::string& from, const std::string& to) {
    return ComesTrue([&] {
        std::error_code error;
        std::filesystem::rename(from, to, error);
        return !error;
    });
}

JighostTest::JighostTest() {
    EXPECT_EQ(RunJighost({"body", "new", "body.yaml"}).exitCode, 0);
}

std::string JighostTest::Owner() {
    return RunJighost({"run", "GetOwnerName", "--body", "body.yaml"}).output;
}

JIGHOST_RUN JighostTest::RunSequence(const std::string& text, std::vector<std::string> arguments) {
    WriteFile("sequence.yaml", "format: 1\n" + text);
    arguments.insert(arguments.begin(), {"sequence", "sequence.yaml"});
    return RunJighost(arguments);
}
