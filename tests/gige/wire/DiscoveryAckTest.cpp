#include "DiscoveryAck.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string_view>

using namespace gige::wire;

namespace
{

void put(Bytes& bytes, std::size_t offset, std::string_view text)
{
    std::ranges::copy(text, bytes.begin() + static_cast<std::ptrdiff_t>(offset));
}

DiscoveryAck camera()
{
    return {.versionMajor = 1,
            .versionMinor = 2,
            .deviceMode = 0x80000001,
            .mac = {{0x02, 0x54, 0x45, 0x00, 0x00, 0x21}},
            .supportedIpOptions = 7,
            .currentIpOptions = 6,
            .address = 0x7F00000B,
            .subnetMask = 0xFF000000,
            .gateway = 0x7F000001,
            .manufacturer = "Maker",
            .model = "Model",
            .deviceVersion = "1.0",
            .manufacturerInformation = "Information",
            .serialNumber = "SN0123456789ABCD",
            .userDefinedName = "cam"};
}

Bytes cameraBytes()
{
    Bytes bytes(248);
    bytes[1] = 1;
    bytes[3] = 2;
    bytes[4] = 0x80;
    bytes[7] = 0x01;
    put(bytes, 10, std::string_view("\x02\x54\x45\x00\x00\x21", 6));
    bytes[19] = 7;
    bytes[23] = 6;
    bytes[36] = 0x7F;
    bytes[39] = 0x0B;
    bytes[52] = 0xFF;
    bytes[68] = 0x7F;
    bytes[71] = 0x01;
    put(bytes, 72, "Maker");
    put(bytes, 104, "Model");
    put(bytes, 136, "1.0");
    put(bytes, 168, "Information");
    put(bytes, 216, "SN0123456789ABCD"); // fills its field: no NUL
    put(bytes, 232, "cam");
    return bytes;
}

TEST(DiscoveryAck, HasItsFieldsAtTheBootstrapAddresses)
{
    const auto bytes = encode(camera());
    EXPECT_EQ(Bytes(bytes.begin(), bytes.end()), cameraBytes());
    EXPECT_EQ(decodeDiscoveryAck(cameraBytes()), camera());
}

TEST(DiscoveryAck, CutsTextsAtTheirField)
{
    DiscoveryAck ack = camera();
    ack.manufacturer.assign(40, 'M');
    ack.userDefinedName.assign(17, 'U');
    const auto decoded = decodeDiscoveryAck(encode(ack));
    ASSERT_TRUE(decoded);
    EXPECT_EQ(decoded->manufacturer, std::string(32, 'M'));
    EXPECT_EQ(decoded->model, "Model");
    EXPECT_EQ(decoded->userDefinedName, std::string(16, 'U'));
}

TEST(DiscoveryAck, AcceptsAShortPayloadFrom40BytesOn)
{
    const Bytes bytes = cameraBytes();
    EXPECT_FALSE(decodeDiscoveryAck(ByteView(bytes).first(39)));
    const auto ack = decodeDiscoveryAck(ByteView(bytes).first(40));
    ASSERT_TRUE(ack);
    EXPECT_EQ(ack->address, 0x7F00000BU);
    EXPECT_EQ(ack->subnetMask, 0U);
    EXPECT_EQ(ack->manufacturer, "");
}

TEST(DiscoveryAck, IgnoresWhatFollows)
{
    Bytes bytes = cameraBytes();
    bytes.resize(540, 0xEE);
    EXPECT_EQ(decodeDiscoveryAck(bytes), camera());
}

} // namespace
