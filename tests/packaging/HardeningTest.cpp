// How the program file is protected, and what it shows to others.
#include "tests/packaging/ProgramFile.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace {

using tavik::testing::dynamicEntries;
using tavik::testing::linesOf;
using tavik::testing::outputOf;
using tavik::testing::wordsOf;

std::string readelf(const std::string& what, const std::string& file = TAVIK_PROGRAM) {
    return outputOf({TAVIK_READELF, "-W", what, file});
}

/// The words of the program header of this kind; none if there is none.
std::vector<std::string> segment(const std::string& kind) {
    for (const std::string& line : linesOf(readelf("-l"))) {
        auto words = wordsOf(line);
        if (!words.empty() && words.front() == kind) return words;
    }
    return {};
}

/// `name` of `name@VERSION (2)`.
std::string withoutVersion(const std::string& symbol) {
    return symbol.substr(0, symbol.find('@'));
}

/// The symbols that the file defines for others.
std::set<std::string> exportedSymbols() {
    std::set<std::string> names;
    for (const std::string& line : linesOf(readelf("--dyn-syms"))) {
        const auto words = wordsOf(line);
        const bool isSymbol = words.size() >= 8 && words[0].back() == ':' && words[0] != "Num:";
        if (isSymbol && words[6] != "UND") names.insert(withoutVersion(words[7]));
    }
    return names;
}

/// The variables of shared libraries that the file must hold, and so export, for their users.
std::set<std::string> copiedSymbols() {
    std::set<std::string> names;
    for (const std::string& line : linesOf(readelf("-r"))) {
        const auto words = wordsOf(line);
        const bool isCopy = words.size() >= 5 && words[2].ends_with("_COPY");
        if (isCopy) names.insert(withoutVersion(words[4]));
    }
    return names;
}

/// The symbols that the objects of an archive take from elsewhere.
std::set<std::string> undefinedSymbols(const std::string& archive) {
    std::set<std::string> names;
    for (const std::string& line : linesOf(readelf("-s", archive))) {
        const auto words = wordsOf(line);
        if (words.size() == 8 && words[6] == "UND") names.insert(words[7]);
    }
    return names;
}

TEST(Hardening, TheProgramIsPositionIndependent) {
    const auto lines = linesOf(readelf("-h"));
    const auto type = std::find_if(lines.begin(), lines.end(), [](const std::string& line) {
        return wordsOf(line).size() > 1 && wordsOf(line).front() == "Type:";
    });
    ASSERT_NE(type, lines.end());
    EXPECT_EQ("DYN", wordsOf(*type)[1]);
    ASSERT_EQ(1U, dynamicEntries(TAVIK_PROGRAM, "FLAGS_1").size());
    EXPECT_NE(std::string::npos, dynamicEntries(TAVIK_PROGRAM, "FLAGS_1").front().find("PIE"));
}

TEST(Hardening, EverySymbolIsBoundAtTheStartAndReadOnlyAfterwards) {
    EXPECT_FALSE(segment("GNU_RELRO").empty());
    ASSERT_EQ(1U, dynamicEntries(TAVIK_PROGRAM, "FLAGS").size());
    EXPECT_EQ("BIND_NOW", dynamicEntries(TAVIK_PROGRAM, "FLAGS").front());
}

TEST(Hardening, TheStackIsNotExecutable) {
    const auto stack = segment("GNU_STACK");
    ASSERT_EQ(8U, stack.size());
    EXPECT_EQ("RW", stack[6]);
}

TEST(Hardening, FunctionsGuardTheirStackFrames) {
    EXPECT_TRUE(undefinedSymbols(TAVIK_FRAMEWORK_ARCHIVE).contains("__stack_chk_fail"));
}

TEST(Hardening, BuffersAreCheckedInOptimizedBuilds) {
    if (TAVIK_CONFIGURATION == std::string_view("Debug")) {
        GTEST_SKIP() << "the checks need an optimizing build";
    }
    const auto symbols = undefinedSymbols(TAVIK_FRAMEWORK_ARCHIVE);
    EXPECT_TRUE(symbols.contains("__vsnprintf_chk"));
    EXPECT_FALSE(symbols.contains("vsnprintf"));
}

TEST(Hardening, NoFolderIsSearchedForLibrariesButTheSystems) {
    EXPECT_TRUE(dynamicEntries(TAVIK_PROGRAM, "RPATH").empty());
    EXPECT_TRUE(dynamicEntries(TAVIK_PROGRAM, "RUNPATH").empty());
}

TEST(Hardening, NothingIsExportedButVariablesOfSharedLibraries) {
    EXPECT_EQ(copiedSymbols(), exportedSymbols());
}

}  // namespace
