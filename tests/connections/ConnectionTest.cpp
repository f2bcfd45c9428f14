// The connection to a shared library, over the real loader, and what it says in the log.
#include "connections/linux/connection_dll_linux/Connection.h"

#include "core/GlobalLogging.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <dlfcn.h>

#include <cerrno>
#include <filesystem>
#include <fstream>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

// The linker leads the calls of `dlclose` here: otherwise nothing shows that a library which stays
// mapped was closed, and nothing makes the loader fail at it.
extern "C" {
int __real_dlclose(void* handle);  // NOLINT(bugprone-reserved-identifier): the linker's name
int __wrap_dlclose(void* handle);  // NOLINT(bugprone-reserved-identifier): the linker's name
}

namespace {

std::vector<void*> closedHandles;
int closeError = 0;  ///< `errno` of a `dlclose` that is to fail, 0 to let it pass

}  // namespace

int __wrap_dlclose(void* handle) {  // NOLINT(bugprone-reserved-identifier): the linker's name
    closedHandles.push_back(handle);
    if (closeError == 0) return __real_dlclose(handle);
    errno = closeError;
    return -1;
}

namespace {

namespace logging = orvel::core::global_logging;
using orvel::connections::dll::Connection;
using orvel::core::Status;
using tavik::testing::TemporaryFolder;

const std::string SAMPLE = SAMPLE_LIBRARY;

/// Shows the loader's handle.
class OpenedConnection : public Connection {
public:
    using Connection::Connection;

    void* getHandle() const { return handle; }
};

class ConnectionTest : public ::testing::Test {
public:
    ConnectionTest() {
        logging::initialize();
        logging::enableString();
        logging::enable();
        closedHandles.clear();
    }

