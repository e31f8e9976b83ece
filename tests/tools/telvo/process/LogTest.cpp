#include "CameraTest.h"

#include <csignal>
#include <fstream>
#include <iterator>
#include <regex>

namespace
{

using testing::HasSubstr;
using testing::MatchesRegex;

/// Whether a process of this network has the abstract socket.
bool isBound(const std::string& name)
{
    std::ifstream sockets("/proc/net/unix");
    const std::string all{std::istreambuf_iterator<char>(sockets), {}};
    return all.find('@' + name + '\n') != std::string::npos;
}

std::string outputOf(ToolProcess& process)
{
    process.signal(SIGINT);
    const ToolOutcome outcome = process.wait();
    EXPECT_EQ(outcome.exitStatus, 0) << outcome.errors;
    return outcome.output;
}

using Log = CameraTest;

TEST_F(Log, IsShownWithTimesToSeveralViewersAtOnce)
{
    switchOn();
    ToolProcess first({"log"});
    ASSERT_TRUE(becomes([] { return isBound("TelvoDll.debug.relay"); }));
    ToolProcess second({"log", "--no-time"});
    ASSERT_TRUE(becomes([] { return isBound("TelvoDll.debug.relay.0"); }));
    EXPECT_EQ(run({"set", "exposure=100"}).exitStatus, 0);

    const std::string withTimes = outputOf(first);
    EXPECT_THAT(withTimes, HasSubstr("setExposureTime 100\n"));
    EXPECT_THAT(withTimes.substr(0, withTimes.find('\n')),
                MatchesRegex("[0-9][0-9]:[0-9][0-9]:[0-9][0-9]\\.[0-9][0-9][0-9] +[0-9]+  .*"));
    const std::regex time("(^|\n)[0-9:.]{12}  ");
    EXPECT_EQ(std::regex_replace(withTimes, time, "$1"), outputOf(second));
}

} // namespace
