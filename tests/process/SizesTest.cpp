// Answers and command lines that are large, deep or not text, and limits of the process.
#include "tests/process/ToolFolder.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <set>
#include <string>
#include <vector>

namespace tavik::process {

namespace {

using testing::Ending;

constexpr int DEEPEST = 2048;

// The address sanitizer's frames are several times as large as the compiler's own.
#ifdef __SANITIZE_ADDRESS__
const std::string STACK = "--stack=8388608";
#else
const std::string STACK = "--stack=1048576";
#endif

const std::string NO_XML = "Error: ORVEL Interface failure receiving XML Response. "
                           "No valid data received.\n";

std::string repeat(const std::string& text, int count) {
    std::string all;
    all.reserve(text.size() * static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i)
        all += text;
    return all;
}

std::string tabs(int count) {
    return std::string(static_cast<std::size_t>(count), '\t');
}

/// An answer of that many levels of elements: the root, the output, and the rest named `n`.
std::string nested(int levels) {
    return answer(R"(<Object category="output">)" + repeat(R"(<Object name="n">)", levels - 2) +
                  repeat("</Object>", levels - 2) + "</Object>");
}

std::string nestedText(int depth) {
    return repeat("\n- n -\n", depth) + "\nNo results\n\n";
}

std::string nestedXml(int depth) {
    std::string text = "<>\n";
    for (int level = 1; level <= depth; ++level)
        text += tabs(level) + "<n>\n";
    for (int level = depth; level >= 1; --level)
        text += tabs(level) + "</n>\n";
    return text + "</>\n\n";
}

std::string nestedJson(int depth) {
    std::string text = "{\n";
    for (int level = 1; level <= depth; ++level)
        text += tabs(level) + "\"n\":\n" + tabs(level) + "{\n";
    for (int level = depth; level >= 1; --level)
        text += tabs(level) + "}\n";
    return text + "}\n";
}

/// Compares without printing megabytes.
void expectSame(const std::string& expected, const std::string& actual) {
    if (expected == actual) return;
    std::size_t at = 0;
    while (at < expected.size() && at < actual.size() && expected[at] == actual[at])
        ++at;
    ADD_FAILURE() << "differs at byte " << at << ": expected '" << expected.substr(at, 80)
                  << "', got '" << actual.substr(at, 80) << "'";
}

/// The pattern once for each drive, with its number for each `#`.
std::string forDrives(int count, const std::string& pattern) {
    std::string all;
    for (int drive = 0; drive < count; ++drive) {
        const std::string number = std::to_string(drive);
        for (const char character : pattern)
            if (character == '#')
                all += number;
            else
                all += character;
    }
    return all;
}

/// An answer of many drives, and how it prints.
struct ManyDrives {
    explicit ManyDrives(int count)
        : reply(answer(R"(<Object category="output">)" +
                       forDrives(count, R"-(<Object name="Drive" key="#">)-"
                                        R"-(<Property name="Index" value="#"/>)-"
                                        R"-(<Property name="Serial (SN)" value=")-" +
                                            value + R"("/></Object>)") +
                       "</Object>")),
          text(forDrives(count, "\n- Drive # -\n"
                                "\n"
                                "Index : #\n"
                                "Serial (SN) : " +
                                    value + "\n") +
               "\n"),
          xml("<>\n" +
              forDrives(count, "\t<Drive_#>\n"
                               "\t\t<Index>#</Index>\n"
                               "\t\t<Serial_SN>" +
                                   value +
                                   "</Serial_SN>\n"
                                   "\t</Drive_#>\n") +
              "</>\n\n"),
          json("{\n" + forDrives(count, "\t\"Drive #\":\n"
                                        "\t{\n"
                                        "\t\t\"Index\":#,\n"
                                        "\t\t\"Serial (SN)\":\"" +
                                            value +
                                            "\"\n"
                                            "\t},\n")) {
        json.erase(json.size() - 2);
        json += "\n}\n";
    }

