// Reading a case's folder, and what is refused there so that nothing is silently ignored.
#include "tests/golden/GoldenCase.h"

#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

using tavik::golden::Files;
using tavik::golden::findCases;
using tavik::golden::GoldenCase;
using tavik::golden::readCase;
using tavik::golden::splitWords;
using tavik::testing::TemporaryFolder;
using Words = std::vector<std::string>;

void put(const TemporaryFolder& folder, const Files& files) {
    for (const auto& [name, bytes] : files) {
        std::filesystem::create_directories((folder.path() / name).parent_path());
        std::ofstream(folder.path(name), std::ios::binary) << bytes;
    }
}

GoldenCase readFrom(const Files& files) {
    const TemporaryFolder folder;
    put(folder, files);
    return readCase(folder.path());
}

/// Why the case is refused; empty if it isn't.
std::string refusalOf(const Files& files) {
    try {
        readFrom(files);
    } catch (const std::runtime_error& error) {
        return error.what();
    }
    return "";
}

TEST(SplitWords, CutsAtBlanksOutsideQuotes) {
    EXPECT_EQ(Words{}, splitWords(""));
    EXPECT_EQ(Words{}, splitWords("   "));
    EXPECT_EQ((Words{"show", "-norvossd", "1"}), splitWords(" show  -norvossd 1 "));
    EXPECT_EQ((Words{"a b", "", "it's", "\"", "a=b c", "back\\slash"}),
              splitWords("'a b' '' \"it's\" '\"' a='b c' back\\slash"));
}

TEST(SplitWords, RefusesAQuoteWithoutAnEnd) {
    EXPECT_THROW(splitWords("a 'b"), std::runtime_error);
    EXPECT_THROW(splitWords("\""), std::runtime_error);
}

TEST(ReadCase, TakesASmallCaseWithItsDefaults) {
    const GoldenCase read = readFrom({{"cmd", "version\n"}, {"out", "text\n"}});
    EXPECT_EQ(Words{"version"}, read.words);
    EXPECT_EQ("text\n", read.out);
    EXPECT_EQ("", read.err);
    EXPECT_EQ(0, read.code);
    EXPECT_EQ(std::nullopt, read.input);
    EXPECT_FALSE(read.isInputClosed);
    EXPECT_EQ(std::nullopt, read.columns);
    EXPECT_EQ((Files{{"opt", "full"}}), read.variants);
    EXPECT_EQ(std::nullopt, read.calls);
    EXPECT_EQ("<?xml version=\"1.0\" encoding=\"utf-8\"?>"
              "<Object category=\"attributeList\" name=\"TAVIK Config\">"
              "<Property category=\"attribute\" displayName=\"Enable Log\" name=\"EnableLog\""
              " size=\"6\" type=\"string\" value=\"false\"/>"
              "<Property category=\"attribute\" displayName=\"Enable LSI Adapter\""
              " name=\"EnableLSIAdapter\" size=\"6\" type=\"string\" value=\"false\"/>"
              "<Property category=\"attribute\" displayName=\"Log File\" name=\"LogFile\""
              " size=\"20\" type=\"string\" value=\"/var/log/ORVELI.log\"/>"
              "</Object>",
              read.config);
    EXPECT_EQ(read.config, read.configAfter);
}

TEST(ReadCase, TakesEveryFile) {
    const GoldenCase read = readFrom({{"cmd", "a 'b c'"},
                                      {"out", "o"},
                                      {"err", "e"},
                                      {"code", "201\n"},
                                      {"out.json", "j"},
                                      {"out.esx", "x"},
                                      {"stdin", "Y"},
                                      {"columns", "40\n"},
                                      {"library", "exe"},
                                      {"reply.xml", "r"},
                                      {"reply.2.xml", "s"},
                                      {"request.xml", "q"},
                                      {"request.2.xml", "p"},
                                      {"standin/code", "c"},
                                      {"calls", "l"},
                                      {"config", "f"},
                                      {"config.after", "g"},
                                      {"files/a.bin", "b"}});
    EXPECT_EQ((Words{"a", "b c"}), read.words);
    EXPECT_EQ(201, read.code);
    EXPECT_EQ((Files{{"esx", "x"}, {"json", "j"}}), read.outByFormat);
    EXPECT_EQ("Y", read.input);
    EXPECT_EQ(40, read.columns);
    EXPECT_EQ((Files{{"exe", "full"}}), read.variants);
    EXPECT_EQ((Files{{"code", "c"}, {"reply.2.xml", "s"}, {"reply.xml", "r"}}), read.orders);
    EXPECT_EQ((Files{{"request.2.xml", "p"}, {"request.xml", "q"}}), read.requests);
    EXPECT_EQ("l", read.calls);
    EXPECT_EQ("f", read.config);
    EXPECT_EQ("g", read.configAfter);
    EXPECT_EQ((Files{{"a.bin", "b"}}), read.files);
}

