#include "PictureWriter.h"
#include "Failure.h"
#include "TemporaryFolder.h"

#include <gtest/gtest.h>

namespace
{

using namespace telvo;

TEST(PictureWriter, HasWrittenAllWhenItFinishes)
{
    const TemporaryFolder folder;
    PictureWriter writer;
    for (int i = 0; i < 20; ++i) {
        writer.put(folder.path() / (std::to_string(i) + ".png"), GrayImage(64, 64));
    }
    writer.finish();
    for (int i = 0; i < 20; ++i) {
        EXPECT_TRUE(std::filesystem::exists(folder.path() / (std::to_string(i) + ".png")));
    }
}

TEST(PictureWriter, ReportsAFailureWhenItFinishes)
{
    const TemporaryFolder folder;
    PictureWriter writer;
    writer.put(folder / "missing" / "a.png", GrayImage(4, 4));
    EXPECT_THROW(writer.finish(), Failure);
    EXPECT_THROW(writer.put(folder / "b.png", GrayImage(4, 4)), Failure);
}

TEST(PictureWriter, EndsWithoutWaitingForTheRest)
{
    const TemporaryFolder folder;
    {
        PictureWriter writer;
        for (int i = 0; i < 200; ++i) {
            writer.put(folder.path() / (std::to_string(i) + ".png"), GrayImage(512, 512));
        }
    }
    for (const auto& entry : std::filesystem::directory_iterator(folder.path())) {
        EXPECT_EQ(entry.path().extension(), ".png"); // what is there is complete
    }
}

} // namespace
