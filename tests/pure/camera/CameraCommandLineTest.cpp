#include "CommandLine.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <initializer_list>

namespace camera
{
namespace
{

using gige::net::SendMode;
using testing::HasSubstr;

CommandLine parse(std::initializer_list<const char*> arguments)
{
    std::vector<const char*> argv{"telvo-camera"};
    argv.insert(argv.end(), arguments);
    return parseCommandLine(static_cast<int>(argv.size()), argv.data());
}

/** How the program leaves instead of starting a camera. */
CommandLineExit leaving(std::initializer_list<const char*> arguments)
{
    try {
        static_cast<void>(parse(arguments));
    } catch (const CommandLineExit& leave) {
        return leave;
    }
    return {.text = "a camera starts", .status = -1};
}

void expectRefusal(std::initializer_list<const char*> arguments, const std::string& message)
{
    const CommandLineExit leave = leaving(arguments);
    EXPECT_EQ(leave.status, 2);
    EXPECT_THAT(leave.text, testing::StartsWith("telvo-camera: "));
    EXPECT_THAT(leave.text, HasSubstr(message));
    EXPECT_EQ(leave.text.find('\n'), std::string::npos) << "one line";
}

TEST(CameraCommandLine, SendsJoinedUnlessToldOtherwise)
{
    EXPECT_EQ(parse({}).camera.send, SendMode::Joined);
    EXPECT_EQ(parse({"--send", "joined"}).camera.send, SendMode::Joined);
    EXPECT_EQ(parse({"--send", "single"}).camera.send, SendMode::Single);
}

TEST(CameraCommandLine, RefusesAnotherWayOfSending)
{
    expectRefusal({"--send", "twice"}, "--send: twice not in {joined,single}");
    expectRefusal({"--send", "0"}, "--send");
    expectRefusal({"--send"}, "--send");
}

TEST(CameraCommandLine, ExplainsTheWaysOfSending)
{
    const CommandLineExit leave = leaving({"--help"});
    EXPECT_EQ(leave.status, 0);
    EXPECT_THAT(leave.text, HasSubstr("--send WAY=joined"));
    EXPECT_THAT(leave.text, HasSubstr("Sending:"));
}

TEST(CameraCommandLine, TakesTheRateOfTheCable)
{
    EXPECT_EQ(parse({}).camera.linkRate, 0U);
    EXPECT_EQ(parse({"--link-rate", "1000000000"}).camera.linkRate, 1'000'000'000U);
    EXPECT_EQ(parse({"--link-rate", "1G"}).camera.linkRate, 1'000'000'000U);
    EXPECT_EQ(parse({"--link-rate", "10G"}).camera.linkRate, 10'000'000'000U);
    EXPECT_EQ(parse({"--link-rate", "2500M"}).camera.linkRate, 2'500'000'000U);
}

TEST(CameraCommandLine, RefusesARateThatNoCableHas)
{
    for (const char* rate : {"0", "-1", "5", "500G", "18446744073710G", "1.5G", "fast", "1K", ""}) {
        expectRefusal({"--link-rate", rate}, "--link-rate: ");
    }
}

} // namespace
} // namespace camera
