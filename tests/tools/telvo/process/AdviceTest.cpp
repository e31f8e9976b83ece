/// Every error is one line that says what to do next.
#include "CameraTest.h"

#include "../writers/TemporaryFolder.h"

#include <algorithm>
#include <fstream>

namespace
{

using testing::ContainsRegex;

struct Mistake {
    const char* name;
    std::vector<std::string> arguments;
    int exitStatus;
    const char* error; // a regular expression
};

class Advice : public testing::TestWithParam<Mistake>
{
};

TEST_P(Advice, StandsInTheErrorsLine)
{
    const Mistake& mistake = GetParam();
    const TemporaryFolder folder;
    std::ofstream(folder / "there") << "x";
    std::filesystem::create_symlink("nowhere", folder / "dangling");
    std::vector<std::string> arguments = mistake.arguments;
    for (std::string& argument : arguments) {
        if (argument.starts_with("IN/")) {
            argument = folder.path() / argument.substr(3);
        }
    }
    const ToolOutcome outcome = runTool(arguments);
    EXPECT_EQ(outcome.exitStatus, mistake.exitStatus);
    EXPECT_THAT(outcome.errors, ContainsRegex(mistake.error));
    EXPECT_EQ(std::ranges::count(outcome.errors, '\n'), 1) << outcome.errors;
}

const Mistake kMistakes[] = {
    {"NoCommand", {}, 2, "'telvo --help' lists them"},
    {"UnknownCommand", {"lst"}, 2, "there is no command 'lst'; 'telvo --help' lists them"},
    {"UnknownOption",
     {"live", "--frams", "5"},
     2,
     "no option --frams; 'telvo live --help' has all"},
    {"UnknownBeforeMissing",
     {"download", "--ot", "a"},
     2,
     "no option --ot; 'telvo download --help'"},
    {"UnknownForTheTool", {"--jsn"}, 2, "no option --jsn; 'telvo --help' has all"},
    {"WordTooMany",
     {"discover", "all"},
     2,
     "'all' is not expected; 'telvo discover --help' has all"},
    {"NoCommandBelow", {"flash"}, 2, "no command given; 'telvo flash --help' lists them"},
    {"UnknownBelow",
     {"settings", "keep"},
     2,
     "there is no command 'settings keep'; 'telvo settings --help' lists them"},
    {"NothingToSet", {"set"}, 2, "; 'telvo set --help' has all"},
    {"NoNumber",
     {"record", "--seconds", "-1"},
     2,
     "--seconds: '-1' is no number from 0 to 31536000; 'telvo record --help' has all"},
    {"UnknownPage", {"man", "nothing"}, 2, "'telvo --help' lists them"},
    {"NoCamera", {"info", "--interface", "lo", "--timeout", "50"}, 1, "; 'telvo doctor' looks"},
    {"NoCameraToList", {"discover", "--interface", "lo", "--timeout", "50"}, 1, "; 'telvo doctor'"},
    {"UnknownInterface", {"discover", "--interface", "x"}, 2, "; there are: .*lo \\(127.0.0.1\\)"},
    {"UnknownSetting", {"get", "nothing"}, 2, "; 'telvo get --help' lists them all"},
    {"NoValue", {"set", "exposure"}, 2, "such as exposure=500"},
    {"WrongValue", {"set", "exposure=long"}, 2, "is no value of exposure \\("},
    {"WrongAddress", {"force-ip", "1.2"}, 2, "such as 192.168.0.10"},
    {"LiveWithoutFrames", {"live"}, 2, "'telvo live --help'"},
    {"ViewWithoutTerminal", {"live", "--view"}, 1, "--view needs a terminal; --out writes"},
    {"WrongRegion", {"record", "--roi", "1,2"}, 2, "such as 0,0,640,480"},
    {"FileIsThere", {"download", "--out", "IN/there"}, 1, "; --force replaces it"},
    {"LinkToNothing", {"download", "--out", "IN/dangling"}, 1, "; name another file"},
    {"FolderIsMissing", {"download", "--out", "IN/missing/a"}, 1, "; make its folder first"},
    {"FileAsFolder",
     {"download", "--out", "IN/there/a"},
     1,
     "; name a place that you may write to"},
    {"NothingToContinue", {"download", "--resume", "--out", "IN/there"}, 1, "; leave out --resume"},
    {"TwoWishesAtOnce",
     {"download", "--colour", "--keep-header", "--out", "IN/a"},
     2,
     "; leave one of them out"},
    {"VideoContinued",
     {"download", "--format", "mkv", "--resume", "--out", "IN/a"},
     2,
     "; download it anew"},
    {"SettingsAreThere", {"settings", "save", "IN/there"}, 1, "; --force replaces it"},
    {"NoSettingsFile", {"settings", "load", "IN/missing"}, 1, "; is it there, and may you read it"},
    {"OtherSettingsFile", {"settings", "load", "IN/there"}, 1, "'telvo settings save' makes one"},
};

INSTANTIATE_TEST_SUITE_P(At, Advice, testing::ValuesIn(kMistakes),
                         [](const auto& each) { return each.param.name; });

} // namespace
