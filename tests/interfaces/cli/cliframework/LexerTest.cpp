// How words are cut and classified.
#include "interfaces/cli/cliframework/Lexer.h"

#include "tests/interfaces/cli/cliframework/CapturedLog.h"

#include <gtest/gtest.h>

namespace cli::framework {
namespace {

using Words = std::vector<std::string>;

Lexer driveLexer() {
    return Lexer({"show", "set", "show", "help"}, {"-norvossd", "-system"},
                 {"-display", "-d", "-all", "-a", "-output", "-o", "-help", "-h"},
                 {"EnableLog", "MaximumLBA", "Name", "verb"});
}

/// Each token as its text, "[", its type and "]".
Words cut(const Lexer& lexer, const Words& words) {
    Words texts;
    for (const Token& token : lexer.tokenize(words)) {
        texts.push_back(token.text + "[" + tokenTypeToString(token.tokenType) + "]");
    }
    return texts;
}

TEST(Lexer, CutsAndClassifiesWords) {
    struct Row {
        Words words;
        Words tokens;
    };

    const Row rows[] = {
        // samples
        {{"SHOW", "-NorvoSSD", "1"}, {"show[Verb]", "-norvossd[Target]", "1[Value]"}},
        {{"MaximumLBA=native"}, {"MaximumLBA[Property]", "=[Equal]", "native[Value]"}},
        {{"set=x"}, {"set[Verb]", "=[Equal]", "x[Value]"}},
        {{"-display", "a,b"}, {"-display[Option]", "a[Value]", ",[Comma]", "b[Value]"}},
        {{"-h"}, {"-h[Option]"}},
        {{"-bogus"}, {"-bogus[UNKNOWN]"}},
        {{"bogus"}, {"bogus[Value]"}},
        {{"-Bogus", "Bogus"}, {"-Bogus[UNKNOWN]", "Bogus[Value]"}},
        {{"enablelog"}, {"EnableLog[Property]"}},
        {{"-"}, {"-[UNKNOWN]"}},
        // cut at the first equals sign
        {{"A=b=c"}, {"A[Value]", "=[Equal]", "b=c[Value]"}},
        {{"=x"}, {"=x[Value]"}},
        {{"=x=y"}, {"=x=y[Value]"}},
        {{"="}, {"=[Equal]"}},
        {{"=="}, {"==[Value]"}},
        {{"A=="}, {"A[Value]", "=[Equal]", "=[Equal]"}},
        {{"A==="}, {"A[Value]", "=[Equal]", "==[Value]"}},
        {{"A="}, {"A[Value]", "=[Equal]"}},
        {{"Name", "=", "x"}, {"Name[Property]", "=[Equal]", "x[Value]"}},
        {{"x=-1"}, {"x[Value]", "=[Equal]", "-1[UNKNOWN]"}},
        {{"x=-all"}, {"x[Value]", "=[Equal]", "-all[Option]"}},
        // cut at commas
        {{"a,"}, {"a[Value]", ",[Comma]"}},
        {{",,a"}, {",[Comma]", ",[Comma]", "a[Value]"}},
        {{","}, {",[Comma]"}},
        {{"a,,b"}, {"a[Value]", ",[Comma]", ",[Comma]", "b[Value]"}},
        {{"show,-all"}, {"show[Verb]", ",[Comma]", "-all[Option]"}},
        {{"a,b=c,d"},
         {"a[Value]", ",[Comma]", "b[Value]", "=[Equal]", "c[Value]", ",[Comma]", "d[Value]"}},
        {{"=a,b"}, {"=a[Value]", ",[Comma]", "b[Value]"}},
        {{"=,a"}, {"=[Equal]", ",[Comma]", "a[Value]"}},
        // empty items vanish
        {{""}, {}},
        {{"", "show", ""}, {"show[Verb]"}},
        {{}, {}},
        // blanks are part of a word
        {{"show ", " "}, {"show [Value]", " [Value]"}},
        // no abbreviations
        {{"sho", "-norvo", "-disp"}, {"sho[Value]", "-norvo[UNKNOWN]", "-disp[UNKNOWN]"}},
        {{"norvossd", "display"}, {"norvossd[Value]", "display[Value]"}},
        // bytes beyond ASCII
        {{"\xFF\x80"}, {"\xFF\x80[Value]"}},
    };
    const Lexer lexer = driveLexer();
    for (const Row& row : rows) {
        SCOPED_TRACE(::testing::PrintToString(row.words));
        EXPECT_EQ(row.tokens, cut(lexer, row.words));
    }
}

TEST(Lexer, TakesTheWordsOfTheProcess) {
    const char* const arguments[] = {"show", "-d", "a,b"};
    const std::vector<Token> tokens = driveLexer().tokenize(3, arguments);
    ASSERT_EQ(5U, tokens.size());
    EXPECT_EQ("show", tokens[0].text);
    EXPECT_EQ(TokenType::Verb, tokens[0].tokenType);
    EXPECT_EQ("b", tokens[4].text);
    EXPECT_EQ(TokenType::Value, tokens[4].tokenType);
    EXPECT_TRUE(driveLexer().tokenize(0, arguments).empty());
    EXPECT_TRUE(driveLexer().tokenize(0, nullptr).empty());
    EXPECT_TRUE(driveLexer().tokenize(-1, arguments).empty());
}

TEST(Lexer, DashesTargetsAndOptionsThatLackOne) {
    const Lexer lexer({"run"}, {"disk", "-tape"}, {"all", "-a"}, {"size"});
    EXPECT_EQ((Words{"-disk[Target]", "disk[Value]", "-tape[Target]"}),
              cut(lexer, {"-disk", "disk", "-tape"}));
    EXPECT_EQ((Words{"-all[Option]", "all[Value]", "-a[Option]"}),
              cut(lexer, {"-all", "all", "-a"}));
    EXPECT_EQ((Words{"run[Verb]", "-run[UNKNOWN]", "size[Property]", "-size[UNKNOWN]"}),
              cut(lexer, {"run", "-run", "size", "-size"}));
}

TEST(Lexer, DashesAnEmptyEntryToo) {
    EXPECT_EQ((Words{"-[Option]"}), cut(Lexer({}, {}, {""}, {}), {"-"}));
}

TEST(Lexer, PrefersVerbThenTargetThenOptionThenProperty) {
    EXPECT_EQ((Words{"-x[Verb]"}), cut(Lexer({"-x"}, {"-x"}, {"-x"}, {"-x"}), {"-x"}));
    EXPECT_EQ((Words{"-x[Target]"}), cut(Lexer({}, {"-x"}, {"-x"}, {"-x"}), {"-x"}));
    EXPECT_EQ((Words{"-x[Option]"}), cut(Lexer({}, {}, {"-x"}, {"-x"}), {"-x"}));
    EXPECT_EQ((Words{"-x[Property]"}), cut(Lexer({}, {}, {}, {"-x"}), {"-x"}));
}

TEST(Lexer, TakesTheSpellingOfTheFirstEntryThatMatches) {
    EXPECT_EQ((Words{"Size[Property]"}), cut(Lexer({}, {}, {}, {"Size", "SIZE"}), {"SIZE"}));
}

TEST(Lexer, KnowsNothingWithoutVocabularies) {
    EXPECT_EQ((Words{"show[Value]", "-all[UNKNOWN]", "=[Equal]"}),
              cut(Lexer({}, {}, {}, {}), {"show", "-all", "="}));
}

TEST(Lexer, ClassifiesEqualsSignAndCommaAheadOfTheVocabularies) {
    EXPECT_EQ((Words{"=[Equal]", ",[Comma]"}), cut(Lexer({"=", ","}, {}, {}, {}), {"=", ","}));
}

TEST(Lexer, LogsEachMatchWithTheLoweredWord) {
    const testing::CapturedLog log(2);
    (void)driveLexer().tokenize({"SHOW", "-All", "-NORVOSSD", "ENABLELOG=True"});
    EXPECT_EQ((Words{"Found verb: show\n", "Found option: -all\n", "Found target: -norvossd\n",
                     "Found property: enablelog\n"}),
              log.messages());
}

TEST(Lexer, CutsAWordOf128KibibytesAtEachComma) {
    std::string word;
    for (int count = 0; count < 65536; ++count) {
        word += "a,";
    }
    const std::vector<Token> tokens = driveLexer().tokenize({word});
    ASSERT_EQ(131072U, tokens.size());
    for (std::size_t index = 0; index < tokens.size(); index += 2) {
        ASSERT_EQ("a", tokens[index].text);
        ASSERT_EQ(TokenType::Value, tokens[index].tokenType);
        ASSERT_EQ(",", tokens[index + 1].text);
        ASSERT_EQ(TokenType::Comma, tokens[index + 1].tokenType);
    }
}

TEST(Lexer, CutsAWordOf128KibibytesOfCommas) {
    const std::vector<Token> tokens = driveLexer().tokenize({std::string(131072, ',')});
    ASSERT_EQ(131072U, tokens.size());
    for (const Token& token : tokens) {
        ASSERT_EQ(TokenType::Comma, token.tokenType);
    }
}

}  // namespace
}  // namespace cli::framework