TEST(ReadCase, UnderstandsWhereTheLibraryIs) {
    const std::vector<std::pair<std::string, Files>> rows{
        {"none", {}},
        {"opt\n", {{"opt", "full"}}},
        {"both", {{"exe", "full"}, {"opt", "full"}}},
        {"broken", {{"opt", "broken"}}},
        {"without-Load", {{"opt", "without-Load"}}},
        {"exe:full opt:broken", {{"exe", "full"}, {"opt", "broken"}}},
    };
    for (const auto& [words, variants] : rows) {
        SCOPED_TRACE(words);
        EXPECT_EQ(variants, readFrom({{"cmd", ""}, {"out", ""}, {"library", words}}).variants);
    }
}

TEST(ReadCase, UnderstandsAnAbsentConfiguration) {
    const GoldenCase read = readFrom({{"cmd", ""}, {"out", ""}, {"config.absent", ""}});
    EXPECT_EQ(std::nullopt, read.config);
    EXPECT_EQ(std::nullopt, read.configAfter);
    const GoldenCase made =
        readFrom({{"cmd", ""}, {"out", ""}, {"config.absent", ""}, {"config.after", "new"}});
    EXPECT_EQ(std::nullopt, made.config);
    EXPECT_EQ("new", made.configAfter);
    const GoldenCase gone =
        readFrom({{"cmd", ""}, {"out", ""}, {"config", "old"}, {"config.after.absent", ""}});
    EXPECT_EQ("old", gone.config);
    EXPECT_EQ(std::nullopt, gone.configAfter);
    const GoldenCase folder = readFrom({{"cmd", ""}, {"out", ""}, {"config.folder", ""}});
    EXPECT_TRUE(folder.isConfigFolder);
    EXPECT_EQ(std::nullopt, folder.config);
}

TEST(ReadCase, RefusesWhatItDoesNotUnderstand) {
    const std::vector<std::pair<std::string, Files>> rows{
        {"no file 'cmd'", {{"out", ""}}},
        {"no file 'out'", {{"cmd", ""}}},
        {"'cmd' has several lines", {{"cmd", "a\nb\n"}, {"out", ""}}},
        {"unknown file 'output'", {{"cmd", ""}, {"out", ""}, {"output", ""}}},
        {"unknown file 'out.csv'", {{"cmd", "a"}, {"out", ""}, {"out.csv", ""}}},
        {"unknown file 'sub/out'", {{"cmd", ""}, {"out", ""}, {"sub/out", ""}}},
        {"no verb to put '-output' behind", {{"cmd", ""}, {"out", ""}, {"out.json", ""}}},
        {"'code' is no number", {{"cmd", ""}, {"out", ""}, {"code", "-1"}}},
        {"'code' is no number", {{"cmd", ""}, {"out", ""}, {"code", ""}}},
        {"'columns' is no number", {{"cmd", ""}, {"out", ""}, {"columns", "wide"}}},
        {"'columns' of a closed 'stdin'",
         {{"cmd", ""}, {"out", ""}, {"columns", "4"}, {"stdin.closed", ""}}},
        {"'stdin' is there and closed",
         {{"cmd", ""}, {"out", ""}, {"stdin", ""}, {"stdin.closed", ""}}},
        {"'library' has no place lib", {{"cmd", ""}, {"out", ""}, {"library", "lib:full"}}},
        {"'config' is there and absent",
         {{"cmd", ""}, {"out", ""}, {"config", ""}, {"config.absent", ""}}},
        {"'config.after' is there and absent",
         {{"cmd", ""}, {"out", ""}, {"config.after", ""}, {"config.after.absent", ""}}},
    };
    for (const auto& [reason, files] : rows)
        EXPECT_EQ(reason, refusalOf(files));
}

TEST(FindCases, FindsTheFoldersWithFilesAndTheEmptyOnes) {
    const TemporaryFolder folder;
    put(folder, {{"a/one/cmd", ""}, {"a/one/files/x", ""}, {"a/two/out", ""}, {"b/cmd", ""}});
    std::filesystem::create_directories(folder.path() / "c" / "empty");
    EXPECT_EQ((std::vector<std::filesystem::path>{folder.path() / "a" / "one",
                                                  folder.path() / "a" / "two", folder.path() / "b",
                                                  folder.path() / "c" / "empty"}),
              findCases(folder.path()));
}

}  // namespace
