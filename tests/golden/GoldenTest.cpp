// One test for each folder below `cases`.
#include "tests/golden/GoldenCase.h"
#include "tests/golden/GoldenRun.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <iostream>
#include <utility>

namespace {

class GoldenFolder : public ::testing::Test {
public:
    explicit GoldenFolder(std::filesystem::path folder) : folder(std::move(folder)) {}

    void TestBody() override {
        tavik::golden::expectOutcome(tavik::golden::readCase(folder),
                                     {GOLDEN_PROGRAM, GOLDEN_LIBRARIES});
    }

private:
    std::filesystem::path folder;
};

}  // namespace

int main(int argc, char** argv) {
    ::testing::InitGoogleTest(&argc, argv);
    const std::filesystem::path root = GOLDEN_CASES;
    for (const std::filesystem::path& folder : tavik::golden::findCases(root)) {
        const std::string name = std::filesystem::relative(folder, root).string();
        ::testing::RegisterTest("Golden", name.c_str(), nullptr, nullptr, __FILE__, __LINE__,
                                [folder]() -> ::testing::Test* {
                                    return std::make_unique<GoldenFolder>(folder).release();
                                });
    }
    const int result = RUN_ALL_TESTS();
    if (::testing::UnitTest::GetInstance()->test_to_run_count() > 0) return result;
    std::cerr << "no case was run\n";
    return 1;
}
