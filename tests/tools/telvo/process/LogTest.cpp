#include "CameraTest.h"

#include <csignal>
#include <fstream>
#include <iterator>
#include <regex>

namespace
{

using testing::ContainsRegex;
using testing::HasSubstr;
using testing::MatchesRegex;
using testing::Not;

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

TEST_F(Log, ShowsWhyPicturesOfAnotherHostDoNotCome)
{
    switchOn();
    ToolProcess first({"log"});
    ASSERT_TRUE(becomes([] { return isBound("TelvoDll.debug.relay"); }));
    ToolProcess second({"log", "--no-time"});
    ASSERT_TRUE(becomes([] { return isBound("TelvoDll.debug.relay.0"); }));
    ToolProcess raw({"log", "--raw"});
    ASSERT_TRUE(becomes([] { return isBound("TelvoDll.debug.relay.1"); }));
    camera().faults().setPacketRates({.lose = 0.3});
    (void)run({"doctor"});

    const std::string shown = outputOf(first);
    EXPECT_THAT(shown, ContainsRegex("  gige: 127.0.0.11: [0-9]+ pictures came incomplete, [0-9]+ "
                                     "packets are missing"));
    EXPECT_THAT(outputOf(second), HasSubstr("  gige: 127.0.0.11: "));
    EXPECT_THAT(outputOf(raw), Not(HasSubstr("127.0.0.11: ")));
}

} // namespace