    ~ConnectionTest() override {
        logging::disable();
        logging::disableString();
        closeError = 0;
    }

protected:
    /// The log since the last call, each line without its time and with a "#" for the number of
    /// the source line.
    static std::vector<std::string> takeLog() {
        std::istringstream log(logging::getString()->str());
        logging::clearString();
        std::vector<std::string> lines;
        for (std::string line; std::getline(log, line);) {
            line.erase(0, line.find('['));
            const std::size_t open = line.find('(');
            line.replace(open + 1, line.find(')') - open - 1, "#");
            lines.push_back(line);
        }
        return lines;
    }
};

using Lines = std::vector<std::string>;

const std::string CLOSED_LINE =
    "[debug] Connection.cpp(#) isOpen: Handle is NULL. Connection must be closed.";

void expectSuccess(const Status& status) {
    EXPECT_EQ(0, status.getCategory());
    EXPECT_EQ(0, status.getCode());
    EXPECT_EQ("Completed successfully.", status.getMessage());
}

TEST_F(ConnectionTest, IsClosedAtFirst) {
    Connection connection(SAMPLE);
    EXPECT_EQ(SAMPLE, connection.getPath());
    EXPECT_EQ(Lines{}, takeLog());
    EXPECT_FALSE(connection.isOpen());
    EXPECT_EQ(Lines{CLOSED_LINE}, takeLog());
}

TEST_F(ConnectionTest, OpensALibrary) {
    Connection connection(SAMPLE);
    expectSuccess(connection.open());
    EXPECT_EQ(
        (Lines{CLOSED_LINE, "[debug] Connection.cpp(#) open: Opened connection to " + SAMPLE}),
        takeLog());
    EXPECT_TRUE(connection.isOpen());
    EXPECT_EQ(Lines{}, takeLog());
}

TEST_F(ConnectionTest, TakesASecondOpenForASuccess) {
    OpenedConnection connection(SAMPLE);
    expectSuccess(connection.open());
    void* const handle = connection.getHandle();
    takeLog();
    expectSuccess(connection.open());
    EXPECT_EQ(handle, connection.getHandle());
    EXPECT_EQ(Lines{"[debug] Connection.cpp(#) open: Connection already opened for " + SAMPLE},
              takeLog());
}

TEST_F(ConnectionTest, ReportsALibraryThatIsNotThereInTheSystemsCategory) {
    const TemporaryFolder folder;
    const std::string path = folder.path("absent.so");
    OpenedConnection connection(path);
    const Status status = connection.open();
    EXPECT_EQ(1, status.getCategory());
    EXPECT_EQ("System error.", status.getMessage());
    EXPECT_EQ(nullptr, connection.getHandle());
    EXPECT_EQ((Lines{CLOSED_LINE,
                     "[error] Connection.cpp(#) open: Unable to load " + path + ". System error: " +
                         path + ": cannot open shared object file: No such file or directory"}),
              takeLog());
}

TEST_F(ConnectionTest, ReportsAFileThatIsNoLibraryInTheSystemsCategory) {
    const TemporaryFolder folder;
    const std::string path = folder.path("text.so");
    std::ofstream(path) << std::string(4096, 'x');
    OpenedConnection connection(path);
    errno = 0;
    const Status status = connection.open();
    EXPECT_EQ(1, status.getCategory());
    EXPECT_EQ("System error.", status.getMessage());
    EXPECT_EQ(nullptr, connection.getHandle());
    EXPECT_EQ((Lines{CLOSED_LINE, "[error] Connection.cpp(#) open: Unable to load " + path +
                                      ". System error: " + path + ": invalid ELF header"}),
              takeLog());
    EXPECT_FALSE(connection.isOpen());
}

// Intended: the loader does not set `errno` for every failure, so an older value shows.
TEST_F(ConnectionTest, TakesTheSystemsCodeAsItIsAfterTheCall) {
    const TemporaryFolder folder;
    const std::string path = folder.path("text.so");
    std::ofstream(path) << std::string(4096, 'x');
    Connection connection(path);
    for (const int before : {0, EXDEV}) {
        errno = before;
        EXPECT_EQ(before, connection.open().getCode());
    }
}

TEST_F(ConnectionTest, OpensAfterAFailureWhatHasAppearedSince) {
    const TemporaryFolder folder;
    const std::string path = folder.path("late.so");
    Connection connection(path);
    EXPECT_EQ(1, connection.open().getCategory());
    std::filesystem::copy_file(SAMPLE, path);
    expectSuccess(connection.open());
}

TEST_F(ConnectionTest, ClosesQuietly) {
    OpenedConnection connection(SAMPLE);
    expectSuccess(connection.open());
    takeLog();
    void* const handle = connection.getHandle();
    expectSuccess(connection.close());
    EXPECT_EQ(std::vector<void*>{handle}, closedHandles);
    EXPECT_EQ(nullptr, connection.getHandle());
    EXPECT_EQ(Lines{}, takeLog());
    expectSuccess(connection.open());
}

TEST_F(ConnectionTest, TakesClosingAClosedConnectionForASuccess) {
    OpenedConnection connection(SAMPLE);
    expectSuccess(connection.close());
    EXPECT_TRUE(closedHandles.empty());
    EXPECT_EQ(nullptr, connection.getHandle());
    EXPECT_EQ(Lines{}, takeLog());
}

TEST_F(ConnectionTest, IsClosedAfterACloseThatFailed) {
    OpenedConnection connection(SAMPLE);
    expectSuccess(connection.open());
    takeLog();
    closeError = EBUSY;
    const Status status = connection.close();
    EXPECT_EQ(1, status.getCategory());
    EXPECT_EQ(EBUSY, status.getCode());
    EXPECT_EQ("System error.", status.getMessage());
    EXPECT_EQ(nullptr, connection.getHandle());
    EXPECT_EQ(Lines{}, takeLog());
}

TEST_F(ConnectionTest, KeepsTheLibraryMappedBehindClose) {
    // A copy: other tests leave the sample itself open.
    const TemporaryFolder folder;
    const std::string path = folder.path("kept.so");
    std::filesystem::copy_file(SAMPLE, path);
    Connection connection(path);
    expectSuccess(connection.open());
    auto* const answer = reinterpret_cast<int (*)()>(connection.loadFunction("answer"));
    expectSuccess(connection.close());
    ASSERT_NE(nullptr, ::dlopen(path.c_str(), RTLD_LAZY | RTLD_NOLOAD));
    ASSERT_NE(nullptr, answer);
    EXPECT_EQ(42, answer());
}

TEST_F(ConnectionTest, FindsAnExportedFunctionWithoutAWord) {
    Connection connection(SAMPLE);
    expectSuccess(connection.open());
    takeLog();
    auto* const answer = reinterpret_cast<int (*)()>(connection.loadFunction("answer"));
    ASSERT_NE(nullptr, answer);
    EXPECT_EQ(42, answer());
    EXPECT_EQ(Lines{}, takeLog());
}

TEST_F(ConnectionTest, ReportsAMissingFunctionByNullAndInTheLog) {
    Connection connection(SAMPLE);
    expectSuccess(connection.open());
    takeLog();
    EXPECT_EQ(nullptr, connection.loadFunction("question"));
    EXPECT_EQ(Lines{"[error] Connection.cpp(#) loadFunction: Failed to load question. OS error: " +
                    SAMPLE + ": undefined symbol: question"},
              takeLog());
}

TEST_F(ConnectionTest, TakesASymbolOfTheValueZeroForFound) {
    Connection connection(SAMPLE);
    expectSuccess(connection.open());
    takeLog();
    EXPECT_EQ(nullptr, connection.loadFunction("nothing"));
    EXPECT_EQ(Lines{}, takeLog());
}

TEST_F(ConnectionTest, ForgetsAnEarlierErrorOfTheLoader) {
    Connection connection(SAMPLE);
    expectSuccess(connection.open());
    ASSERT_EQ(nullptr, ::dlsym(RTLD_DEFAULT, "no such symbol"));
    takeLog();
    EXPECT_NE(nullptr, connection.loadFunction("answer"));
    EXPECT_EQ(Lines{}, takeLog());
}

TEST_F(ConnectionTest, ClonesToAClosedConnectionOfTheSamePath) {
    Connection connection(SAMPLE);
    expectSuccess(connection.open());
    const std::unique_ptr<orvel::core::Connection> clone = connection.clone();
    auto* const same = dynamic_cast<Connection*>(clone.get());
    ASSERT_NE(nullptr, same);
    EXPECT_EQ(SAMPLE, same->getPath());
    EXPECT_FALSE(same->isOpen());
    EXPECT_TRUE(connection.isOpen());
    expectSuccess(same->open());
    expectSuccess(same->close());
    EXPECT_TRUE(connection.isOpen());
}

TEST_F(ConnectionTest, AssignsThePathAndNotTheHandle) {
    Connection connection(SAMPLE);
    expectSuccess(connection.open());
    OpenedConnection other("other");
    other.assign(connection);
    EXPECT_EQ(SAMPLE, other.getPath());
    EXPECT_EQ(nullptr, other.getHandle());
}

TEST_F(ConnectionTest, AssignsNothingFromAConnectionOfAnotherKind) {
    Connection connection(SAMPLE);
    OpenedConnection other("other");
    other.assign(static_cast<const orvel::core::Connection&>(connection));
    EXPECT_EQ("other", other.getPath());
}

TEST_F(ConnectionTest, ClosesTheLibraryWithItsDestructionAndDropsTheStatus) {
    for (const int error : {0, EBUSY}) {
        closedHandles.clear();
        closeError = error;
        auto connection = std::make_unique<OpenedConnection>(SAMPLE);
        expectSuccess(connection->open());
        void* const handle = connection->getHandle();
        connection.reset();
        EXPECT_EQ(std::vector<void*>{handle}, closedHandles);
    }
}

}  // namespace
