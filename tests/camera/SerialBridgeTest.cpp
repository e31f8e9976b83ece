#include "SerialBridge.h"

#include <gtest/gtest.h>

namespace camera
{
namespace
{

class SerialBridgeTest : public testing::Test
{
  protected:
    void put(std::size_t offset, const std::string& text)
    {
        mBridge.write(offset, std::vector<std::uint8_t>(text.begin(), text.end()));
    }

    std::vector<std::uint32_t> mWritten;
    SerialBridge mBridge{[this](std::uint16_t /*address*/, std::uint32_t value) {
        mWritten.push_back(value);
        return true;
    }};
};

TEST_F(SerialBridgeTest, SendsTheFirstBytesOfItsBuffer)
{
    put(0, ":GW0001");
    put(7, "0042:GW00010043");
    mBridge.transmit(11);
    EXPECT_EQ(mWritten, (std::vector<std::uint32_t>{0x42}));
    EXPECT_EQ(mBridge.transmitted(), 11U);
}

TEST_F(SerialBridgeTest, ShowsTheBytesThatWaitWithZerosBehindThem)
{
    put(0, ":XX0001");
    mBridge.transmit(7);
    const std::vector<std::uint8_t> received = mBridge.receiveBuffer();
    EXPECT_EQ(received.size(), 256U);
    EXPECT_EQ(std::string(received.begin(), received.begin() + 5), std::string(":ER\r\0", 5));
}

TEST_F(SerialBridgeTest, TakesNothingBeyondItsEnd)
{
    put(254, "abc");
    EXPECT_EQ(mBridge.transmitBuffer()[254], 0);
    put(254, "ab");
    EXPECT_EQ(mBridge.transmitBuffer()[255], 'b');
}

} // namespace
} // namespace camera
