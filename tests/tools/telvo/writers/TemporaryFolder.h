#ifndef TELVO_TESTS_TOOLS_TELVO_WRITERS_TEMPORARYFOLDER_H
#define TELVO_TESTS_TOOLS_TELVO_WRITERS_TEMPORARYFOLDER_H

#include <filesystem>
#include <gtest/gtest.h>

/// A fresh folder, named for the running test and removed with all that is in it.
class TemporaryFolder
{
  public:
    TemporaryFolder()
    {
        const testing::TestInfo& test = *testing::UnitTest::GetInstance()->current_test_info();
        mPath = std::filesystem::temp_directory_path() /
                (std::string("telvo-") + test.test_suite_name() + '-' + test.name() + '-' +
                 std::to_string(testing::UnitTest::GetInstance()->start_timestamp()));
        std::filesystem::remove_all(mPath);
        std::filesystem::create_directories(mPath);
    }
    ~TemporaryFolder() { std::filesystem::remove_all(mPath); }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    std::filesystem::path operator/(const char* name) const { return mPath / name; }
    const std::filesystem::path& path() const { return mPath; }

  private:
    std::filesystem::path mPath;
};

#endif
