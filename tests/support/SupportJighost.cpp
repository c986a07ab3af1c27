// The shell gives the program the standard files that a test asks for.
#include "tests/support/SupportJighost.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/stat.h>
#include <unistd.h>

std::string JighostFile() {
    return (BuildFolder() / "jighost").string();
}

JIGHOST_RUN RunShell(const std::string& script, const std::vector<std::string>& arguments) {
    static const char ERRORS_FILE[] = "errors.txt";
    // A process has the standard error of the tests: the shell gives it another one.
    std::vector<std::string> command = {
        "-c", std::string("exec 2>") + ERRORS_FILE + "\n" + script, JighostFile()};
    command.insert(command.end(), arguments.begin(), arguments.end());
    Process shell("/bin/sh", command);
    JIGHOST_RUN run;
    while (const auto line = shell.ReadLine()) {
        run.output += *line + '\n';
    }
    run.exitCode = shell.Wait();
    run.errors = ReadFile(ERRORS_FILE);
    return run;
}

JIGHOST_RUN RunJighost(const std::vector<std::string>& arguments) {
    return RunShell("exec \"$0\" \"$@\"", arguments);
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

NamedPipe::NamedPipe(const std::string& path) {
    EXPECT_EQ(mkfifo(path.c_str(), 0600), 0);
    m_nPipe = open(path.c_str(), O_RDONLY | O_NONBLOCK);
    EXPECT_EQ(fcntl(m_nPipe, F_SETPIPE_SZ, 4096), 4096);
}

NamedPipe::~NamedPipe() {
    close(m_nPipe);
}

std::string NamedPipe::ReadUntil(const std::string& text) const {
    std::string all;
    char chunk[512];
    pollfd waiting = {m_nPipe, POLLIN, 0};
    while (all.find(text) == std::string::npos) {
        const ssize_t count =
            poll(&waiting, 1, 60'000) == 1 ? read(m_nPipe, chunk, sizeof(chunk)) : -1;
        if (count <= 0) {
            ADD_FAILURE() << text << " has not come in\n" << all;
            break;
        }
        all.append(chunk, static_cast<std::size_t>(count));
    }
    return all;
}
