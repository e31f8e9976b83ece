// The camera's texts, asked for by key.
#include "GrabberTest.h"

#include <algorithm>
#include <array>

namespace
{

class IdentityTest : public InitializedGrabberTest
{
  protected:
    /// The text for a key; "result n" when there is none.
    std::string param(const std::string& key)
    {
        std::array<char, 64> buffer{};
        buffer.fill('x');
        const std::uint32_t size = buffer.size();
        const std::int32_t result = expGetParam(key.c_str(), buffer.data(), &size, kCamera);
        return result == 0 ? buffer.data() : "result " + std::to_string(result);
    }
};

TEST_F(IdentityTest, GivesEveryTextByItsKey)
{
    EXPECT_EQ(param("ipAddress"), "127.0.0.21");
    EXPECT_EQ(param("macAddress"), "02:54:45:00:00:21");
    EXPECT_EQ(param("ipAddressNIC"), "127.0.0.9");
    EXPECT_EQ(param("macAddressNIC"), "127.0.0.1");
    EXPECT_EQ(param("cameraName"), "bench camera");
    EXPECT_EQ(param("manufacturer"), "Orvale");
    EXPECT_EQ(param("model"), "Quor7");
    EXPECT_EQ(param("serialNumber"), "SN-0042");
    EXPECT_EQ(param("gigeVersion"), "GigE 1.2");
    EXPECT_EQ(param("cameraVersion"), "B1.02-F3.24-V2.13");
    EXPECT_EQ(param("memory"), "8192");
    EXPECT_EQ(param("ioValues"), "");
    EXPECT_EQ(s.takeCalls(), Texts{}); // without asking the camera
}

TEST_F(IdentityTest, IgnoresTheKeysCase)
{
    EXPECT_EQ(param("IPADDRESS"), "127.0.0.21");
    EXPECT_EQ(param("macaddressnic"), "127.0.0.1");
}

TEST_F(IdentityTest, TakesTheFirstNameThatTheKeyBegins)
{
    EXPECT_EQ(param("ip"), "127.0.0.21");
    EXPECT_EQ(param("m"), "02:54:45:00:00:21");
    EXPECT_EQ(param("ipAddressN"), "127.0.0.9");
    EXPECT_EQ(param("man"), "Orvale");
    EXPECT_EQ(param("MO"), "Quor7");
    EXPECT_EQ(param("me"), "8192");
    EXPECT_EQ(param("camera"), "bench camera");
    EXPECT_EQ(param("cameraV"), "B1.02-F3.24-V2.13");
    EXPECT_EQ(param("io"), "");
}

TEST_F(IdentityTest, RefusesKeysThatBeginNoName)
{
    EXPECT_EQ(param("ipAddressX"), "result -3");
    EXPECT_EQ(param("models"), "result -3");
    EXPECT_EQ(param("x"), "result -3");
    EXPECT_EQ(param(" ip"), "result -3");
}

TEST_F(IdentityTest, RefusesAnEmptyKeyAndLeavesTheBuffer)
{
    std::array<char, 50> buffer{};
    buffer.fill('x');
    const std::uint32_t size = buffer.size();
    EXPECT_EQ(expGetParam("", buffer.data(), &size, kCamera), -2);
    EXPECT_EQ(buffer[0], 'x');
}

TEST_F(IdentityTest, RefusesANullBufferBeforeItLooksAtTheKey)
{
    const std::uint32_t size = 50;
    EXPECT_EQ(expGetParam("", nullptr, &size, kCamera), -1);
}

TEST_F(IdentityTest, FillsTheHostsSizeWithZeros)
{
    const auto isZero = [](char c) { return c == '\0'; };
    std::array<char, 64> buffer{};
    const std::uint32_t size = 60;
    for (const char* key : {"model", "ioValues", "unknown"}) {
        buffer.fill('x');
        expGetParam(key, buffer.data(), &size, kCamera);
        EXPECT_TRUE(std::all_of(buffer.begin() + 5, buffer.begin() + size, isZero)) << key;
        EXPECT_EQ(buffer[size], 'x') << key;
    }
}

TEST_F(IdentityTest, CutsFirmwareVersionsToFourCharacters)
{
    s.camera().integer("FirmwareVersionBootloader").value(1000);
    s.camera().integer("FirmwareVersionController").value(12345);
    s.camera().integer("FirmwareVersionFPGA").value(7);
    rebind();
    EXPECT_EQ(param("cameraVersion"), "B10.0-F0.07-V123.");
}

TEST_F(IdentityTest, CountsMissingFirmwareVersionsAndMemoryAsZero)
{
    s.camera().remove({"FirmwareVersionBootloader", "FirmwareVersionController",
                       "FirmwareVersionFPGA", "RecordCameraBufferSize"});
    ASSERT_EQ(initialize(), 0);
    const Texts calls = s.takeCalls();
    EXPECT_NE(std::find(calls.begin(), calls.end(),
                        "log Firmware versions: Bootloader 0, Controller 0, FPGA 0"),
              calls.end());
    EXPECT_EQ(param("cameraVersion"), "B0.00-F0.00-V0.00");
    EXPECT_EQ(param("memory"), "0");
}

TEST_F(IdentityTest, KeepsATextWhoseFeatureIsMissing)
{
    s.camera().remove({"DeviceUserID", "DeviceVendorName", "DeviceModelName", "DeviceID",
                       "DeviceVersion", "GevSCDA"});
    rebind();
    EXPECT_EQ(param("cameraName"), "bench camera");
    EXPECT_EQ(param("manufacturer"), "Orvale");
    EXPECT_EQ(param("model"), "Quor7");
    EXPECT_EQ(param("serialNumber"), "SN-0042");
    EXPECT_EQ(param("gigeVersion"), "GigE 1.2");
    EXPECT_EQ(param("macAddressNIC"), "127.0.0.1");
}

TEST_F(IdentityTest, CountsFirmwareVersionsAndMemoryThatCannotBeReadAsZero)
{
    for (const char* feature : {"FirmwareVersionBootloader", "FirmwareVersionController",
                                "FirmwareVersionFPGA", "RecordCameraBufferSize"}) {
        s.answerAlways(std::string(feature) + ".GetValue", Code::Timeout);
    }
    rebind();
    EXPECT_EQ(param("cameraVersion"), "B0.00-F0.00-V0.00");
    EXPECT_EQ(param("memory"), "0");
}

TEST_F(IdentityTest, CutsTextsAt49Characters)
{
    s.camera().string("DeviceVendorName").value(std::string(53, 'v'));
    rebind();
    EXPECT_EQ(param("manufacturer"), std::string(49, 'v'));
}

TEST_F(IdentityTest, TextsBeforeInitializeAreEmptyButForTheAddresses)
{
    expDisconnectGrabber(kCamera);
    ASSERT_EQ(connect(), 0);
    EXPECT_EQ(param("ipAddress"), "127.0.0.21");
    EXPECT_EQ(param("macAddress"), "02:54:45:00:00:21");
    EXPECT_EQ(param("model"), "");
    EXPECT_EQ(param("cameraName"), "");
}

} // namespace
