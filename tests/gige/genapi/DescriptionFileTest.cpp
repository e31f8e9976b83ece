#include "DescriptionFile.h"

#include "ZipBuilder.h"

#include <gtest/gtest.h>

namespace gige::genapi
{
namespace
{

using Bytes = ZipBuilder::Bytes;

Bytes bytesOf(const std::string& text)
{
    return {text.begin(), text.end()};
}

std::string unpacked(const Bytes& file)
{
    const Result<std::string> text = unpackDescription(file);
    EXPECT_EQ(text.status(), Status::Ok);
    return text ? *text : "";
}

Status refusal(const Bytes& file)
{
    return unpackDescription(file).status();
}

TEST(DescriptionFile, LeavesXmlAsItIs)
{
    EXPECT_EQ(unpacked(bytesOf("<a/>")), "<a/>");
    EXPECT_EQ(unpacked(bytesOf("\xEF\xBB\xBF <a/>")), "\xEF\xBB\xBF <a/>");
    EXPECT_EQ(unpacked({}), "");
    EXPECT_EQ(unpacked(bytesOf("PK")), "PK");
}

TEST(DescriptionFile, UnpacksAnArchiveByItsContent)
{
    EXPECT_EQ(unpacked(ZipBuilder().store("camera.xml", "<stored/>").finish()), "<stored/>");
    EXPECT_EQ(unpacked(ZipBuilder().deflate("camera.xml", "<deflated/>").finish()), "<deflated/>");
    EXPECT_EQ(unpacked(ZipBuilder().deflate("only one", "<any name/>").finish()), "<any name/>");
}

TEST(DescriptionFile, TakesSizesFromTheDirectory)
{
    EXPECT_EQ(unpacked(ZipBuilder().withoutLocalSizes().deflate("a.xml", "<a/>").finish()), "<a/>");
}

TEST(DescriptionFile, TakesTheFirstXmlOfSeveralFiles)
{
    const Bytes archive = ZipBuilder()
                              .store("readme.txt", "text")
                              .deflate("Camera.XML", "<first/>")
                              .deflate("other.xml", "<second/>")
                              .finish();
    EXPECT_EQ(unpacked(archive), "<first/>");
    EXPECT_EQ(refusal(ZipBuilder().store("a.txt", "a").store("b.txt", "b").finish()),
              Status::ZipMalformed);
}

TEST(DescriptionFile, IgnoresWhatFollowsTheArchive)
{
    Bytes archive = ZipBuilder().store("a.xml", "<a/>").finish();
    archive.resize(archive.size() + 3);
    EXPECT_EQ(unpacked(archive), "<a/>");
}

TEST(DescriptionFile, RefusesATruncatedArchive)
{
    const Bytes archive = ZipBuilder().deflate("a.xml", "<a>some text</a>").finish();
    // The last four bytes are zeros: high half of an offset, length of no comment.
    for (std::size_t size = 4; size < archive.size() - 4; ++size) {
        EXPECT_EQ(refusal(Bytes(archive.begin(), archive.begin() + static_cast<long>(size))),
                  Status::ZipMalformed)
            << size;
    }
}

TEST(DescriptionFile, RefusesAWrongChecksum)
{
    Bytes archive = ZipBuilder().store("a.xml", "<a/>").finish();
    archive[30 + 5 + 1] ^= 1U; // in the content, after header and name
    EXPECT_EQ(refusal(archive), Status::ZipMalformed);
}

TEST(DescriptionFile, RefusesAnEmptyArchive)
{
    Bytes archive = bytesOf("PK\x03\x04");
    const Bytes end = ZipBuilder().finish();
    archive.insert(archive.end(), end.begin(), end.end());
    EXPECT_EQ(refusal(archive), Status::ZipMalformed);
}

TEST(DescriptionFile, DoesNotUnpackGigabytes)
{
    constexpr std::size_t kTwoGiB = std::size_t{2} << 30;
    const Bytes bomb = ZipBuilder().deflateBlanks("a.xml", kTwoGiB).finish();
    EXPECT_LT(bomb.size(), std::size_t{3} << 20);
    EXPECT_EQ(refusal(bomb), Status::DescriptionTooLarge);
}

TEST(DescriptionFile, UnpacksUpToTheLimit)
{
    constexpr std::size_t kLimit = std::size_t{16} << 20;
    EXPECT_EQ(unpacked(ZipBuilder().deflateBlanks("a.xml", kLimit).finish()).size(), kLimit);
    EXPECT_EQ(refusal(ZipBuilder().deflateBlanks("a.xml", kLimit + (1U << 20)).finish()),
              Status::DescriptionTooLarge);
    EXPECT_EQ(refusal(Bytes(kLimit + 1, ' ')), Status::DescriptionTooLarge);
}

} // namespace
} // namespace gige::genapi
