// The log channel that writes to a stream.
#include "interfaces/cli/cliframework/StreamChannel.h"

#include <gtest/gtest.h>

#include <sstream>

namespace cli::framework {
namespace {

TEST(StreamChannel, WritesLevelAndMessageAsOneLine) {
    std::ostringstream stream;
    StreamChannel channel(&stream);
    channel.log(LogEntry(2, "text"));
    LogEntry placed(0, "fault");
    placed.setFile("file.cpp");
    placed.setLine(12);
    channel.log(placed);
    channel.log(LogEntry(3, ""));
    EXPECT_EQ("2: text\n"
              "0: fault\n"
              "3: \n",
              stream.str());
}

}  // namespace
}  // namespace cli::framework
