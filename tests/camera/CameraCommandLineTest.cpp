#include "CommandLine.h"
#include "MachineMemory.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <initializer_list>
#include <regex>

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

/// How the program leaves instead of starting a camera.
CommandLineExit leaving(std::initializer_list<const char*> arguments)
{
    try {
        (void)parse(arguments);
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

TEST(CameraCommandLine, TakesTheNameOfAFolderInUtf8)
{
    EXPECT_EQ(parse({"--save-recordings", "K\xC3\xBC"}).recordingsFolder,
              std::filesystem::path(u8"K\u00FC"));
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

TEST(CameraCommandLine, TellsItsVersion)
{
    const CommandLineExit leave = leaving({"--version"});
    EXPECT_EQ(leave.status, 0);
    const std::regex version("telvo-camera [0-9]+\\.[0-9]+\\.[0-9]+");
    EXPECT_TRUE(std::regex_match(leave.text, version)) << leave.text;
}

TEST(CameraCommandLine, TakesMemoryForAnImageUpToTheMachines)
{
    EXPECT_EQ(parse({"--memory", "64MB"}).camera.memoryBytes, 64U << 20);
    EXPECT_EQ(parse({"--memory", "1310720"}).camera.memoryBytes, 1280U * 1024);
    EXPECT_EQ(parse({"--sensor", "16x16", "--memory", "256"}).camera.memoryBytes, 256U);
    ASSERT_GT(machineMemory(), 0U);
    const std::string all = std::to_string(machineMemory());
    EXPECT_EQ(parse({"--memory", all.c_str()}).camera.memoryBytes, machineMemory());
}

TEST(CameraCommandLine, RefusesMemoryThatNoMachineHas)
{
    expectRefusal({"--memory", "0"}, "--memory: one image takes 1310720 bytes");
    expectRefusal({"--memory", "1310719"}, "--memory: one image takes 1310720 bytes");
    expectRefusal({"--model", "QUOR7", "--memory", "2MB"}, "--memory: one image takes 2900160");
    const std::string more = std::to_string(machineMemory() + 1);
    expectRefusal({"--memory", more.c_str()}, "--memory: this machine has ");
    expectRefusal({"--memory", "-1"}, "--memory");
    expectRefusal({"--memory", "99999999TB"}, "--memory");
    expectRefusal({"--memory", "much"}, "--memory");
}

TEST(CameraCommandLine, RefusesNamesThatTheirRegistersDoNotHold)
{
    const std::string sixteen(16, 'n');
    const std::string seventeen(17, 'n');
    const std::string thirtyTwo(32, 'm');
    const std::string thirtyThree(33, 'm');
    EXPECT_EQ(parse({"--name", sixteen.c_str()}).camera.userName, sixteen);
    EXPECT_EQ(parse({"--serial", sixteen.c_str()}).camera.serial, sixteen);
    EXPECT_EQ(parse({"--model", thirtyTwo.c_str()}).camera.model, thirtyTwo);
    expectRefusal({"--name", seventeen.c_str()},
                  "--name: '" + seventeen + "' is longer than 16 bytes");
    expectRefusal({"--serial", seventeen.c_str()}, "--serial: '" + seventeen);
    expectRefusal({"--model", thirtyThree.c_str()}, "is longer than 32 bytes");
}

TEST(CameraCommandLine, RefusesSharesOutsideZeroToOne)
{
    for (const char* option : {"--lose", "--repeat", "--reorder", "--delay", "--lose-frames"}) {
        EXPECT_EQ(leaving({option, "0"}).status, -1) << option;
        EXPECT_EQ(leaving({option, "1"}).status, -1) << option;
        for (const char* share : {"-0.1", "1.01", "nan", "inf", "half", "0.5x"}) {
            expectRefusal({option, share}, "is not a share from 0 to 1");
        }
    }
}

TEST(CameraCommandLine, RefusesNumbersThatMakeNoSense)
{
    for (const char* option : {"--trigger-every", "--silent-after", "--silent-for", "--flash-busy",
                               "--serial-limit", "--clamp-packet-size"}) {
        expectRefusal({option, "-1"}, option);
        expectRefusal({option, "4294967296"}, option);
        expectRefusal({option, "soon"}, option);
    }
    expectRefusal({"--clamp-packet-size", "575"}, "not in range 576 to 9000");
    expectRefusal({"--flash-rate", "0"}, "--flash-rate: ");
    expectRefusal({"--flash-rate", "-1"}, "--flash-rate: ");
    expectRefusal({"--sensor", "0x0"}, "a sensor has 16 to 2048 columns and lines");
    expectRefusal({"--sensor", "-16x16"}, "'-16' is not a number");
    expectRefusal({"--fault-access", "reject:Width:65536"}, "a status has 16 bits");
}

TEST(CameraCommandLine, RefusesValuesThatNoFeatureStartsWith)
{
    EXPECT_EQ(parse({"--set", "Width=64"}).camera.settings.at(FeatureId::Width), 64);
    EXPECT_EQ(parse({"--set", "IRIGBEnable=1"}).camera.settings.at(FeatureId::IRIGBEnable), 1);
    for (const char* setting :
         {"Width=0", "Width=17", "Width=99999", "AcquisitionFrameRateRaw=0", "PixelFormat=5",
          "IRIGBEnable=2", "AcquisitionStart=1", "DeviceModelName=3", "GevSCPD=0"}) {
        expectRefusal({"--set", setting}, std::string("no camera starts with ") + setting);
    }
    expectRefusal({"--set", "Width=-16"}, "'-16' is not a number");
}

} // namespace
} // namespace camera
