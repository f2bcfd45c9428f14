#include "interfaces/orveli/shared_object/Exports.h"

#include "tests/interfaces/orveli/shared_object/OpenedLibrary.h"

#include <gtest/gtest.h>

#include <sys/resource.h>
#include <sys/stat.h>

#include <fstream>
#include <iterator>
#include <string>

namespace orvel::interfaces::orveli::shared_object {
namespace {

std::string readFile(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

class ExportsTest : public ::testing::Test {
protected:
    ~ExportsTest() override {
        if (isLoaded) library.unload();
    }

    void load() {
        ASSERT_EQ(library.load(1), 0U);
        isLoaded = true;
    }

    OpenedLibrary library;
    bool isLoaded = false;
};

TEST_F(ExportsTest, TheInterfaceHasItsVersion) {
    EXPECT_EQ(library.getVer(), 20000400U);
}

TEST_F(ExportsTest, NothingIsServedBeforeTheLibraryIsLoaded) {
    std::uint64_t handle = 7;
    EXPECT_EQ(library.send(SHOW, 5, &handle), 7U);
    EXPECT_EQ(handle, 0U);
    std::uint32_t size = 0;
    EXPECT_EQ(library.receive(1, nullptr, &size), 7U);
    library.unload();
    EXPECT_EQ(library.send(SHOW, 5, &handle), 7U);
}

TEST_F(ExportsTest, AnAnswerIsFetchedOnceAfterItsSizeWasAskedFor) {
    load();
    const std::uint64_t handle = library.sendText("no XML");
    std::uint32_t size = 0;
    EXPECT_EQ(library.receive(handle, nullptr, &size), 8U);
    const std::uint32_t needed = size;
    std::string buffer(needed, ' ');
    size = needed - 1;
    EXPECT_EQ(library.receive(handle, buffer.data(), &size), 8U);
    EXPECT_EQ(size, needed);
    EXPECT_EQ(library.receive(handle, buffer.data(), &size), 0U);
    EXPECT_TRUE(buffer.starts_with(R"(<?xml version="1.0" encoding="utf-8"?><Object )"));
    EXPECT_NE(buffer.find(R"(<Property name="Message" value="No input XML"/>)"), std::string::npos);
    EXPECT_EQ(library.receive(handle, buffer.data(), &size), 1U);
}

TEST_F(ExportsTest, AnUnknownHandleHasNoAnswer) {
    load();
    std::uint32_t size = 0;
    EXPECT_EQ(library.receive(0, nullptr, &size), 1U);
    EXPECT_EQ(library.receive(12345, nullptr, &size), 1U);
}

TEST_F(ExportsTest, NullPointersAndEndlessLengthsAreRefused) {
    load();
    std::uint64_t handle = 7;
    EXPECT_EQ(library.send(nullptr, 5, &handle), 6U);
    EXPECT_EQ(handle, 0U);
    EXPECT_EQ(library.send(SHOW, 0, &handle), 6U);
    EXPECT_EQ(library.send(SHOW, 5, nullptr), 6U);
    EXPECT_EQ(library.send(SHOW, 64 * 1024 * 1024 + 1, &handle), 6U);
    EXPECT_EQ(library.receive(1, nullptr, nullptr), 6U);
    EXPECT_EQ(library.enableLogger(nullptr, 5, 0, 1), 6U);
    EXPECT_EQ(library.enableLogger("x", 0, 0, 1), 6U);
}

#if !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__)  // which take no want of memory

TEST_F(ExportsTest, WantOfMemoryHasACodeOfItsOwn) {
    load();
    const std::string request(32 * 1024 * 1024, ' ');
    std::uint64_t handle = 7;
    rlimit limit = {};
    ASSERT_EQ(::getrlimit(RLIMIT_AS, &limit), 0);
    const rlimit nothingMore = {1, limit.rlim_max};
    ASSERT_EQ(::setrlimit(RLIMIT_AS, &nothingMore), 0);
    const std::uint32_t code =
        library.send(request.data(), static_cast<std::uint32_t>(request.size()), &handle);
    ASSERT_EQ(::setrlimit(RLIMIT_AS, &limit), 0);
    EXPECT_EQ(code, 12U);
    EXPECT_EQ(handle, 0U);
}

#endif

TEST_F(ExportsTest, ARequestIsReadByItsLengthAlone) {
    load();
    const std::string request = std::string(SHOW) + "<and more";
    const auto length = static_cast<std::uint32_t>(std::string(SHOW).size());
    std::uint64_t handle = 0;
    ASSERT_EQ(library.send(request.data(), length, &handle), 0U);
    std::uint32_t size = 0;
    library.receive(handle, nullptr, &size);
    std::string answer(size, ' ');
    ASSERT_EQ(library.receive(handle, answer.data(), &size), 0U);
    EXPECT_NE(answer.find("NVX4510A0001K1P6"), std::string::npos);
}

TEST_F(ExportsTest, EachLoadNeedsItsUnload) {
    load();
    ASSERT_EQ(library.load(1), 0U);
    const std::uint64_t handle = library.sendText("no XML");
    library.unload();
    std::uint32_t size = 0;
    EXPECT_EQ(library.receive(handle, nullptr, &size), 8U);
    library.unload();
    isLoaded = false;
    EXPECT_EQ(library.receive(handle, nullptr, &size), 7U);
}

TEST_F(ExportsTest, UnloadingForgetsTheAnswers) {
    load();
    const std::uint64_t handle = library.sendText("no XML");
    library.unload();
    ASSERT_EQ(library.load(1), 0U);
    EXPECT_NE(library.sendText("no XML"), handle);
    std::uint32_t size = 0;
    EXPECT_EQ(library.receive(handle, nullptr, &size), 1U);
}

TEST_F(ExportsTest, DrivesLiveInTheFolderThatTheEnvironmentNames) {
    const auto named = library.folder() / "elsewhere/drives";
    ::setenv("NORVO_SIMULATED_DRIVES", named.c_str(), 1);
    load();
    EXPECT_NE(library.ask(SHOW).find("NVX4510A0001K1P6"), std::string::npos);
    EXPECT_TRUE(std::filesystem::exists(named / "state.json"));
    EXPECT_FALSE(std::filesystem::exists(library.folder() / "simulated_drives"));
}

TEST_F(ExportsTest, TheLogGoesToTheEndOfTheFile) {
    load();
    const auto log = library.folder() / "norvo.log";
    std::ofstream(log) << "before\n";
    const std::string path = log.string();
    ASSERT_EQ(library.enableLogger(path.data(), static_cast<std::uint32_t>(path.size()), 0, 1), 0U);
    library.ask(SHOW);
    const std::string lines = readFile(log);
    EXPECT_TRUE(lines.starts_with("before\n")) << lines;
    EXPECT_NE(lines.find("run: Type = GetProperties\n"), std::string::npos) << lines;
    EXPECT_NE(lines.find("run: Method Name = NorvoSSD\n"), std::string::npos) << lines;
}

TEST_F(ExportsTest, ALogFileThatCannotBeOpenedIsRefused) {
    const std::string path = (library.folder() / "none/norvo.log").string();
    EXPECT_EQ(library.enableLogger(path.data(), static_cast<std::uint32_t>(path.size()), 0, 1), 6U);
    EXPECT_FALSE(std::filesystem::exists(path));
}

TEST_F(ExportsTest, APipeIsNoLogFile) {
    const std::string path = (library.folder() / "pipe").string();
    ASSERT_EQ(::mkfifo(path.c_str(), 0600), 0);
    EXPECT_EQ(library.enableLogger(path.data(), static_cast<std::uint32_t>(path.size()), 0, 1), 6U);
}

TEST_F(ExportsTest, NoAdapterLibraryIsOfUse) {
    EXPECT_EQ(library.setLsiPath("/usr/lib/x.so", 13), 0U);
    EXPECT_EQ(library.setLsiPath(nullptr, 0), 0U);
}

TEST_F(ExportsTest, AThousandRoundsOfLoadingLeaveNothingBehind) {
    for (int round = 0; round < 1000; ++round) {
        ASSERT_EQ(library.load(1), 0U);
        if (round % 50 == 0) library.ask(SHOW);
        library.unload();
        if (round % 10 != 0) continue;
        library.close();
        library.open();
    }
    load();
    EXPECT_NE(library.ask(SHOW).find("NVX4510A0001K1P6"), std::string::npos);
}

}  // namespace
}  // namespace orvel::interfaces::orveli::shared_object
