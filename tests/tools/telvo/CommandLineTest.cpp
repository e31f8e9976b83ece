#include "Tool.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <initializer_list>
#include <iostream>
#include <regex>
#include <sstream>
#include <string>
#include <vector>

namespace
{

using testing::HasSubstr;

struct Outcome {
    int exitStatus;
    std::string output;
    std::string errors;
};

/// Takes what goes through a stream while it lives.
class Capture
{
  public:
    explicit Capture(std::ostream& stream) : mStream(stream), mOld(stream.rdbuf(mText.rdbuf())) {}
    ~Capture() { mStream.rdbuf(mOld); }
    Capture(const Capture&) = delete;
    Capture& operator=(const Capture&) = delete;
    std::string text() const { return mText.str(); }

  private:
    std::ostringstream mText;
    std::ostream& mStream;
    std::streambuf* mOld;
};

Outcome run(std::initializer_list<const char*> arguments)
{
    std::vector<const char*> argv{"telvo"};
    argv.insert(argv.end(), arguments);
    const Capture output(std::cout);
    const Capture errors(std::cerr);
    const int exitStatus = telvo::runTool(static_cast<int>(argv.size()), argv.data());
    return {exitStatus, output.text(), errors.text()};
}

void expectUsageError(std::initializer_list<const char*> arguments, const std::string& message)
{
    const Outcome outcome = run(arguments);
    EXPECT_EQ(outcome.exitStatus, 2);
    EXPECT_EQ(outcome.output, "");
    EXPECT_THAT(outcome.errors, testing::StartsWith("telvo: "));
    EXPECT_THAT(outcome.errors, HasSubstr(message));
    EXPECT_EQ(outcome.errors.find('\n'), outcome.errors.size() - 1) << "one line";
}

TEST(CommandLine, WantsACommand)
{
    expectUsageError({}, "no command given");
    expectUsageError({"lve"}, "lve");
}

TEST(CommandLine, RefusesUnknownOptions)
{
    expectUsageError({"discover", "--interfac", "lo"}, "--interfac");
}

TEST(CommandLine, WantsWhatACommandNeeds)
{
    expectUsageError({"live", "--out", "x"}, "--frames is required");
    expectUsageError({"live", "--frames", "5"}, "--out is required");
    expectUsageError({"download"}, "--out is required");
    expectUsageError({"set"}, "settings is required");
}

TEST(CommandLine, RefusesNumbersOutOfRange)
{
    expectUsageError({"live", "--out", "x", "--frames", "0"}, "--frames");
    expectUsageError({"live", "--out", "x", "--frames", "-1"}, "--frames");
    expectUsageError({"live", "--out", "x", "--frames", "five"}, "--frames");
    expectUsageError({"record", "--seconds", "nan"}, "--seconds");
    expectUsageError({"discover", "--timeout", "0"}, "--timeout");
    expectUsageError({"download", "--out", "x", "--count", "0"}, "--count");
    expectUsageError({"download", "--out", "x", "--first", "-2"}, "--first");
}

TEST(CommandLine, RefusesAnUnknownFormat)
{
    expectUsageError({"download", "--out", "x", "--format", "bmp"}, "bmp");
}

TEST(CommandLine, RefusesFramesOfASheetThatIsNotAskedFor)
{
    expectUsageError({"review", "--frames", "4"}, "--frames requires --contact-sheet");
}

TEST(CommandLine, RefusesPlacesThatStandForNothing)
{
    expectUsageError({"download", "--out", "shot-{nme}.raw"},
                     "{nme} in 'shot-{nme}.raw' stands for nothing; there are {ip}, {serial} and "
                     "{name}");
    expectUsageError({"download", "--out", "{ip}.raw", "--sidecar", "{ip}-{Name}.json"},
                     "{Name} in '{ip}-{Name}.json'");
}

TEST(CommandLine, TakesNamesOfFilesInUtf8)
{
    const Outcome outcome = run({"panel", "--folder", "K\xC3\xBC"});
    EXPECT_EQ(outcome.exitStatus, 1);
    EXPECT_EQ(outcome.errors, "telvo: there is no folder K\xC3\xBC for downloads\n");
}

TEST(CommandLine, ChecksSettingsBeforeItLooksForACamera)
{
    expectUsageError({"get", "exposur"}, "there is no setting 'exposur'");
    expectUsageError({"set", "exposure"}, "'exposure' is not NAME=VALUE");
    expectUsageError({"set", "sync-in=maybe"}, "'maybe' is no value of sync-in");
    expectUsageError({"live", "--frames", "5", "--out", "x", "--fps", "fast"},
                     "'fast' is no value of frame-rate");
    expectUsageError({"live", "--frames", "5", "--out", "x", "--set", "a=1"},
                     "there is no setting 'a'");
}

TEST(CommandLine, RefusesAnUnknownInterface)
{
    expectUsageError({"discover", "--interface", "nosuch0"},
                     "there is no network interface 'nosuch0' that is up");
    expectUsageError({"info", "--interface", "nosuch0"},
                     "there is no network interface 'nosuch0' that is up");
}

TEST(CommandLine, FailsWhereNoCameraAnswers)
{
    const Outcome outcome = run({"info", "--camera", "127.9.9.9", "--timeout", "50"});
    EXPECT_EQ(outcome.exitStatus, 1);
    EXPECT_EQ(outcome.output, "");
    EXPECT_EQ(outcome.errors,
              "telvo: no camera '127.9.9.9' answered; 'telvo discover' lists those that do\n");
}

TEST(CommandLine, ListsItsCommands)
{
    const Outcome outcome = run({"--help"});
    EXPECT_EQ(outcome.exitStatus, 0);
    EXPECT_EQ(outcome.errors, "");
    for (const char* command :
         {"discover", "info", "state", "get", "set", "live", "record", "stop", "download", "log"}) {
        EXPECT_THAT(outcome.output, HasSubstr(std::string("  ") + command + " "));
    }
}

TEST(CommandLine, ExplainsEveryOptionOfACommand)
{
    const Outcome outcome = run({"live", "--help"});
    EXPECT_EQ(outcome.exitStatus, 0);
    for (const char* option :
         {"--camera", "--interface", "--timeout", "--frames", "--out", "--contact-sheet", "--fps",
          "--exposure", "--width", "--height", "--packet-size", "--resends", "--set"}) {
        EXPECT_THAT(outcome.output, HasSubstr(option));
    }
}

TEST(CommandLine, ListsTheSettings)
{
    const Outcome outcome = run({"get", "--help"});
    EXPECT_EQ(outcome.exitStatus, 0);
    EXPECT_THAT(outcome.output, HasSubstr("frame-rate"));
    EXPECT_THAT(outcome.output, HasSubstr("packet-timeout"));
}

TEST(CommandLine, TellsItsVersion)
{
    const Outcome outcome = run({"--version"});
    EXPECT_EQ(outcome.exitStatus, 0);
    EXPECT_TRUE(std::regex_match(outcome.output, std::regex("telvo [0-9]+\\.[0-9]+\\.[0-9]+\n")))
        << outcome.output;
}

} // namespace
