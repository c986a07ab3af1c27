// jighost where an installation puts it: it finds all that belongs to it, and nothing of the build.
#include <sys/stat.h>

#include <filesystem>

#include "tests/support/Support.h"
#include "tests/support/posix/Shell.h"

using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

namespace {

/// In a fresh folder with an installation below "prefix".
class InstallationTest : public testing::Test {
  protected:
    InstallationTest() {
        const std::string command =
            "cmake --install '" + BuildFolder().string() + "' --prefix prefix >install.txt";
        EXPECT_EQ(Process("/bin/sh", {"-c", command}).Wait(), 0);
    }

    /// Runs the installed program without an environment.
    static JIGHOST_RUN RunInstalled(const std::vector<std::string>& arguments) {
        std::vector<std::string> all = {std::filesystem::absolute("prefix/bin/jighost")};
        all.insert(all.end(), arguments.begin(), arguments.end());
        return RunShell("exec env -i \"$@\"", all);
    }

  private:
    FreshFolder m_Folder;
};

TEST_F(InstallationTest, AllIsWhereADebianUserExpectsIt) {
    for (const char* pszFile :
         {"man/man1/jighost.1.gz", "man/man1/jighost-run.1.gz", "zsh/vendor-completions/_jighost",
          "bash-completion/completions/jighost", "fish/vendor_completions.d/jighost.fish",
          "tunebench/sequences/identity.yaml", "tunebench/BoardInf.ini",
          "doc/tunebench/docs/operations.md", "doc/tunebench/changelog.gz"}) {
        const std::filesystem::path file = std::filesystem::path("prefix/share") / pszFile;
        EXPECT_TRUE(std::filesystem::exists(file)) << file;
        EXPECT_GT(std::filesystem::file_size(file), 0U) << file;
    }
}

TEST_F(InstallationTest, NoFileKnowsTheFolderOfTheBuild) {
    for (const auto& file : std::filesystem::recursive_directory_iterator("prefix")) {
        if (file.is_regular_file()) {
            EXPECT_THAT(ReadFile(file.path()), Not(HasSubstr(BuildFolder().string()))) << file;
        }
    }
}

TEST_F(InstallationTest, EverythingRunsFromAnyPlace) {
    std::filesystem::rename("prefix", "moved");
    std::filesystem::create_directory_symlink("moved", "prefix");
    std::filesystem::create_directory("dump");
    const JIGHOST_RUN doctor = RunInstalled({"doctor"});
    EXPECT_EQ(doctor.exitCode, 0) << doctor.output;
    EXPECT_THAT(doctor.output, HasSubstr("/tunebench/TuneBench.t460.so\n"));
    EXPECT_EQ(RunInstalled({"list"}).exitCode, 0);
    // Its place in the EEPROM comes from the sample of BoardInf.ini.
    EXPECT_EQ(RunInstalled({"run", "CopyDLResonantFrequency"}).exitCode, 0);
    EXPECT_THAT(RunInstalled({"dump", "dump"}).output, StartsWith("239 files, "));
    const std::string sequence = "prefix/share/tunebench/sequences/inspection.yaml";
    EXPECT_EQ(RunInstalled({"sequence", sequence}).exitCode, 0);
}

}  // namespace
