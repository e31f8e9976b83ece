#include "OutputFile.h"
#include "TemporaryFolder.h"
#include "ToolError.h"

#include <array>
#include <gtest/gtest.h>
#include <iterator>

namespace
{

using namespace telvo;

constexpr std::array<std::uint8_t, 3> kBytes{'a', '\n', 0xFF};

std::string contents(const std::filesystem::path& path)
{
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
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
    EXPECT_FALSE(std::filesystem::exists(folder / "data.part"));
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

TEST(OutputFile, KeepsTheEarlierFileUntilCommitted)
{
    const TemporaryFolder folder;
    std::ofstream(folder / "data") << "earlier";
    {
        OutputFile file(folder / "data");
        file.write(kBytes);
    }
    EXPECT_EQ(contents(folder / "data"), "earlier");
    OutputFile file(folder / "data");
    file.write(kBytes);
    file.commit();
    EXPECT_EQ(contents(folder / "data"), "a\n\xFF");
}

TEST(OutputFile, FailsWithTheNameOfAFileThatCannotBeWritten)
{
    const TemporaryFolder folder;
    const std::filesystem::path path = folder / "missing" / "data";
    try {
        const OutputFile file(path);
        FAIL() << "no failure";
    } catch (const Failure& failure) {
        EXPECT_EQ(failure.what(), "cannot write " + path.string());
    }
}

TEST(OutputFile, FailsToReplaceAFolderAndCleansUp)
{
    const TemporaryFolder folder;
    std::filesystem::create_directories(folder / "data" / "inner");
    OutputFile file(folder / "data");
    EXPECT_THROW(file.commit(), Failure);
    EXPECT_FALSE(std::filesystem::exists(folder / "data.part"));
}

TEST(OutputFile, MakesFoldersAndFailsWhereAFileIsInTheWay)
{
    const TemporaryFolder folder;
    makeFolder(folder / "a" / "b");
    EXPECT_TRUE(std::filesystem::is_directory(folder / "a" / "b"));
    std::ofstream(folder / "file") << "x";
    EXPECT_THROW(makeFolder(folder / "file" / "b"), Failure);
}

} // namespace
