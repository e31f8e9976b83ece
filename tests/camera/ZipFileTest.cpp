#include "ZipFile.h"

#include <gtest/gtest.h>
#include <zlib.h>

namespace camera
{
namespace
{

std::uint32_t get32(const std::vector<std::uint8_t>& bytes, std::size_t at)
{
    return std::uint32_t{bytes[at]} | (std::uint32_t{bytes[at + 1]} << 8) |
           (std::uint32_t{bytes[at + 2]} << 16) | (std::uint32_t{bytes[at + 3]} << 24);
}

constexpr std::size_t kData = 30 + 5; // local header and the name "a.xml"

TEST(ZipFile, StoresTheContentAsItIs)
{
    const auto zip = zipFile("a.xml", "123456789", false);
    EXPECT_EQ(get32(zip, 0), 0x04034B50U);
    EXPECT_EQ(get32(zip, 14), 0xCBF43926U); // the known CRC-32 of these digits
    EXPECT_EQ(get32(zip, 18), 9U);
    EXPECT_EQ(get32(zip, 22), 9U);
    EXPECT_EQ(std::string(zip.begin() + kData, zip.begin() + kData + 9), "123456789");
    const std::size_t directory = kData + 9;
    EXPECT_EQ(get32(zip, directory), 0x02014B50U);
    EXPECT_EQ(get32(zip, directory + 24), 9U);
    const std::size_t end = directory + 46 + 5;
    EXPECT_EQ(get32(zip, end), 0x06054B50U);
    EXPECT_EQ(get32(zip, end + 16), directory);
    EXPECT_EQ(zip.size(), end + 22);
}

TEST(ZipFile, DeflatesTheContent)
{
    const std::string content(10'000, 'x');
    auto zip = zipFile("a.xml", content, true);
    EXPECT_LT(zip.size(), 500U);
    std::string unpacked(content.size(), '\0');
    z_stream stream{};
    ASSERT_EQ(inflateInit2(&stream, -MAX_WBITS), Z_OK);
    stream.next_in = &zip[kData];
    stream.avail_in = get32(zip, 18);
    stream.next_out = reinterpret_cast<Bytef*>(unpacked.data());
    stream.avail_out = static_cast<uInt>(unpacked.size());
    EXPECT_EQ(inflate(&stream, Z_FINISH), Z_STREAM_END);
    inflateEnd(&stream);
    EXPECT_EQ(unpacked, content);
}

} // namespace
} // namespace camera
