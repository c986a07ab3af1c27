// The program started, with its standard error in a file.
#include "tests/support/SupportJighost.h"

#include "tests/support/Support.h"

std::string JighostFile() {
    return (BuildFolder() / "jighost").string();
}

JIGHOST_RUN RunJighost(const std::vector<std::string>& arguments) {
    static const char ERRORS_FILE[] = "errors.txt";
    // A process has the standard error of the tests: the shell gives it another one.
    std::vector<std::string> command = {
        "-c", std::string("exec \"$0\" \"$@\" 2>") + ERRORS_FILE, JighostFile()};
    command.insert(command.end(), arguments.begin(), arguments.end());
    Process jighost("/bin/sh", command);
    JIGHOST_RUN run;
    while (const auto line = jighost.ReadLine()) {
        run.output += *line + '\n';
    }
    run.exitCode = jighost.Wait();
    run.errors = ReadFile(ERRORS_FILE);
    return run;
}
