#include "DescriptionUrl.h"

#include <gtest/gtest.h>

#include <ostream>

namespace gige::genapi
{

void PrintTo(const DescriptionLocation& location, std::ostream* out)
{
    *out << location.fileName << " at " << location.address << ", " << location.length << " bytes";
}

namespace
{

DescriptionLocation parsed(std::string_view url)
{
    const Result<DescriptionLocation> location = parseDescriptionUrl(url);
    EXPECT_EQ(location.status(), Status::Ok) << url;
    return location ? *location : DescriptionLocation{};
}

Status refusal(std::string_view url)
{
    return parseDescriptionUrl(url).status();
}

TEST(DescriptionUrl, ReadsAddressAndLengthAsHexadecimal)
{
    EXPECT_EQ(parsed("Local:example.xml;10000;3e67"),
              (DescriptionLocation{"example.xml", 0x10000, 0x3E67}));
    EXPECT_EQ(parsed("Local:camera.zip;8001A000;53A5?SchemaVersion=1.1.0"),
              (DescriptionLocation{"camera.zip", 0x8001A000, 0x53A5}));
}

TEST(DescriptionUrl, TakesEverySpelling)
{
    const DescriptionLocation expected{"a.zip", 0xABCD, 0xEF};
    for (const std::string_view url :
         {"local:a.zip;abcd;ef", "LOCAL:a.zip;ABCD;EF", "Local:///a.zip;ABCD;EF",
          " Local: a.zip; ABCD; EF ", "Local:a.zip;0xABCD;0XEF", "Local:a.zip;ABCD;EF ?x=1;2"}) {
        EXPECT_EQ(parsed(url), expected) << url;
    }
}

TEST(DescriptionUrl, EndsAtTheFirstNul)
{
    using namespace std::string_view_literals;
    EXPECT_EQ(parsed("Local:a.xml;10;20\0\0;junk"sv), (DescriptionLocation{"a.xml", 0x10, 0x20}));
}

TEST(DescriptionUrl, DoesNotReadTheHostsFilesOrOtherMachines)
{
    EXPECT_EQ(refusal("File:camera.xml"), Status::UrlUnsupported);
    EXPECT_EQ(refusal("file:///etc/passwd"), Status::UrlUnsupported);
    EXPECT_EQ(refusal("http://example.org/camera.xml"), Status::UrlUnsupported);
    EXPECT_EQ(refusal("HTTPS://example.org/camera.xml"), Status::UrlUnsupported);
}

TEST(DescriptionUrl, RefusesWhatIsNoUrl)
{
    using namespace std::string_view_literals;
    for (const std::string_view url :
         {""sv, "   "sv, "\0\0\0"sv, "Local"sv, "Local:"sv, "Local:a.xml"sv, "Local:a.xml;10"sv,
          "Local:a.xml;10;"sv, "Local:a.xml;;10"sv, "Local:a.xml;xyz;10"sv, "Local:a.xml;10;1g"sv,
          "Local:a.xml;10;0"sv, "Local:a.xml;-10;10"sv, "Local:a.xml;11112222333344445;10"sv,
          "ftp://a"sv}) {
        EXPECT_EQ(refusal(url), Status::UrlMalformed) << url;
    }
}

TEST(DescriptionUrl, LimitsTheLength)
{
    EXPECT_EQ(parsed("Local:a.xml;0;1000000").length, std::size_t{16} << 20);
    EXPECT_EQ(refusal("Local:a.xml;0;1000001"), Status::DescriptionTooLarge);
    EXPECT_EQ(refusal("Local:a.xml;0;FFFFFFFFFFFFFFFF"), Status::DescriptionTooLarge);
}

} // namespace
} // namespace gige::genapi
