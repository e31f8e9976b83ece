#include "OutputFile.h"
#include "Failure.h"
#include "FileContents.h"
#include "TemporaryFolder.h"

#include <array>
#include <fstream>
#include <functional>
#include <gtest/gtest.h>

namespace
{

using namespace telvo;

constexpr std::array<std::uint8_t, 3> kBytes{'a', '\n', 0xFF};

std::size_t entries(const std::filesystem::path& folder)
{
    return static_cast<std::size_t>(std::distance(std::filesystem::directory_iterator(folder),
                                                  std::filesystem::directory_iterator()));
}

std::string failureOf(const std::function<void()>& work)
{
    try {
        work();
        return "";
    } catch (const Failure& failure) {
        return failure.what();
    }
}

TEST(OutputFile, AppearsUnderItsNameWhenCommitted)
{
    const TemporaryFolder folder;
    OutputFile file(folder / "data");
    file.write(kBytes);
    file.write(kBytes);
    EXPECT_FALSE(std::filesystem::exists(folder / "data"));
    file.commit();
    EXPECT_EQ(contents(folder / "data"), "a\n\xFF"
                                         "a\n\xFF");
    EXPECT_EQ(entries(folder.path()), 1U);
}

TEST(OutputFile, LeavesNothingWhenGivenUp)
{
    const TemporaryFolder folder;
    {
        OutputFile file(folder / "data");
        file.write(kBytes);
    }
    EXPECT_TRUE(std::filesystem::is_empty(folder.path()));
}

TEST(OutputFile, RefusesAFileThatIsThere)
{
    const TemporaryFolder folder;
    std::ofstream(folder / "data") << "earlier";
    EXPECT_EQ(failureOf([&] { OutputFile file(folder / "data"); }),
              (folder / "data").string() + " is there already; name another file");
    EXPECT_EQ(contents(folder / "data"), "earlier");
    EXPECT_EQ(entries(folder.path()), 1U);
}

TEST(OutputFile, KeepsTheEarlierFileUntilItReplacesIt)
{
    const TemporaryFolder folder;
    std::ofstream(folder / "data") << "earlier";
    {
        OutputFile file(folder / "data", IfThere::Replace);
        file.write(kBytes);
    }
    EXPECT_EQ(contents(folder / "data"), "earlier");
    OutputFile file(folder / "data", IfThere::Replace);
    file.write(kBytes);
    EXPECT_EQ(contents(folder / "data"), "earlier");
    file.commit();
    EXPECT_EQ(contents(folder / "data"), "a\n\xFF");
    EXPECT_EQ(entries(folder.path()), 1U);
}

TEST(OutputFile, LeavesANameThatSomebodyElseTookMeanwhile)
{
    const TemporaryFolder folder;
    OutputFile first(folder / "data");
    OutputFile second(folder / "data");
    first.write(kBytes);
    second.write(std::span(kBytes).first(1));
    second.commit();
    const std::string failure = failureOf([&] { first.commit(); });
    EXPECT_EQ(contents(folder / "data"), "a");
    // What was written is not lost, and the message tells where it is.
    const std::string before = " was made by somebody else meanwhile; what was written is ";
    const std::size_t at = failure.find(before);
    ASSERT_NE(at, std::string::npos) << failure;
    EXPECT_EQ(contents(failure.substr(at + before.size())), "a\n\xFF");
}

TEST(OutputFile, ReplacesNothingByForceThatAppearedMeanwhile)
{
    const TemporaryFolder folder;
    OutputFile file(folder / "data", IfThere::Replace);
    std::filesystem::create_directory(folder / "data");
    EXPECT_NE(failureOf([&] { file.commit(); }), "");
    EXPECT_TRUE(std::filesystem::is_directory(folder / "data"));
}

TEST(OutputFile, IsWrittenAndReadAtAnyPosition)
{
    const TemporaryFolder folder;
    OutputFile file(folder / "data");
    file.write(kBytes);
    file.seek(1);
    file.write(std::span(kBytes).first(1));
    EXPECT_EQ(file.position(), 2U);
    EXPECT_EQ(file.size(), 3U);
    file.seek(0);
    std::array<std::uint8_t, 8> bytes{};
    EXPECT_EQ(file.read(bytes), 3U);
    EXPECT_EQ(bytes[1], 'a');
    file.resize(2);
    file.write(std::span(kBytes).first(1));
    file.commit();
    EXPECT_EQ(contents(folder / "data"), "aaa");
}

TEST(OutputFile, ContinuesAFileInPlace)
{
    const TemporaryFolder folder;
    std::ofstream(folder / "data") << "earlier";
    {
        OutputFile file(folder / "data", IfThere::Continue);
        file.seek(7);
        file.write(std::span(kBytes).first(1));
        file.commit();
    }
    EXPECT_EQ(contents(folder / "data"), "earliera");
    EXPECT_NE(failureOf([&] { OutputFile file(folder / "missing", IfThere::Continue); }), "");
}

TEST(OutputFile, FailsWithTheNameOfAFileThatCannotBeWritten)
{
    const TemporaryFolder folder;
    const std::filesystem::path path = folder / "missing" / "data";
    EXPECT_EQ(failureOf([&] { OutputFile file(path); }).find("cannot write " + path.string()), 0U);
}

TEST(OutputFile, RefusesAFolder)
{
    const TemporaryFolder folder;
    std::filesystem::create_directory(folder / "data");
    EXPECT_EQ(failureOf([&] { OutputFile file(folder / "data", IfThere::Replace); }),
              (folder / "data").string() + " is a folder; name a file in it");
    EXPECT_EQ(entries(folder.path()), 1U);
}

TEST(OutputFile, MakesFoldersAndFailsWhereAFileIsInTheWay)
{
    const TemporaryFolder folder;
    makeFolder(folder / "a" / "b");
    EXPECT_TRUE(std::filesystem::is_directory(folder / "a" / "b"));
    std::ofstream(folder / "file") << "x";
    EXPECT_THROW(makeFolder(folder / "file" / "b"), Failure);
}

TEST(OutputFile, GoesOnWithWhatAnotherProcessLeft)
{
    const TemporaryFolder folder;
    std::ofstream(folder / "data.0123abcd.part") << "earlier";
    std::ofstream(folder / "data.part") << "another's";
    ASSERT_EQ(partialsOf(folder / "data"),
              std::vector<std::filesystem::path>{folder / "data.0123abcd.part"});
    const UnfinishedFile unfinished{folder / "data.0123abcd.part", folder / "data",
                                    IfThere::Refuse};
    {
        OutputFile file(unfinished);
    }
    EXPECT_EQ(contents(folder / "data.0123abcd.part"), "earlier") << "given up, not removed";
    OutputFile file(unfinished);
    file.seek(7);
    file.write(std::span(kBytes).first(1));
    file.commit();
    EXPECT_EQ(contents(folder / "data"), "earliera");
    EXPECT_EQ(entries(folder.path()), 2U);
}

TEST(OutputFile, IsContinuedByOneAtATime)
{
    const TemporaryFolder folder;
    std::ofstream(folder / "data") << "earlier";
    const OutputFile file(folder / "data", IfThere::Continue);
    const std::string failure =
        failureOf([&] { OutputFile other(folder / "data", IfThere::Continue); });
    EXPECT_NE(failure, "");
    EXPECT_EQ(contents(folder / "data"), "earlier");
}

TEST(OutputFile, NeedsSpace)
{
    const TemporaryFolder folder;
    requireSpace(folder / "new" / "data", 1);
    EXPECT_NE(failureOf([&] { requireSpace(folder / "data", std::uint64_t{1} << 60); }), "");
}

} // namespace