    std::string value = std::string(180, 'v');
    std::string reply;
    std::string text;
    std::string xml;
    std::string json;
};

TEST(Answer, OfFiveMegabytesPrints) {
    const ManyDrives drives(20'000);
    const ToolFolder folder;
    folder.write("standin/reply.xml", drives.reply);
    expectSame(drives.text, folder.run({"show", "-norvossd"}).out);
}

TEST(Answer, OfManyDrivesPrintsInEveryFormat) {
    const ManyDrives drives(2000);
    const ToolFolder folder;
    folder.write("standin/reply.xml", drives.reply);
    expectSame(drives.text, folder.run({"show", "-norvossd"}).out);
    expectSame(drives.xml, folder.run({"show", "-o", "nvmxml", "-norvossd"}).out);
    expectSame(drives.json, folder.run({"show", "-o", "json", "-norvossd"}).out);
    EXPECT_EQ("\n", folder.run({"show", "-o", "esx", "-norvossd"}).out);
}

TEST(Answer, WithOneAttributeOfFiveMegabytesPrints) {
    const std::string value = repeat("0123456789", 500'000);
    const ToolFolder folder;
    folder.write("standin/reply.xml",
                 answer(R"(<Object category="output"><Property name="Long" value="x)" + value +
                        R"("/></Object>)"));
    expectSame("\nLong : x" + value + "\n\n", folder.run({"show", "-norvossd"}).out);
    expectSame("{\n\t\"Long\":\"x" + value + "\"\n}\n",
               folder.run({"show", "-o", "json", "-norvossd"}).out);
}

TEST(Answer, NestedToTheLimitPrintsInEveryFormat) {
    for (const int levels : {1000, DEEPEST}) {
        SCOPED_TRACE(levels);
        const int depth = levels - 2;
        const ToolFolder folder;
        folder.write("standin/reply.xml", nested(levels));
        const Ending ending = folder.run({"show", "-norvossd"});
        EXPECT_EQ(0, ending.exitCode);
        expectSame(nestedText(depth), ending.out);
        expectSame(nestedXml(depth), folder.run({"show", "-o", "nvmxml", "-norvossd"}).out);
        expectSame(nestedJson(depth), folder.run({"show", "-o", "json", "-norvossd"}).out);
        EXPECT_EQ("\n", folder.run({"show", "-o", "esx", "-norvossd"}).out);
    }
}

TEST(Answer, NestedBeyondTheLimitIsNoXml) {
    for (const int levels : {DEEPEST + 1, 100'000, 1'000'000}) {
        SCOPED_TRACE(levels);
        const ToolFolder folder;
        folder.write("standin/reply.xml", nested(levels));
        const Ending ending = folder.run({"show", "-norvossd"});
        EXPECT_EQ(0, ending.signal);
        EXPECT_EQ(10, ending.exitCode);
        EXPECT_EQ(NO_XML, ending.out);
        EXPECT_EQ("", ending.err);
    }
}

TEST(Answer, NestedToTheLimitPrintsOnASmallStack) {
    const ToolFolder folder;
    folder.write("standin/reply.xml", nested(DEEPEST));
    const Ending ending = testing::run(
        folder.other("/usr/bin/prlimit", {STACK, "./tavik", "show", "-o", "json", "-norvossd"}));
    EXPECT_EQ(0, ending.exitCode);
    expectSame(nestedJson(DEEPEST - 2), ending.out);
}

TEST(Answer, EndsAtItsFirstNulByte) {
    const std::string whole =
        answer(R"(<Object category="output"><Property name="A" value="1"/></Object>)");
    const std::string nul(1, '\0');
    const std::size_t inValue = whole.find("Completed") + 3;
    const std::size_t betweenElements = whole.find("<Object category=\"output\"");

    struct Row {
        const char* name;
        std::string reply;
        int code;
        std::string out;
    };

    const Row rows[] = {
        {"behind the document", whole + nul + "<Object", 0, "\nA : 1\n\n"},
        {"many behind the document", whole + std::string(5000, '\0'), 0, "\nA : 1\n\n"},
        {"in a value", whole.substr(0, inValue) + nul + whole.substr(inValue), 10, NO_XML},
        {"between elements", whole.substr(0, betweenElements) + nul + whole.substr(betweenElements),
         10, NO_XML},
        {"first", nul + whole, 10, NO_XML},
        {"nothing else", std::string(1000, '\0'), 10, NO_XML},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        const ToolFolder folder;
        folder.write("standin/reply.xml", row.reply);
        const Ending ending = folder.run({"show", "-norvossd"});
        EXPECT_EQ(row.code, ending.exitCode);
        EXPECT_EQ(row.out, ending.out);
    }
}

TEST(CommandLine, OfAHundredThousandWordsIsAnswered) {
    const ToolFolder folder;
    std::vector<std::string> words{"show", "-display", "a"};
    while (words.size() < 100'000) {
        words.emplace_back(",");
        words.emplace_back("a");
    }
    words.emplace_back("-system");
    const Ending ending = folder.run(words);
    EXPECT_EQ(0, ending.exitCode);
    EXPECT_EQ("- TAVIK Config -\n"
              "a: Property does not exist.\n"
              "\n"
              "\n",
              ending.out);

    words = {"show", "-display", "n"};
    std::string missing = "n: Property does not exist.\n";
    for (int i = 0; i < 40'000; ++i) {
        words.emplace_back(",");
        words.push_back("n" + std::to_string(i));
        missing += words.back() + ": Property does not exist.\n";
    }
    words.emplace_back("-system");
    expectSame("- TAVIK Config -\n" + missing + "\n\n", folder.run(words).out);

    std::vector<std::string> refused(100'000, "a");
    refused[0] = "version";
    const Ending refusal = folder.run(refused);
    EXPECT_EQ(201, refusal.exitCode);
    EXPECT_EQ("Syntax Error: Invalid command. Error at or around 'a'.\n"
              "Did you mean: \n"
              "version [-all|-a] [-display|-d (Property1,...)] [-help|-h]"
              " [-output|-o (text|nvmxml|json)]\n"
              "\n",
              refusal.out);
}

TEST(CommandLine, WithAWordOfOneHundredTwentyKilobytesIsAnswered) {
    const ToolFolder folder;
    folder.write("standin/reply.xml", answer(""));
    const std::string list = repeat("a,", 60'000);
    const Ending shown = folder.run({"show", "-display", list, "-system"});
    EXPECT_EQ(201, shown.exitCode);
    const Ending missing = folder.run({"show", "-display", list + "a", "-system"});
    EXPECT_EQ(0, missing.exitCode);
    EXPECT_EQ("- TAVIK Config -\n"
              "a: Property does not exist.\n"
              "\n"
              "\n",
              missing.out);

    const Ending target = folder.run({"show", "-norvossd", list});
    EXPECT_EQ(8, target.exitCode);
    EXPECT_EQ("Error: Invalid norvossd target\n", target.out);

    const std::string digits(120'000, '9');
    const Ending index = folder.run({"show", "-norvossd", digits});
    EXPECT_EQ(8, index.exitCode);
    EXPECT_EQ("Error: Index Out of Range.\n", index.out);

    const Ending bogus = folder.run({digits});
    EXPECT_EQ(201, bogus.exitCode);
    expectSame("Syntax Error: Invalid command. Error at or around '" + digits + "'.\n", bogus.out);

    const Ending commas = folder.run({std::string(120'000, ',')});
    EXPECT_EQ("Syntax Error: Invalid command. Error at or around ','.\n", commas.out);
}

TEST(CommandLine, MayHoldLineFeedsAndOtherControlCharacters) {
    const ToolFolder folder;
    const Ending ending = folder.run({"a\nb\r\x1b[0m\x01\x7f"});
    EXPECT_EQ(201, ending.exitCode);
    EXPECT_EQ("Syntax Error: Invalid command. Error at or around 'a\nb\r\x1b[0m\x01\x7f'.\n",
              ending.out);
    EXPECT_EQ("- TAVIK Config -\n"
              "a\nb: Property does not exist.\n"
              "\n"
              "\n",
              folder.run({"show", "-display", "a\nb", "-system"}).out);
}

TEST(FileSizeLimit, OfZeroIsAFailureToWriteAndNoMore) {
    const ToolFolder folder;
    folder.write(CONFIG, "garbage");
    folder.write("standin/reply.xml",
                 answer(R"(<Object category="output"><Object name="Nlog" key="S1">)"
                        R"(<Object category="payload" value="0102"/></Object></Object>)"));
    const auto limited = [&folder](std::vector<std::string> words) {
        words.insert(words.begin(), {"--fsize=0:0", "./tavik"});
        return testing::run(folder.other("/usr/bin/prlimit", words));
    };

    const Ending shown = limited({"show", "-system"});
    EXPECT_EQ(0, shown.signal);
    EXPECT_EQ(0, shown.exitCode);
    EXPECT_EQ("- TAVIK Config -\n"
              "EnableLog: false\n"
              "LogFile: /var/log/ORVELI.log\n"
              "\n"
              "\n",
              shown.out);
    const Ending set = limited({"set", "-system", "EnableLog=true"});
    EXPECT_EQ(0, set.signal);
    EXPECT_EQ(5, set.exitCode);
    EXPECT_EQ("Error: Failed to write TAVIK configuration file. opt/tavik_config.xml\n", set.out);
    EXPECT_EQ("garbage", folder.read(CONFIG)) << "the old file stays as it was";

    folder.write(CONFIG, DEFAULT_CONFIG);
    const Ending dumped = limited({"dump", "-nlog"});
    EXPECT_EQ(0, dumped.signal);
    EXPECT_EQ(0, dumped.exitCode);
    EXPECT_EQ("\nNlog_S1 : Error: Failed to write Nlog data to Nlog_S1.bin\n\n", dumped.out);
    EXPECT_EQ((std::set<std::string>{"libNorvo.SSDFeatures.so.2.0.0", "tavik_config.xml"}),
              folder.installed());
}

}  // namespace

}  // namespace tavik::process
