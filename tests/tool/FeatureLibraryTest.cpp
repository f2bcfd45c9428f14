// The link to the feature library: every way in which it may fail, and what crosses it.
#include "tool/FeatureLibrary.h"

#include "tests/tool/LibraryFixture.h"

#include <gtest/gtest.h>

#include <sys/resource.h>

#include <filesystem>
#include <functional>
#include <string>

namespace tavik::norvossd {
namespace {

class FeatureLibraryTest : public tavik::testing::LibraryFixture {
protected:
    /// The text of the failure to load, or what `use` makes of the loaded library.
    static std::string load(const std::function<std::string(FeatureLibrary&)>& use = nullptr) {
        return inChild([&use]() -> std::string {
            FeatureLibrary library;
            if (const auto failure = library.load()) {
                return std::to_string(failure->getErrorCode()) + " " + failure->outputText() +
                       (library.canSend() || library.canReceive() || library.hasLogger()
                            ? " but bound"
                            : "");
            }
            return use ? use(library) : "loaded";
        });
    }

    /// What one message brings back: "code 0: text", "code 0, no data" or a failure's code alone.
    static std::string exchange(const std::string& request) {
        return load([&request](FeatureLibrary& library) {
            return describe(library.receive(library.send(request)));
        });
    }

    static std::string describe(const FeatureLibrary::Answer& answer) {
        if (answer.code != 0) return "code " + std::to_string(answer.code);
        return answer.hasData ? "code 0: " + answer.text : "code 0, no data";
    }
};

TEST_F(FeatureLibraryTest, IsNotFound) {
    EXPECT_EQ(load(), "1 Error: Failed to find valid library: libNorvo.SSDFeatures.so.2.0.0");
}

TEST_F(FeatureLibraryTest, IsNotFoundAtTheEndOfABrokenLink) {
    std::filesystem::create_symlink("nowhere", "opt/libNorvo.SSDFeatures.so.2.0.0");

    EXPECT_EQ(load(), "1 Error: Failed to find valid library: libNorvo.SSDFeatures.so.2.0.0");
}

TEST_F(FeatureLibraryTest, DoesNotOpenIfTheFileIsNoLibrary) {
    install("broken");
    EXPECT_EQ(load(), "1 Error: Failed to open connection to ORVEL Interface.");

    std::filesystem::remove("opt/libNorvo.SSDFeatures.so.2.0.0");
    put("opt/libNorvo.SSDFeatures.so.2.0.0", "");
    EXPECT_EQ(load(), "1 Error: Failed to open connection to ORVEL Interface.");
}

TEST_F(FeatureLibraryTest, IsRefusedForAnotherVersionBeforeAnyOtherCall) {
    install("full");
    const std::string versions[] = {"0",       "1",         "20000399",   "20000401",
                                    "2000040", "200004000", "4314967696", "18446744073709551615"};
    for (const std::string& version : versions) {
        SCOPED_TRACE(version);
        clearOrders();
        order("version", version);
        EXPECT_EQ(load(), "1 Error: Invalid ORVEL Interface version.");
        EXPECT_EQ(calls(), "GetVer() = " + version + "\n");
    }
}

TEST_F(FeatureLibraryTest, IsRefusedWithoutAVersion) {
    install("without-GetVer");

    EXPECT_EQ(load(), "1 Error: Invalid ORVEL Interface version.");
    EXPECT_EQ(calls(), "");
}

TEST_F(FeatureLibraryTest, IsRefusedWithoutARequiredExport) {
    for (const std::string name : {"Load", "SendXMLMessage", "ReceiveXMLMessage"}) {
        SCOPED_TRACE(name);
        clearOrders();
        install("without-" + name);
        EXPECT_EQ(load(), "1 Error: Failed to load ORVEL Interface functions.");
        EXPECT_EQ(calls(), "GetVer() = 20000400\n");
    }
}

TEST_F(FeatureLibraryTest, IsLoadedOnceAndUnloadedAtTheEnd) {
    install("full");

    EXPECT_EQ(load([](FeatureLibrary& library) {
                  return std::string(library.canSend() ? "send " : "") +
                         (library.canReceive() ? "receive " : "") +
                         (library.hasLogger() ? "log" : "");
              }),
              "send receive log");
    EXPECT_EQ(calls(), "GetVer() = 20000400\nLoad(1)\nUnload()\n");
}

TEST_F(FeatureLibraryTest, NeedsNoUnloadNoLoggerAndNoAdapterPath) {
    install("without-Unload");
    EXPECT_EQ(load(), "loaded");
    EXPECT_EQ(calls(), "GetVer() = 20000400\nLoad(1)\n");

    clearOrders();
    install("without-EnableLogger");
    EXPECT_EQ(load([](FeatureLibrary& library) {
                  return std::string(library.hasLogger() ? "logger" : "no logger");
              }),
              "no logger");
    EXPECT_EQ(calls(), "GetVer() = 20000400\nLoad(1)\nUnload()\n");

    clearOrders();
    install("without-SetLSIPath");
    EXPECT_EQ(load([](FeatureLibrary& library) {
                  library.announceAdapter();
                  return std::string("announced");
              }),
              "announced");
    EXPECT_EQ(calls(), "GetVer() = 20000400\nLoad(1)\nUnload()\n");
}

TEST_F(FeatureLibraryTest, CanBeLoadedAgain) {
    install("full");

    EXPECT_EQ(load([](FeatureLibrary& library) {
                  return library.load() == nullptr && library.canSend() ? std::string("again")
                                                                        : "refused";
              }),
              "again");
}

TEST_F(FeatureLibraryTest, CarriesBothTextsByteForByte) {
    install("full");
    const std::string request("<a>\0\xFF\n\"&</a>", 12);
    const std::string reply("answer\0\xFE\n", 9);
    order("reply.xml", reply);

    EXPECT_EQ(exchange(request), "code 0: " + reply);
    EXPECT_EQ(get("standin/request.xml"), request);
    EXPECT_EQ(calls(), "GetVer() = 20000400\n"
                       "Load(1)\n"
                       "SendXMLMessage(request.xml) handle 4294967297\n"
                       "ReceiveXMLMessage(4294967297, null, 0) = 8, size 9\n"
                       "ReceiveXMLMessage(4294967297, buffer, 9) = 0, size 9\n"
                       "Unload()\n");
}

TEST_F(FeatureLibraryTest, MakesNothingOfADishonestAnswer) {
    install("full");

    struct Row {
        const char* order;
        const char* value;
        std::string outcome;
        std::string calls;  ///< those that receive
    };

    const std::string handle = "ReceiveXMLMessage(4294967297, ";
    const std::string query = handle + "null, 0) = 8, size 6\n";
    const Row rows[] = {
        {"receive_codes", "-", "code 0: answer", query + handle + "buffer, 6) = 0, size 6\n"},
        {"receive_codes", "5", "code 5", handle + "null, 0) = 5, size 0\n"},
        {"receive_codes", "4294967295", "code 4294967295",
         handle + "null, 0) = 4294967295, size 0\n"},
        {"receive_codes", "0", "code 0, no data", handle + "null, 0) = 0, size 0\n"},
        {"receive_codes", "8 8", "code 8", query + handle + "buffer, 6) = 8, size 6\n"},
        {"receive_codes", "8 5", "code 5", query + handle + "buffer, 6) = 5, size 6\n"},
        // A size beyond the buffer, and sizes short of it.
        {"filled_size", "4294967295", "code 0: answer",
         query + handle + "buffer, 6) = 0, size 4294967295\n"},
        {"filled_size", "7", "code 0: answer", query + handle + "buffer, 6) = 0, size 7\n"},
        {"filled_size", "3", "code 0: ans", query + handle + "buffer, 6) = 0, size 3\n"},
        {"filled_size", "0", "code 0: ", query + handle + "buffer, 6) = 0, size 0\n"},
        // A size asked for that is none, too small or larger than needed.
        {"size_bias", "-6", "code 8",
         handle + "null, 0) = 8, size 0\n" + handle + "null, 0) = 8, size 0\n"},
        {"size_bias", "-1", "code 8",
         handle + "null, 0) = 8, size 5\n" + handle + "buffer, 5) = 8, size 5\n"},
        {"size_bias", "100", "code 0: answer",
         handle + "null, 0) = 8, size 106\n" + handle + "buffer, 106) = 0, size 6\n"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(std::string(row.order) + " " + row.value);
        clearOrders();
        order("reply.xml", "answer");
        order(row.order, row.value);
        EXPECT_EQ(exchange("<a/>"), row.outcome);
        EXPECT_EQ(calls(), "GetVer() = 20000400\n"
                           "Load(1)\n"
                           "SendXMLMessage(request.xml) handle 4294967297\n" +
                               row.calls + "Unload()\n");
    }
}

TEST_F(FeatureLibraryTest, GivesTheLibrarysCodeForAHandleThatItDoesNotKnow) {
    install("full");

    EXPECT_EQ(load([](FeatureLibrary& library) { return describe(library.receive(1)); }), "code 6");
}

TEST_F(FeatureLibraryTest, ReceivesLargeAnswers) {
    install("full");
    const std::string reply(5000000, 'x');
    order("reply.xml", reply);

    EXPECT_TRUE(exchange("<a/>") == "code 0: " + reply);
}

TEST_F(FeatureLibraryTest, GivesUpAnAnswerThatMemoryCantHold) {
#ifdef __SANITIZE_ADDRESS__
    GTEST_SKIP() << "the sanitizer needs its memory without a limit";
#endif
    install("full");
    order("reply.xml", "answer");
    order("size_bias", "4000000000");

    EXPECT_EQ(load([](FeatureLibrary& library) {
                  const rlimit limit = {1024UL * 1024 * 1024, RLIM_INFINITY};
                  ::setrlimit(RLIMIT_AS, &limit);
                  return describe(library.receive(library.send("<a/>")));
              }),
              "code 8");
}

TEST_F(FeatureLibraryTest, SwitchesTheLibrarysLogOn) {
    install("full");

    struct Row {
        const char* code;
        const char* outcome;
    };

    // Only the code for invalid input is a refusal.
    const Row rows[] = {{"0", "taken"}, {"6", "refused"}, {"5", "taken"}, {"4294967295", "taken"}};
    for (const Row& row : rows) {
        SCOPED_TRACE(row.code);
        clearOrders();
        order("enable_logger_code", row.code);
        EXPECT_EQ(load([](FeatureLibrary& library) {
                      return std::string(library.enableLog("/no/such/folder/a b.log") ? "taken"
                                                                                      : "refused");
                  }),
                  row.outcome);
        EXPECT_EQ(calls(), std::string("GetVer() = 20000400\n"
                                       "Load(1)\n"
                                       "EnableLogger(\"/no/such/folder/a b.log\", 0, 1) = ") +
                               row.code + "\nUnload()\n");
    }
}

TEST_F(FeatureLibraryTest, AnnouncesTheAdapterUntilAPathIsTaken) {
    install("full");
    const std::string beside =
        "SetLSIPath(\"" + std::filesystem::read_symlink("/proc/self/exe").parent_path().string() +
        "/libLSI.AdapterAPI.so.4.02\") = ";
    const std::string installed = "SetLSIPath(\"/usr/lib/tavik/libLSI.AdapterAPI.so.4.02\") = ";

    struct Row {
        const char* answers;
        std::string calls;
    };

    const Row rows[] = {
        {"true true", beside + "true\n"},
        {"false true", beside + "false\n" + installed + "true\n"},
        {"false false", beside + "false\n" + installed + "false\n"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.answers);
        clearOrders();
        order("set_lsi_path", row.answers);
        EXPECT_EQ(load([](FeatureLibrary& library) {
                      library.announceAdapter();
                      return std::string("announced");
                  }),
                  "announced");
        EXPECT_EQ(calls(), "GetVer() = 20000400\nLoad(1)\n" + row.calls + "Unload()\n");
    }
}

TEST_F(FeatureLibraryTest, CallsNothingUntilItIsLoaded) {
    install("full");

    EXPECT_EQ(inChild([] {
                  const FeatureLibrary library;
                  return std::string(
                      library.canSend() || library.canReceive() || library.hasLogger() ? "bound"
                                                                                       : "unbound");
              }),
              "unbound");
    EXPECT_EQ(calls(), "");
}

}  // namespace
}  // namespace tavik::norvossd
