/// What is made of the commands' help.
#include "ToolProcess.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace
{

using testing::HasSubstr;

/// What bash would offer for the last of these words.
std::string completed(const std::string& words)
{
    const std::string script = "source <(" + toolLine({"completion"}) +
                               "); compopt() { :; }; COMP_WORDS=(" + words +
                               "); COMP_CWORD=$((${#COMP_WORDS[@]} - 1)); _telvo; "
                               "echo \"${COMPREPLY[*]}\"";
    return runProgram({"/bin/bash", "-c", script}).output;
}

TEST(Completion, OffersCommandsOptionsAndSettings)
{
    EXPECT_EQ(completed("telvo rec"), "record\n");
    EXPECT_EQ(completed("telvo settings s"), "save\n");
    EXPECT_EQ(completed("telvo record --tr"), "--trigger\n");
    EXPECT_EQ(completed("telvo record --frames 5 --se"), "--seconds --sequences --set\n");
    EXPECT_EQ(completed("telvo set exposure=5 bl"), "black-level=\n");
    EXPECT_EQ(completed("telvo get --camera 127.0.0.11 bl"), "black-level\n");
}

TEST(ManualPage, IsThereForEveryCommand)
{
    const ToolOutcome tool = runTool({"man"});
    EXPECT_EQ(tool.exitStatus, 0);
    EXPECT_THAT(tool.output, HasSubstr(".TH TELVO 1"));
    EXPECT_THAT(tool.output, HasSubstr(".TP\n\\fBsettings save\\fR\n"));
    const ToolOutcome command = runTool({"man", "settings", "save"});
    EXPECT_EQ(command.exitStatus, 0);
    EXPECT_THAT(command.output, HasSubstr(".TH TELVO\\-SETTINGS\\-SAVE 1"));
    EXPECT_THAT(command.output, HasSubstr("\\fB\\-\\-force\\fR\n"));
    EXPECT_EQ(runTool({"man", "nothing"}).exitStatus, 2);
}

} // namespace
