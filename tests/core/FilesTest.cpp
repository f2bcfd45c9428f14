// Reading and replacing whole files, with the faults that a file system has in store.
#include "core/Files.h"

#include "tests/core/FileFaults.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <optional>
#include <string>
#include <thread>
#include <vector>

namespace {

namespace files = orvel::core::files;
using tavik::testing::FileCall;
using tavik::testing::FileFault;
using tavik::testing::TemporaryFolder;

constexpr std::size_t NO_LIMIT = 1 << 20;

void put(const std::string& path, const std::string& bytes) {
    std::ofstream(path, std::ios::binary) << bytes;
}

std::string get(const std::string& path) {
    std::ifstream stream(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

std::vector<std::string> namesIn(const std::filesystem::path& folder) {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(folder))
        names.push_back(entry.path().filename().string());
    std::sort(names.begin(), names.end());
    return names;
}

struct stat stateOf(const std::string& path) {
    struct stat state {};

    EXPECT_EQ(0, ::lstat(path.c_str(), &state)) << path;
    return state;
}

mode_t modeOf(const std::string& path) {
    return stateOf(path).st_mode & 07777;
}

/// Takes the superuser's rights away for as long as it lives; an ordinary user has none anyway.
class OrdinaryUser {
public:
    OrdinaryUser() : isRoot(::geteuid() == 0) {
        if (isRoot) {
            EXPECT_EQ(0, ::setegid(NOBODY));
            EXPECT_EQ(0, ::seteuid(NOBODY));
        }
    }

    OrdinaryUser(const OrdinaryUser&) = delete;
    OrdinaryUser& operator=(const OrdinaryUser&) = delete;

    ~OrdinaryUser() {
        if (isRoot) {
            EXPECT_EQ(0, ::seteuid(0));
            EXPECT_EQ(0, ::setegid(0));
        }
    }

    static constexpr uid_t NOBODY = 65534;

private:
    bool isRoot;
};

/// Keeps a signal from ending the process for as long as it lives.
class SignalIgnored {
public:
    explicit SignalIgnored(int number) : signal(number), before(::signal(number, SIG_IGN)) {}

    SignalIgnored(const SignalIgnored&) = delete;
    SignalIgnored& operator=(const SignalIgnored&) = delete;

    ~SignalIgnored() { ::signal(signal, before); }

private:
    int signal;
    sighandler_t before;
};

/// Files may not grow past `bytes` for as long as it lives: the next best to a full disk.
class FileSizeLimit {
public:
    explicit FileSizeLimit(rlim_t bytes) {
        EXPECT_EQ(0, ::getrlimit(RLIMIT_FSIZE, &before));
        const rlimit limit{bytes, before.rlim_max};
        EXPECT_EQ(0, ::setrlimit(RLIMIT_FSIZE, &limit));
    }

    FileSizeLimit(const FileSizeLimit&) = delete;
    FileSizeLimit& operator=(const FileSizeLimit&) = delete;

    ~FileSizeLimit() { EXPECT_EQ(0, ::setrlimit(RLIMIT_FSIZE, &before)); }

private:
    const SignalIgnored ignored{SIGXFSZ};
    rlimit before{};
};

class Umask {
public:
    explicit Umask(mode_t mask) : before(::umask(mask)) {}

    Umask(const Umask&) = delete;
    Umask& operator=(const Umask&) = delete;

    ~Umask() { ::umask(before); }

private:
    mode_t before;
};

/// A folder that everybody may look into but only its owner may write to, with one file in it
/// that everybody may write to.
class ClosedFolder {
public:
    explicit ClosedFolder(const std::string& bytes) {
        std::filesystem::create_directory(closed());
        put(file(), bytes);
        EXPECT_EQ(0, ::chmod(file().c_str(), 0666));
        EXPECT_EQ(0, ::chmod(folder.path().c_str(), 0755));
        EXPECT_EQ(0, ::chmod(closed().c_str(), 0555));
    }

    ClosedFolder(const ClosedFolder&) = delete;
    ClosedFolder& operator=(const ClosedFolder&) = delete;

    ~ClosedFolder() { EXPECT_EQ(0, ::chmod(closed().c_str(), 0755)); }

    std::string closed() const { return folder.path("closed"); }

    std::string file() const { return closed() + "/file"; }

private:
    TemporaryFolder folder;
};

TEST(FilesRead, GivesEveryByteOfAPlainFile) {
    const TemporaryFolder folder;
    const std::string bytes("a\0b\r\n\xff\x80 z", 9);
    put(folder.path("file"), bytes);
    EXPECT_EQ(bytes, files::read(folder.path("file"), NO_LIMIT));
}

TEST(FilesRead, GivesTheEmptyTextForAnEmptyFile) {
    const TemporaryFolder folder;
    put(folder.path("file"), "");
    EXPECT_EQ("", files::read(folder.path("file"), NO_LIMIT));
    EXPECT_EQ("", files::read(folder.path("file"), 0));
}

TEST(FilesRead, TakesAFileOfTheLimitAndNoneBeyond) {
    const TemporaryFolder folder;
    put(folder.path("file"), "12345");
    EXPECT_EQ("12345", files::read(folder.path("file"), 5));
    EXPECT_EQ(std::nullopt, files::read(folder.path("file"), 4));
}

TEST(FilesRead, FollowsALink) {
    const TemporaryFolder folder;
    put(folder.path("file"), "text");
    std::filesystem::create_symlink("file", folder.path("link"));
    EXPECT_EQ("text", files::read(folder.path("link"), NO_LIMIT));
}

TEST(FilesRead, ReadsAFileThatSaysItIsEmpty) {
    ASSERT_EQ(0, stateOf("/proc/self/status").st_size);
    const auto text = files::read("/proc/self/status", NO_LIMIT);
    ASSERT_TRUE(text);
    EXPECT_NE(std::string::npos, text->find("\nPid:\t" + std::to_string(::getpid()) + "\n"));
    EXPECT_EQ(std::nullopt, files::read("/proc/self/status", 10));
}

TEST(FilesRead, GivesNothingForWhatIsNoPlainFile) {
    const TemporaryFolder folder;
    ASSERT_EQ(0, ::mkfifo(folder.path("pipe").c_str(), 0666));
    std::filesystem::create_symlink("nowhere", folder.path("dangling"));
    std::filesystem::create_symlink("circle", folder.path("circle"));
    put(folder.path("file"), "text");
    for (const std::string& path :
         {folder.path().string(), folder.path("pipe"), folder.path("dangling"),
          folder.path("circle"), folder.path("absent"), folder.path("file/below"),
          folder.path("file") + std::string("\0tail", 5), std::string("/dev/null"),
          std::string()}) {
        SCOPED_TRACE(path);
        EXPECT_EQ(std::nullopt, files::read(path, NO_LIMIT));
        EXPECT_FALSE(files::isReadable(path));
    }
}

TEST(FilesRead, GivesNothingForAPlainFileWhoseReadingFails) {
    // The first page of a process is never mapped.
    ASSERT_TRUE(S_ISREG(stateOf("/proc/self/mem").st_mode));
    EXPECT_TRUE(files::isReadable("/proc/self/mem"));
    EXPECT_EQ(std::nullopt, files::read("/proc/self/mem", NO_LIMIT));
}

TEST(FilesRead, GivesNothingWithoutTheRightToRead) {
    const TemporaryFolder folder;
    put(folder.path("file"), "text");
    ASSERT_EQ(0, ::chmod(folder.path().c_str(), 0755));
    ASSERT_EQ(0, ::chmod(folder.path("file").c_str(), 0200));
    const OrdinaryUser user;
    EXPECT_EQ(std::nullopt, files::read(folder.path("file"), NO_LIMIT));
    EXPECT_FALSE(files::isReadable(folder.path("file")));
}

TEST(FilesIsReadable, IsTrueForAPlainFileAndForALinkToOne) {
    const TemporaryFolder folder;
    put(folder.path("file"), "");
    std::filesystem::create_symlink("file", folder.path("link"));
    EXPECT_TRUE(files::isReadable(folder.path("file")));
    EXPECT_TRUE(files::isReadable(folder.path("link")));
}

TEST(FilesReplace, MakesANewFileWithTheUsualMode) {
    const TemporaryFolder folder;
    const Umask mask(027);
    EXPECT_TRUE(files::replace(folder.path("file"), "new"));
    EXPECT_EQ("new", get(folder.path("file")));
    EXPECT_EQ(0640U, modeOf(folder.path("file")));
    EXPECT_EQ(std::vector<std::string>{"file"}, namesIn(folder.path()));
}

TEST(FilesReplace, MakesANewFileInTheWorkingDirectory) {
    const TemporaryFolder folder;
    const std::filesystem::path before = std::filesystem::current_path();
    std::filesystem::current_path(folder.path());
    EXPECT_TRUE(files::replace("file", "new"));
    std::filesystem::current_path(before);
    EXPECT_EQ("new", get(folder.path("file")));
}

TEST(FilesReplace, WritesEveryByte) {
    const TemporaryFolder folder;
    std::string bytes(3 << 20, '\0');
    for (std::size_t index = 0; index < bytes.size(); ++index)
        bytes[index] = static_cast<char>(index * 7 / 5);
    EXPECT_TRUE(files::replace(folder.path("file"), bytes));
    EXPECT_TRUE(bytes == get(folder.path("file")));
    EXPECT_TRUE(files::replace(folder.path("file"), ""));
    EXPECT_EQ("", get(folder.path("file")));
}

TEST(FilesReplace, PutsAnotherFileInTheOldOnesPlace) {
    const TemporaryFolder folder;
    put(folder.path("file"), "a longer old text");
    std::ifstream old(folder.path("file"));
    EXPECT_TRUE(files::replace(folder.path("file"), "new"));
    EXPECT_EQ("new", get(folder.path("file")));
    EXPECT_EQ("a longer old text", std::string(std::istreambuf_iterator<char>(old), {}));
    EXPECT_EQ(std::vector<std::string>{"file"}, namesIn(folder.path()));
}

TEST(FilesReplace, LetsTheOtherNamesOfAFileSeeTheNewBytes) {
    const TemporaryFolder folder;
    put(folder.path("file"), "a longer old text");
    std::filesystem::create_hard_link(folder.path("file"), folder.path("other name"));
    EXPECT_TRUE(files::replace(folder.path("file"), "new"));
    EXPECT_EQ("new", get(folder.path("file")));
    EXPECT_EQ("new", get(folder.path("other name")));
    EXPECT_EQ(2U, stateOf(folder.path("file")).st_nlink);
    EXPECT_EQ((std::vector<std::string>{"file", "other name"}), namesIn(folder.path()));
}

TEST(FilesReplace, LeavesTheOldBytesUnderEveryNameWhenTheDiskIsFull) {
    const TemporaryFolder folder;
    put(folder.path("file"), "old");
    std::filesystem::create_hard_link(folder.path("file"), folder.path("other name"));
    {
        const FileSizeLimit limit(1000);
        EXPECT_FALSE(files::replace(folder.path("file"), std::string(2000, 'x')));
    }
    EXPECT_EQ("old", get(folder.path("file")));
    EXPECT_EQ("old", get(folder.path("other name")));
}

TEST(FilesReplace, StartsOverWhenAFileAppearsInTheMeantime) {
    const TemporaryFolder folder;
    const auto appear = [&](int before) -> std::optional<int> {
        if (before == 0) {
            put(folder.path("file"), "theirs");
            EXPECT_EQ(0, ::chmod(folder.path("file").c_str(), 0600));
        }
        return std::nullopt;
    };
    {
        const FileFault fault(FileCall::RENAME_NEW, appear);
        EXPECT_TRUE(files::replace(folder.path("file"), "new"));
        EXPECT_EQ(1, fault.calls());
    }
    EXPECT_EQ("new", get(folder.path("file")));
    EXPECT_EQ(0600U, modeOf(folder.path("file")));
    EXPECT_EQ(std::vector<std::string>{"file"}, namesIn(folder.path()));
}

TEST(FilesReplace, WritesThroughALinkThatAppearsInTheMeantime) {
    const TemporaryFolder folder;
    put(folder.path("target"), "old");
    {
        const FileFault fault(FileCall::RENAME_NEW, [&](int before) -> std::optional<int> {
            if (before == 0) std::filesystem::create_symlink("target", folder.path("link"));
            return std::nullopt;
        });
        EXPECT_TRUE(files::replace(folder.path("link"), "new"));
    }
    EXPECT_EQ("target", std::filesystem::read_symlink(folder.path("link")));
    EXPECT_EQ("new", get(folder.path("target")));
    EXPECT_EQ((std::vector<std::string>{"link", "target"}), namesIn(folder.path()));
}

TEST(FilesReplace, StartsOverOnlyOnce) {
    const TemporaryFolder folder;
    const FileFault fault(FileCall::RENAME_NEW, EEXIST);
    EXPECT_FALSE(files::replace(folder.path("file"), "new"));
    EXPECT_EQ(2, fault.calls());
    EXPECT_TRUE(namesIn(folder.path()).empty());
}

TEST(FilesReplace, MakesANewFileWhereTheSystemCanNotSpareAnAppearingOne) {
    for (const int error : {EINVAL, ENOSYS}) {
        SCOPED_TRACE(error);
        const TemporaryFolder folder;
        const FileFault fault(FileCall::RENAME_NEW, error);
        EXPECT_TRUE(files::replace(folder.path("file"), "new"));
        EXPECT_EQ("new", get(folder.path("file")));
        EXPECT_EQ(std::vector<std::string>{"file"}, namesIn(folder.path()));
    }
}

TEST(FilesReplace, KeepsTheOldFilesMode) {
    const TemporaryFolder folder;
    for (const mode_t mode : {0600U, 0640U, 0666U, 0755U, 0200U}) {
        SCOPED_TRACE(mode);
        put(folder.path("file"), "old");
        ASSERT_EQ(0, ::chmod(folder.path("file").c_str(), mode));
        EXPECT_TRUE(files::replace(folder.path("file"), "new"));
        EXPECT_EQ(mode, modeOf(folder.path("file")));
        ASSERT_EQ(0, ::chmod(folder.path("file").c_str(), 0600));
        EXPECT_EQ("new", get(folder.path("file")));
    }
}

TEST(FilesReplace, KeepsTheOldFilesOwner) {
    const TemporaryFolder folder;
    put(folder.path("file"), "old");
    if (::geteuid() == 0) {
        ASSERT_EQ(0, ::chown(folder.path("file").c_str(), 1234, 4321));
        ASSERT_EQ(0, ::chmod(folder.path("file").c_str(), 04755));
    }
    const struct stat old = stateOf(folder.path("file"));
    EXPECT_TRUE(files::replace(folder.path("file"), ""));
    EXPECT_EQ(old.st_uid, stateOf(folder.path("file")).st_uid);
    EXPECT_EQ(old.st_gid, stateOf(folder.path("file")).st_gid);
    EXPECT_EQ(old.st_mode, stateOf(folder.path("file")).st_mode);
}

TEST(FilesReplace, KeepsTheModeBitsThatWritingTakesAway) {
    const TemporaryFolder folder;
    put(folder.path("file"), "old");
    EXPECT_EQ(0, ::chmod(folder.path().c_str(), 0777));
    if (::geteuid() == 0) {
        ASSERT_EQ(0,
                  ::chown(folder.path("file").c_str(), OrdinaryUser::NOBODY, OrdinaryUser::NOBODY));
    }
    ASSERT_EQ(0, ::chmod(folder.path("file").c_str(), 04755));
    {
        const OrdinaryUser user;
        EXPECT_TRUE(files::replace(folder.path("file"), "new"));
    }
    EXPECT_EQ("new", get(folder.path("file")));
    EXPECT_EQ(04755U, modeOf(folder.path("file")));
}

TEST(FilesReplace, WritesOverAnothersFileWhoseOwnerItMayNotGive) {
    const TemporaryFolder folder;
    put(folder.path("file"), "old");
    ASSERT_EQ(0, ::chmod(folder.path().c_str(), 0777));
    ASSERT_EQ(0, ::chmod(folder.path("file").c_str(), 0666));

    const struct stat old = stateOf(folder.path("file"));
    {
        const OrdinaryUser user;
        EXPECT_TRUE(files::replace(folder.path("file"), "new"));
    }

    EXPECT_EQ("new", get(folder.path("file")));
    EXPECT_EQ(old.st_uid, stateOf(folder.path("file")).st_uid);
    EXPECT_EQ(old.st_gid, stateOf(folder.path("file")).st_gid);
    EXPECT_EQ(old.st_mode, stateOf(folder.path("file")).st_mode);
    EXPECT_EQ(std::vector<std::string>{"file"}, namesIn(folder.path()));
}

TEST(FilesReplace, WritesOverAFileWhoseOwnerOrModeCanNotBeKept) {
    constexpr int CLAIM_SUCCESS = 0;

    const struct {
        const char* about;
        FileCall call;
        int error;
    } rows[] = {
        {"the owner", FileCall::GIVE_OWNER, EPERM},
        {"an owner that the file system does not know", FileCall::GIVE_OWNER, EINVAL},
        {"the mode", FileCall::GIVE_MODE, EPERM},
        {"a mode that is silently not taken", FileCall::GIVE_MODE, CLAIM_SUCCESS},
    };

    for (const auto& row : rows) {
        SCOPED_TRACE(row.about);
        const TemporaryFolder folder;
        put(folder.path("file"), "a longer old text");
        ASSERT_EQ(0, ::chmod(folder.path("file").c_str(), 0751));
        const ino_t before = stateOf(folder.path("file")).st_ino;
        {
            const FileFault fault(row.call, row.error);
            EXPECT_TRUE(files::replace(folder.path("file"), "new"));
        }
        EXPECT_EQ("new", get(folder.path("file")));
        EXPECT_EQ(before, stateOf(folder.path("file")).st_ino);
        EXPECT_EQ(0751U, modeOf(folder.path("file")));
        EXPECT_EQ(std::vector<std::string>{"file"}, namesIn(folder.path()));
    }
}

TEST(FilesReplace, WritesOverAFileThatNothingCanBeMadeBeside) {
    for (const int error : {EACCES, EPERM, EROFS, ENOSPC, EDQUOT, ENAMETOOLONG, EBUSY, EMFILE}) {
        SCOPED_TRACE(error);
        const TemporaryFolder folder;
        put(folder.path("file"), "a longer old text");
        const ino_t before = stateOf(folder.path("file")).st_ino;
        {
            const FileFault fault(FileCall::MAKE_NEW, error);
            EXPECT_TRUE(files::replace(folder.path("file"), "new"));
            EXPECT_FALSE(files::replace(folder.path("absent"), "new"));
        }
        EXPECT_EQ("new", get(folder.path("file")));
        EXPECT_EQ(before, stateOf(folder.path("file")).st_ino);
        EXPECT_EQ(std::vector<std::string>{"file"}, namesIn(folder.path()));
    }
}

TEST(FilesReplace, WritesOverAFileWhoseNameCanNotBeTaken) {
    for (const int error : {EACCES, EPERM, EBUSY, ENOSPC}) {
        SCOPED_TRACE(error);
        const TemporaryFolder folder;
        put(folder.path("file"), "a longer old text");
        const ino_t before = stateOf(folder.path("file")).st_ino;
        {
            const FileFault fault(FileCall::RENAME, error);
            EXPECT_TRUE(files::replace(folder.path("file"), "new"));
        }
        EXPECT_EQ("new", get(folder.path("file")));
        EXPECT_EQ(before, stateOf(folder.path("file")).st_ino);
        EXPECT_EQ(std::vector<std::string>{"file"}, namesIn(folder.path()));
    }
}

TEST(FilesReplace, WritesOverAFileWhosePathLeavesNoRoomForALongerName) {
    const TemporaryFolder folder;
    put(folder.path("file"), "old");
    std::string path = folder.path().string() + "//file";
    while (path.size() < 4095)
        path.insert(path.size() - 4, "/");
    EXPECT_TRUE(files::replace(path, "new"));
    EXPECT_EQ("new", get(folder.path("file")));
    EXPECT_EQ(std::vector<std::string>{"file"}, namesIn(folder.path()));
}

TEST(FilesReplace, SparesNamesThatAKilledProcessLeftBehind) {
    const TemporaryFolder folder;
    const std::string stem = ".tavik-" + std::to_string(::getpid()) + "-";
    put(folder.path(stem + "0"), "left");
    put(folder.path(stem + "1"), "left");
    EXPECT_TRUE(files::replace(folder.path("file"), "new"));
    EXPECT_EQ("left", get(folder.path(stem + "0")));
    EXPECT_EQ("left", get(folder.path(stem + "1")));
    EXPECT_EQ((std::vector<std::string>{stem + "0", stem + "1", "file"}), namesIn(folder.path()));
}

TEST(FilesReplace, FailsForADirectoryAndForAPathThatCanNotBe) {
    const TemporaryFolder folder;
    put(folder.path("file"), "old");
    std::filesystem::create_directory(folder.path("folder"));
    std::filesystem::create_symlink("folder", folder.path("link to folder"));
    std::filesystem::create_symlink("circle", folder.path("circle"));
    std::filesystem::create_symlink("absent/file", folder.path("link to nowhere"));
    for (const std::string& path :
         {folder.path("folder"), folder.path("link to folder"), folder.path("circle"),
          folder.path("link to nowhere"), folder.path("absent/file"), folder.path("absent/"),
          folder.path("file/below"), folder.path("file/"),
          folder.path("file") + std::string("\0tail", 5), folder.path(std::string(256, 'x')),
          std::string()}) {
        SCOPED_TRACE(path);
        EXPECT_FALSE(files::replace(path, "new"));
    }
    EXPECT_EQ("old", get(folder.path("file")));
    EXPECT_EQ(
        (std::vector<std::string>{"circle", "file", "folder", "link to folder", "link to nowhere"}),
        namesIn(folder.path()));
    EXPECT_TRUE(namesIn(folder.path("folder")).empty());
}

TEST(FilesReplace, TakesANameOfTheGreatestLength) {
    const TemporaryFolder folder;
    EXPECT_TRUE(files::replace(folder.path(std::string(255, 'x')), "new"));
    EXPECT_EQ("new", get(folder.path(std::string(255, 'x'))));
}

TEST(FilesReplace, WritesToADeviceAndLeavesItADevice) {
    EXPECT_TRUE(files::replace("/dev/null", "bytes"));
    EXPECT_TRUE(S_ISCHR(stateOf("/dev/null").st_mode));
    EXPECT_FALSE(files::replace("/dev/full", "bytes"));
    EXPECT_TRUE(S_ISCHR(stateOf("/dev/full").st_mode));
}

TEST(FilesReplace, WritesThroughALinkToADevice) {
    const TemporaryFolder folder;
    std::filesystem::create_symlink("/dev/null", folder.path("link"));
    EXPECT_TRUE(files::replace(folder.path("link"), "bytes"));
    EXPECT_EQ("/dev/null", std::filesystem::read_symlink(folder.path("link")));
}

TEST(FilesReplace, FailsAtOnceForAPipeThatNobodyReads) {
    const TemporaryFolder folder;
    ASSERT_EQ(0, ::mkfifo(folder.path("pipe").c_str(), 0666));
    EXPECT_FALSE(files::replace(folder.path("pipe"), "bytes"));
    EXPECT_TRUE(S_ISFIFO(stateOf(folder.path("pipe")).st_mode));
}

TEST(FilesReplace, WaitsForASlowReaderOfAPipe) {
    const TemporaryFolder folder;
    ASSERT_EQ(0, ::mkfifo(folder.path("pipe").c_str(), 0666));
    const int readEnd = ::open(folder.path("pipe").c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    ASSERT_GE(readEnd, 0);
    ASSERT_EQ(0, ::fcntl(readEnd, F_SETFL, 0));
    const std::string bytes(1 << 20, 'x');
    std::string received(bytes.size() + 1, '\0');
    std::size_t size = 0;
    std::thread reader([&] {
        // The writer may not be there yet: an end of file before the first byte is none.
        while (size < bytes.size()) {
            const ssize_t count = ::read(readEnd, &received[size], received.size() - size);
            if (count > 0) size += static_cast<std::size_t>(count);
        }
    });
    EXPECT_TRUE(files::replace(folder.path("pipe"), bytes));
    reader.join();
    ::close(readEnd);
    received.resize(size);
    EXPECT_TRUE(bytes == received);
    EXPECT_TRUE(S_ISFIFO(stateOf(folder.path("pipe")).st_mode));
}

TEST(FilesReplace, FailsWhenTheReaderOfAPipeGoesAway) {
    const TemporaryFolder folder;
    ASSERT_EQ(0, ::mkfifo(folder.path("pipe").c_str(), 0666));
    const int readEnd = ::open(folder.path("pipe").c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    ASSERT_GE(readEnd, 0);
    std::thread reader([readEnd] {
        char byte = 0;
        while (::read(readEnd, &byte, 1) != 1)
            continue;
        ::close(readEnd);
    });
    const SignalIgnored ignored(SIGPIPE);
    EXPECT_FALSE(files::replace(folder.path("pipe"), std::string(1 << 20, 'x')));
    reader.join();
}

TEST(FilesReplace, WritesToTheTargetOfALink) {
    const TemporaryFolder folder;
    put(folder.path("target"), "a longer old text");
    ASSERT_EQ(0, ::chmod(folder.path("target").c_str(), 0640));
    std::filesystem::create_symlink("target", folder.path("link"));
    const ino_t before = stateOf(folder.path("target")).st_ino;
    EXPECT_TRUE(files::replace(folder.path("link"), "new"));
    EXPECT_EQ("target", std::filesystem::read_symlink(folder.path("link")));
    EXPECT_EQ("new", get(folder.path("target")));
    EXPECT_EQ(before, stateOf(folder.path("target")).st_ino);
    EXPECT_EQ(0640U, modeOf(folder.path("target")));
    EXPECT_TRUE(files::replace(folder.path("link"), "a text longer than the last"));
    EXPECT_EQ("a text longer than the last", get(folder.path("target")));
}

TEST(FilesReplace, MakesTheAbsentTargetOfALink) {
    const TemporaryFolder folder;
    std::filesystem::create_symlink("target", folder.path("link"));
    EXPECT_TRUE(files::replace(folder.path("link"), "new"));
    EXPECT_EQ("target", std::filesystem::read_symlink(folder.path("link")));
    EXPECT_EQ("new", get(folder.path("target")));
}

TEST(FilesReplace, LeavesNothingNewBehindWhenTheDiskIsFull) {
    const TemporaryFolder folder;
    std::filesystem::create_symlink("target", folder.path("link"));
    {
        const FileSizeLimit limit(1000);
        EXPECT_FALSE(files::replace(folder.path("file"), std::string(2000, 'x')));
        EXPECT_FALSE(files::replace(folder.path("link"), std::string(2000, 'x')));
    }
    EXPECT_EQ(std::vector<std::string>{"link"}, namesIn(folder.path()));
}

TEST(FilesReplace, LeavesTheOldFileWhenTheDiskIsFull) {
    const TemporaryFolder folder;
    put(folder.path("file"), "old");
    const ino_t before = stateOf(folder.path("file")).st_ino;
    {
        const FileSizeLimit limit(1000);
        EXPECT_FALSE(files::replace(folder.path("file"), std::string(2000, 'x')));
    }
    EXPECT_EQ("old", get(folder.path("file")));
    EXPECT_EQ(before, stateOf(folder.path("file")).st_ino);
    EXPECT_EQ(std::vector<std::string>{"file"}, namesIn(folder.path()));
}

TEST(FilesReplace, LeavesTheTargetOfALinkWhenTheDiskIsFull) {
    const TemporaryFolder folder;
    const std::string old(1500, 'o');
    put(folder.path("target"), old);
    std::filesystem::create_symlink("target", folder.path("link"));
    for (const std::size_t size : {1200U, 1500U, 2000U}) {
        SCOPED_TRACE(size);
        {
            const FileSizeLimit limit(1000);
            EXPECT_FALSE(files::replace(folder.path("link"), std::string(size, 'x')));
        }
        EXPECT_EQ(old, get(folder.path("target")));
    }
}

TEST(FilesReplace, RestoresTheTargetOfALinkWhateverStepFails) {
    const struct {
        const char* about;
        FileCall call;
        int good;
        std::size_t newSize;
    } rows[] = {
        // clang-format off
        {"the first write, shorter",              FileCall::WRITE_AT, 0,  500},
        {"the first write, longer",               FileCall::WRITE_AT, 0, 2000},
        {"the flush, shorter",                    FileCall::FLUSH,    0,  500},
        {"the flush, empty",                      FileCall::FLUSH,    0,    0},
        {"the flush, as long",                    FileCall::FLUSH,    0, 1500},
        {"the flush, longer",                     FileCall::FLUSH,    0, 2000},
        {"cutting",                               FileCall::CUT,      0,  500},
        {"the flush after cutting",               FileCall::FLUSH,    1,  500},
        {"the flush after cutting down to empty", FileCall::FLUSH,    1,    0},
        // clang-format on
    };

    for (const auto& row : rows) {
        SCOPED_TRACE(row.about);
        const TemporaryFolder folder;
        const std::string old(1500, 'o');
        put(folder.path("target"), old);
        std::filesystem::create_symlink("target", folder.path("link"));
        {
            const FileFault fault(row.call, EIO, row.good);
            EXPECT_FALSE(files::replace(folder.path("link"), std::string(row.newSize, 'x')));
        }
        EXPECT_EQ(old, get(folder.path("target")));
    }
}

TEST(FilesReplace, RestoresTheTargetOfALinkWhenTheSecondWriteFails) {
    const TemporaryFolder folder;
    put(folder.path("target"), "old");
    std::filesystem::create_symlink("target", folder.path("link"));
    {
        const FileFault fault(FileCall::WRITE_AT, [](int before) {
            return before == 1 ? std::optional<int>(EIO) : std::nullopt;
        });
        EXPECT_FALSE(files::replace(folder.path("link"), "a longer text"));
    }
    EXPECT_EQ("old", get(folder.path("target")));
}

TEST(FilesReplace, DropsTheOldEndOfALinksTargetOnlyWhenTheNewBytesAreDown) {
    constexpr std::size_t LARGE = 17 << 20;
    for (const std::size_t size : {std::size_t{1500}, LARGE}) {
        SCOPED_TRACE(size);
        const TemporaryFolder folder;
        put(folder.path("target"), "old");
        std::filesystem::resize_file(folder.path("target"), size);
        std::filesystem::create_symlink("target", folder.path("link"));
        {
            const FileFault fault(FileCall::FLUSH, [&](int before) -> std::optional<int> {
                EXPECT_EQ(before == 0 ? size : 5, std::filesystem::file_size(folder.path("link")));
                return std::nullopt;
            });
            EXPECT_TRUE(files::replace(folder.path("link"), "bytes"));
            EXPECT_EQ(2, fault.calls());
        }
        EXPECT_EQ("bytes", get(folder.path("target")));
    }
}

TEST(FilesReplace, RestoresALargeTargetOfALink) {
    constexpr std::size_t LARGE = 17 << 20;
    const TemporaryFolder folder;
    put(folder.path("target"), "a long old text");
    std::filesystem::resize_file(folder.path("target"), LARGE);
    std::filesystem::create_symlink("target", folder.path("link"));
    for (const FileCall call : {FileCall::FLUSH, FileCall::CUT}) {
        SCOPED_TRACE(static_cast<int>(call));
        {
            const FileFault fault(call, EIO);
            EXPECT_FALSE(files::replace(folder.path("link"), "bytes"));
        }
        EXPECT_EQ(LARGE, std::filesystem::file_size(folder.path("target")));
        std::string start(15, '\0');
        std::ifstream(folder.path("target")).read(start.data(), 15);
        EXPECT_EQ("a long old text", start);
    }
}

TEST(FilesReplace, CountsTheNewBytesAsWrittenWhenALargeOldEndIsGone) {
    const TemporaryFolder folder;
    put(folder.path("target"), "old");
    std::filesystem::resize_file(folder.path("target"), 17 << 20);
    std::filesystem::create_symlink("target", folder.path("link"));
    {
        const FileFault fault(FileCall::FLUSH, EIO, 1);
        EXPECT_TRUE(files::replace(folder.path("link"), "bytes"));
    }
    EXPECT_EQ("bytes", get(folder.path("target")));
}

TEST(FilesReplace, WritesOverAFileInAFolderThatTakesNoNewOne) {
    for (const std::string old : {"", "old", "a longer old text"}) {
        SCOPED_TRACE(old);
        const ClosedFolder folder(old);
        const ino_t before = stateOf(folder.file()).st_ino;
        {
            const OrdinaryUser user;
            EXPECT_TRUE(files::replace(folder.file(), "new text"));
        }
        EXPECT_EQ("new text", get(folder.file()));
        EXPECT_EQ(before, stateOf(folder.file()).st_ino);
        EXPECT_EQ(std::vector<std::string>{"file"}, namesIn(folder.closed()));
    }
}

TEST(FilesReplace, WritesOverAFileThatItMayNotRead) {
    const ClosedFolder folder("a longer old text");
    ASSERT_EQ(0, ::chmod(folder.file().c_str(), 0222));
    {
        const OrdinaryUser user;
        EXPECT_TRUE(files::replace(folder.file(), "new text"));
    }
    ASSERT_EQ(0, ::chmod(folder.file().c_str(), 0666));
    EXPECT_EQ("new text", get(folder.file()));
}

TEST(FilesReplace, KeepsTheLengthOfAFileThatItMayNotReadWhenWritingOverFails) {
    const ClosedFolder folder("a longer old text");
    ASSERT_EQ(0, ::chmod(folder.file().c_str(), 0222));
    {
        const OrdinaryUser user;
        const FileFault fault(FileCall::FLUSH, EIO);
        EXPECT_FALSE(files::replace(folder.file(), "new text"));
        EXPECT_FALSE(files::replace(folder.file(), "a text longer than that"));
    }
    ASSERT_EQ(0, ::chmod(folder.file().c_str(), 0666));
    EXPECT_EQ("a text longer tha", get(folder.file()));
}

TEST(FilesReplace, RestoresTheOldBytesWhenWritingOverFails) {
    const std::string old(1500, 'o');
    const ClosedFolder folder(old);
    for (const std::size_t size : {1200U, 2000U}) {
        SCOPED_TRACE(size);
        {
            const OrdinaryUser user;
            const FileSizeLimit limit(1000);
            EXPECT_FALSE(files::replace(folder.file(), std::string(size, 'x')));
        }
        EXPECT_EQ(old, get(folder.file()));
    }
}

TEST(FilesReplace, MakesNoFileInAFolderThatTakesNone) {
    const ClosedFolder folder("old");
    const OrdinaryUser user;
    EXPECT_FALSE(files::replace(folder.closed() + "/other", "new"));
    EXPECT_EQ(std::vector<std::string>{"file"}, namesIn(folder.closed()));
}

TEST(FilesReplace, WritesOverAnothersFileInAStickyFolder) {
    const TemporaryFolder folder;
    put(folder.path("file"), "old");
    ASSERT_EQ(0, ::chmod(folder.path("file").c_str(), 0666));
    ASSERT_EQ(0, ::chmod(folder.path().c_str(), 01777));
    {
        const OrdinaryUser user;
        EXPECT_TRUE(files::replace(folder.path("file"), "new"));
    }
    EXPECT_EQ("new", get(folder.path("file")));
    EXPECT_EQ(std::vector<std::string>{"file"}, namesIn(folder.path()));
}

TEST(FilesReplace, LeavesAFileThatIsProtectedAgainstWriting) {
    const TemporaryFolder folder;
    put(folder.path("file"), "old");
    ASSERT_EQ(0, ::chmod(folder.path("file").c_str(), 0444));
    ASSERT_EQ(0, ::chmod(folder.path().c_str(), 0777));
    const OrdinaryUser user;
    EXPECT_FALSE(files::replace(folder.path("file"), "new"));
    EXPECT_EQ("old", get(folder.path("file")));
    EXPECT_EQ(std::vector<std::string>{"file"}, namesIn(folder.path()));
}

TEST(FilesResolve, GivesThePlainFileThatALinkLeadsTo) {
    const TemporaryFolder folder;
    const std::filesystem::path real = std::filesystem::canonical(folder.path());
    std::filesystem::create_directory(folder.path("folder"));
    put(folder.path("folder/file"), "text");
    std::filesystem::create_symlink("folder/file", folder.path("link"));
    std::filesystem::create_symlink("../link", folder.path("folder/link to link"));
    EXPECT_EQ((real / "folder/file").string(), files::resolve(folder.path("link")));
    EXPECT_EQ((real / "folder/file").string(), files::resolve(folder.path("folder/link to link")));
}

TEST(FilesResolve, LeavesEveryOtherPathAsItIs) {
    const TemporaryFolder folder;
    std::filesystem::create_directory(folder.path("folder"));
    put(folder.path("file"), "text");
    std::filesystem::create_symlink("folder", folder.path("link to folder"));
    std::filesystem::create_symlink("/dev/null", folder.path("link to device"));
    std::filesystem::create_symlink("nowhere", folder.path("dangling"));
    std::filesystem::create_symlink("circle", folder.path("circle"));
    for (const std::string& path :
         {folder.path("file"), folder.path("folder/../file"), folder.path("folder"),
          folder.path("link to folder"), folder.path("link to folder/../file"),
          folder.path("link to device"), folder.path("dangling"), folder.path("circle"),
          folder.path("absent"), folder.path("file") + std::string("\0tail", 5), std::string()}) {
        SCOPED_TRACE(path);
        EXPECT_EQ(path, files::resolve(path));
    }
}

TEST(FilesResolve, LetsTheTargetOfALinkBeReplacedBesideItself) {
    const TemporaryFolder folder;
    std::filesystem::create_directory(folder.path("folder"));
    put(folder.path("folder/file"), "a longer old text");
    std::ifstream old(folder.path("folder/file"));
    std::filesystem::create_symlink("folder/file", folder.path("link"));
    EXPECT_TRUE(files::replace(files::resolve(folder.path("link")), "new"));
    EXPECT_EQ("folder/file", std::filesystem::read_symlink(folder.path("link")));
    EXPECT_EQ("new", get(folder.path("folder/file")));
    EXPECT_EQ("a longer old text", std::string(std::istreambuf_iterator<char>(old), {}));
    EXPECT_EQ(std::vector<std::string>{"file"}, namesIn(folder.path("folder")));
}

TEST(Files, AreReplacedByRenamingOnly) {
    const TemporaryFolder folder;
    const std::string path = folder.path("file");
    EXPECT_TRUE(files::replaceByRename(path, "first"));
    EXPECT_EQ("first", get(path));
    ASSERT_EQ(0, ::chmod(path.c_str(), 0640));
    ASSERT_EQ(0, ::link(path.c_str(), folder.path("other").c_str()));
    // What a killed process has left is in nobody's way.
    put(folder.path(".file.new"), "half of some longer text");
    EXPECT_TRUE(files::replaceByRename(path, "new"));
    EXPECT_EQ("new", get(path));
    EXPECT_EQ("first", get(folder.path("other")));
    EXPECT_EQ(0640U, modeOf(path));
    EXPECT_EQ((std::vector<std::string>{"file", "other"}), namesIn(folder.path()));
}

TEST(Files, AreReplacedByRenamingWhoeverOwnsThem) {
    const TemporaryFolder folder;
    put(folder.path("file"), "old");
    const auto before = stateOf(folder.path("file")).st_ino;
    const FileFault fault(FileCall::GIVE_OWNER, EPERM);
    EXPECT_TRUE(files::replaceByRename(folder.path("file"), "new"));
    EXPECT_EQ(1, fault.calls());
    EXPECT_EQ("new", get(folder.path("file")));
    EXPECT_NE(before, stateOf(folder.path("file")).st_ino);
}

TEST(Files, StayWhereRenamingFails) {
    for (const FileCall call : {FileCall::MAKE_NEW, FileCall::FLUSH, FileCall::RENAME}) {
        const TemporaryFolder folder;
        put(folder.path("file"), "old");
        const auto before = stateOf(folder.path("file")).st_ino;
        {
            const FileFault fault(call, EIO);
            EXPECT_FALSE(files::replaceByRename(folder.path("file"), "new"));
        }
        EXPECT_EQ("old", get(folder.path("file")));
        EXPECT_EQ(before, stateOf(folder.path("file")).st_ino);
        EXPECT_EQ(std::vector<std::string>{"file"}, namesIn(folder.path()));
    }
}

TEST(Files, AreNotReplacedByRenamingIfTheyAreNoPlainOnes) {
    const TemporaryFolder folder;
    put(folder.path("file"), "old");
    std::filesystem::create_symlink("file", folder.path("link"));
    std::filesystem::create_directory(folder.path("folder"));
    for (const char* name : {"link", "folder", "folder/", "absent/file"})
        EXPECT_FALSE(files::replaceByRename(folder.path(name), "new")) << name;
    EXPECT_FALSE(files::replaceByRename("", "new"));
    EXPECT_EQ("old", get(folder.path("file")));
    EXPECT_EQ((std::vector<std::string>{"file", "folder", "link"}), namesIn(folder.path()));
}

}  // namespace
