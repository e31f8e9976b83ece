#include "CameraTest.h"

#include "Kernel.h"

#include <csignal>
#include <fstream>
#include <optional>
#include <regex>
#include <string>
#include <vector>

namespace
{

using testing::ContainsRegex;
using testing::HasSubstr;
using testing::MatchesRegex;
using testing::Not;

/// Whether a socket of this network can be reached by that abstract name.
bool isReached(const std::string& name)
{
    constexpr const char* kDatagrams = "00000000 0002";
    constexpr const char* kListening = "00010000 0005";
    std::ifstream sockets("/proc/net/unix");
    for (std::string line; std::getline(sockets, line);) {
        if (line.ends_with(" @" + name) && (line.find(kDatagrams) != std::string::npos ||
                                            line.find(kListening) != std::string::npos)) {
            return true;
        }
    }
    return false;
}

std::string outputOf(ToolProcess& process)
{
    process.signal(SIGINT);
    const ToolOutcome outcome = process.wait();
    EXPECT_EQ(outcome.exitStatus, 0) << outcome.errors;
    return outcome.output;
}

/// Two viewers; the first one has the lines and passes them on.
class Log : public CameraTest
{
  protected:
    void SetUp() override
    {
        ASSERT_TRUE(becomes([] { return isReached("TelvoDll.debug.relay"); }));
        second.emplace(std::vector<std::string>{"log", "--no-time"});
        ASSERT_TRUE(becomes([] { return isReached("TelvoDll.debug.relay.0"); }));
        switchOn();
    }

    ToolProcess first{{"log"}};
    std::optional<ToolProcess> second;
};

TEST_F(Log, IsShownWithTimesToSeveralViewersAtOnce)
{
    EXPECT_EQ(run({"set", "exposure=100"}).exitStatus, 0);

    const std::string withTimes = outputOf(first);
    EXPECT_THAT(withTimes, HasSubstr("setExposureTime 100\n"));
    EXPECT_THAT(withTimes.substr(0, withTimes.find('\n')),
                MatchesRegex("[0-9][0-9]:[0-9][0-9]:[0-9][0-9]\\.[0-9][0-9][0-9] +[0-9]+  .*"));
    const std::regex time("(^|\n)[0-9:.]{12}  ");
    EXPECT_EQ(std::regex_replace(withTimes, time, "$1"), outputOf(*second));
}

TEST_F(Log, ShowsAtItsEndWhatHasComeByThen)
{
    first.signal(SIGSTOP);
    for (const char* const line : {"one\r\n", "two\r\n", "three\r\n"}) {
        OutputDebugStringA(line);
    }
    first.signal(SIGINT);
    first.signal(SIGCONT);
    EXPECT_THAT(first.wait().output, ContainsRegex("one\n.*two\n.*three\n"));
    EXPECT_THAT(outputOf(*second), ContainsRegex("one\n.*two\n.*three\n"));
}

TEST_F(Log, ShowsWhyPicturesOfAnotherHostDoNotCome)
{
    ToolProcess raw({"log", "--raw"});
    ASSERT_TRUE(becomes([] { return isReached("TelvoDll.debug.relay.1"); }));
    camera().faults().setPacketRates({.lose = 0.3});
    (void)run({"doctor"});

    const std::string shown = outputOf(first);
    EXPECT_THAT(shown, ContainsRegex("  gige: 127.0.0.11: [0-9]+ pictures came incomplete, [0-9]+ "
                                     "packets are missing"));
    EXPECT_THAT(outputOf(*second), HasSubstr("  gige: 127.0.0.11: "));
    EXPECT_THAT(outputOf(raw), Not(HasSubstr("127.0.0.11: ")));
}

} // namespace
