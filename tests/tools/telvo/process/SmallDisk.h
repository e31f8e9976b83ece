#ifndef TELVO_TESTS_TOOLS_TELVO_PROCESS_SMALLDISK_H
#define TELVO_TESTS_TOOLS_TELVO_PROCESS_SMALLDISK_H

#include <filesystem>
#include <gtest/gtest.h>
#include <sched.h>
#include <sys/mount.h>
#include <utility>

/// A file system of this process and its children that holds less than the recording.
class SmallDisk
{
  public:
    explicit SmallDisk(std::filesystem::path folder, const char* options)
        : mFolder(std::move(folder))
    {
        std::filesystem::create_directory(mFolder);
        EXPECT_EQ(unshare(CLONE_NEWNS), 0);
        EXPECT_EQ(mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr), 0);
        EXPECT_EQ(mount("tmpfs", mFolder.c_str(), "tmpfs", 0, options), 0);
    }
    ~SmallDisk() { umount2(mFolder.c_str(), MNT_DETACH); }
    SmallDisk(const SmallDisk&) = delete;
    SmallDisk& operator=(const SmallDisk&) = delete;

  private:
    std::filesystem::path mFolder;
};

#endif
