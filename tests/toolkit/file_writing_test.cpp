#include "toolkit/file_writing.h"

#include <gtest/gtest.h>
#include <sched.h>
#include <sys/mount.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <functional>
#include <iostream>
#include <sstream>
#include <string>
#include <vector>

namespace {

namespace files = std::filesystem;

class FileWritingTest : public testing::Test {
  protected:
    FileWritingTest() { files::create_directory(folder); }
    ~FileWritingTest() override { files::remove_all(folder); }

    static std::string contentsOf(const files::path& path) {
        std::ostringstream contents;
        contents << std::ifstream(path).rdbuf();
        return contents.str();
    }
    std::ptrdiff_t count() const { return std::distance(files::directory_iterator(folder), {}); }

    files::path folder = files::temp_directory_path() / ("drovan" + std::to_string(getpid()));
    files::path table = folder / "table.txt";
};

// Root may write everywhere.
void BecomeNobody() {
    constexpr uid_t nobody = 65534;
    if (geteuid() == 0 && setresuid(nobody, nobody, nobody) != 0) {
        _exit(EXIT_FAILURE);
    }
}

// Whether this process may mount what no other sees, if need be in a user namespace of its own.
bool IsAllowedToMount() {
    const uid_t user = geteuid();
    const gid_t group = getegid();
    if (unshare(CLONE_NEWNS) != 0) {
        if (unshare(CLONE_NEWUSER | CLONE_NEWNS) != 0) return false;
        std::ofstream("/proc/self/uid_map") << "0 " << user << " 1";
        std::ofstream("/proc/self/setgroups") << "deny";
        std::ofstream("/proc/self/gid_map") << "0 " << group << " 1";
    }
    return mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0;
}

TEST_F(FileWritingTest, FailuresKeepTheOldFileAndLeaveNoOther) {
    struct Case {
        std::string error;
        std::function<void()> hinder;  // in a process of its own
    };
    const auto fillDisk = [this] {
        if (!IsAllowedToMount() || mount("none", folder.c_str(), "tmpfs", 0, "size=64k") != 0) {
            std::cout << "The full disk was left out: no file system can be mounted here.\n"
                      << std::flush;
            _exit(EXIT_SUCCESS);
        }
        std::ofstream(table) << "old";
    };
    const auto closeFolder = [this] {
        chmod(folder.c_str(), 0555);
        BecomeNobody();
    };
    const auto closeFile = [this] {
        chmod(folder.c_str(), 0777);
        chmod(table.c_str(), 0444);
        BecomeNobody();
    };
    std::ofstream(table) << "old";
    for (const Case& c : std::vector<Case>{{"No space left on device", fillDisk},
                                           {"Permission denied", closeFolder},
                                           {"Permission denied", closeFile}}) {
        const auto failsAsItShould = [&] {
            c.hinder();
            const auto sentence = toolkit::WriteFile(table, std::string(1'000'000, 'x'));
            std::cerr << sentence.value_or("written") << ", " << contentsOf(table) << ", "
                      << count();
            _exit(sentence == "warning: table.txt was not written: " + c.error &&
                          contentsOf(table) == "old" && count() == 1
                      ? EXIT_SUCCESS
                      : EXIT_FAILURE);
        };
        EXPECT_EXIT(failsAsItShould(), testing::ExitedWithCode(EXIT_SUCCESS), "") << c.error;
        chmod(folder.c_str(), 0755);
    }
    files::create_directory(folder / "caf\xe9");  // shown in UTF-8 all the same
    EXPECT_EQ(toolkit::WriteFile(folder / "caf\xe9", ""),
              "warning: caf\uFFFD was not written: Is a directory");
    EXPECT_EQ(toolkit::WriteFile(folder / "gone" / "a.txt", "").value_or("").substr(0, 32),
              "warning: a.txt was not written: ");
    mkfifo((folder / "pipe").c_str(), 0600);
    EXPECT_TRUE(toolkit::WriteFile(folder / "pipe", ""));
    EXPECT_TRUE(files::is_fifo(folder / "pipe"));
    files::create_symlink("loop", folder / "loop");
    EXPECT_TRUE(toolkit::WriteFile(folder / "loop", ""));
    EXPECT_TRUE(files::is_symlink(folder / "loop"));
}

TEST_F(FileWritingTest, ReplacedFilesKeepTheirRightsAndLinks) {
    const mode_t mask = umask(027);
    EXPECT_FALSE(toolkit::WriteFile(table, "first\n"));
    umask(mask);
    EXPECT_EQ(files::status(table).permissions(), files::perms(0640));
    files::permissions(table, files::perms(06604));
    files::create_directory(folder / "links");
    files::create_symlink("../table.txt", folder / "links" / "second");
    files::create_symlink("links/second", folder / "first");
    EXPECT_FALSE(toolkit::WriteFile(folder / "first", std::string("a\0b", 3)));
    EXPECT_EQ(contentsOf(table), std::string("a\0b", 3));
    EXPECT_EQ(files::status(table).permissions(), files::perms(0604));
    EXPECT_TRUE(files::is_symlink(folder / "first"));
    files::remove(table);  // the links lead nowhere now
    EXPECT_FALSE(toolkit::WriteFile(folder / "first", "new"));
    EXPECT_EQ(contentsOf(table), "new");
    constexpr std::size_t longestName = 255;
    EXPECT_FALSE(toolkit::WriteFile(folder / std::string(longestName, 'n'), ""));
    EXPECT_EQ(count(), 4);
}

}  // namespace
