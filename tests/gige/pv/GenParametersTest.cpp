#include "GenParameters.h"
#include "DemoDescription.h"
#include "MemoryPort.h"
#include "StatusTranslations.h"

#include <gtest/gtest.h>
#include <tuple>

namespace
{

using gige::genapi::MemoryPort;
using gige::genapi::NodeMap;
using gige::genapi::Status;

/// The demonstration camera with a text and a condition besides.
constexpr const char* kMoreNodes = R"(
<StringReg Name="UserName"><Address>0x8020</Address><Length>8</Length><AccessMode>RW</AccessMode>
  <pPort>Device</pPort></StringReg>
<Integer Name="Missing"><pIsImplemented>Zero</pIsImplemented><Value>5</Value></Integer>
<Integer Name="Absent"><pIsAvailable>Zero</pIsAvailable><Value>5</Value></Integer>
<Integer Name="Zero"><Value>0</Value></Integer>
</RegisterDescription>)";

std::string description()
{
    std::string text = gige::genapi::kDemoDescription;
    text.replace(text.find("</RegisterDescription>"), std::string::npos, kMoreNodes);
    return text;
}

class GenParameters : public testing::Test
{
  protected:
    template <typename Parameter>
    Parameter& get(const char* name)
    {
        auto* const parameter = dynamic_cast<Parameter*>(mArray.Get(name));
        EXPECT_NE(parameter, nullptr) << name;
        return *parameter;
    }

    MemoryPort mPort{0x8000, std::string(gige::genapi::kDemoMemory) + "54656C766F000000"};
    std::unique_ptr<NodeMap> mMap = *NodeMap::load(description(), mPort);
    bool mIsConnected = true;
    GenParameterArray mArray{*mMap, [this] { return mIsConnected; }};
};

TEST_F(GenParameters, ComeAsTheClassOfTheirKind)
{
    EXPECT_NE(dynamic_cast<PvGenInteger*>(mArray.Get("Width")), nullptr);
    EXPECT_NE(dynamic_cast<PvGenInteger*>(mArray.Get("WidthReg")), nullptr);
    EXPECT_NE(dynamic_cast<PvGenEnum*>(mArray.Get("PixelFormat")), nullptr);
    EXPECT_NE(dynamic_cast<PvGenBoolean*>(mArray.Get("ReverseX")), nullptr);
    EXPECT_NE(dynamic_cast<PvGenString*>(mArray.Get("UserName")), nullptr);
    EXPECT_NE(dynamic_cast<PvGenCommand*>(mArray.Get("AcquisitionStart")), nullptr);
    EXPECT_EQ(dynamic_cast<PvGenInteger*>(mArray.Get("PixelFormat")), nullptr);
}

TEST_F(GenParameters, OfOtherKindsArePlain)
{
    PvGenParameter* const exposure = mArray.Get("ExposureTime");
    ASSERT_NE(exposure, nullptr);
    EXPECT_EQ(dynamic_cast<PvGenInteger*>(exposure), nullptr);
    EXPECT_TRUE(exposure->IsAvailable());
    EXPECT_NE(mArray.Get("Root"), nullptr);
}

TEST_F(GenParameters, AreNullForAnUnknownName)
{
    EXPECT_EQ(mArray.Get("NoSuchFeature"), nullptr);
    EXPECT_EQ(mArray.Get(""), nullptr);
}

TEST_F(GenParameters, AreTheSameObjectEachTime)
{
    EXPECT_EQ(mArray.Get("Width"), mArray.Get("Width"));
    EXPECT_NE(mArray.Get("Width"), mArray.Get("WidthReg"));
}

TEST_F(GenParameters, ReadAndWriteIntegersWithinTheirLimits)
{
    auto& width = get<PvGenInteger>("Width");
    std::int64_t value = 0;
    EXPECT_EQ(width.GetValue(value).GetCodeString(), PvString("OK"));
    EXPECT_EQ(value, 640);
    EXPECT_TRUE(width.GetMin(value).IsOK());
    EXPECT_EQ(value, 16);
    EXPECT_TRUE(width.GetMax(value).IsOK());
    EXPECT_EQ(value, 1024);
    EXPECT_TRUE(width.SetValue(800).IsOK());
    EXPECT_EQ(mPort.hex(0x8000, 4), "00000320");
    EXPECT_EQ(width.SetValue(1032), PvResult(PvResult::Code::OutOfRange));
    EXPECT_EQ(width.SetValue(801), PvResult(PvResult::Code::OutOfRange));
}

constexpr const char* kRangeInRegisters = R"(<RegisterDescription
  SchemaMajorVersion="1" SchemaMinorVersion="1"><Port Name="Device"/>
<Integer Name="N"><pValue>Value</pValue><pMin>Min</pMin><pMax>Max</pMax></Integer>
<IntReg Name="Value"><Address>0x100</Address><Length>4</Length><pPort>Device</pPort>
  <Cachable>NoCache</Cachable></IntReg>
<IntReg Name="Min"><Address>0x104</Address><Length>4</Length><pPort>Device</pPort>
  <Cachable>NoCache</Cachable></IntReg>
<IntReg Name="Max"><Address>0x108</Address><Length>4</Length><pPort>Device</pPort>
  <Cachable>NoCache</Cachable></IntReg></RegisterDescription>)";

TEST(GenParameterReads, OfARangeAreThree)
{
    MemoryPort port(0x100, "0A0000000200000028000000");
    const std::unique_ptr<NodeMap> map = *NodeMap::load(kRangeInRegisters, port);
    GenParameterArray array(*map, [] { return true; });
    auto& number = dynamic_cast<PvGenInteger&>(*array.Get("N"));
    std::int64_t minimum = 0;
    std::int64_t maximum = 0;
    std::int64_t value = 0;
    EXPECT_TRUE(number.GetMin(minimum).IsOK());
    EXPECT_TRUE(number.GetMax(maximum).IsOK());
    EXPECT_TRUE(number.GetValue(value).IsOK());
    EXPECT_EQ(std::tuple(minimum, maximum, value), std::tuple(2, 40, 10));
    EXPECT_EQ(port.takeAccesses(), (std::vector<std::string>{"R 104+4", "R 108+4", "R 100+4"}));
}

TEST_F(GenParameters, ReadAndWriteEnumerationsByName)
{
    auto& format = get<PvGenEnum>("PixelFormat");
    PvString name;
    EXPECT_TRUE(format.GetValue(name).IsOK());
    EXPECT_EQ(name, PvString("Mono8"));
    EXPECT_TRUE(format.SetValue("Mono12").IsOK());
    EXPECT_EQ(mPort.hex(0x8008, 4), "01100005");
    EXPECT_EQ(format.SetValue("Mono99"), PvResult(PvResult::Code::InvalidParameter));
    EXPECT_TRUE(get<PvGenInteger>("Binning").SetValue(0).IsOK());
    EXPECT_EQ(format.SetValue("Mono12"), PvResult(PvResult::Code::NotAvailable));
}

TEST_F(GenParameters, ReadAndWriteBooleansAndStrings)
{
    bool isReversed = false;
    EXPECT_TRUE(get<PvGenBoolean>("ReverseX").GetValue(isReversed).IsOK());
    EXPECT_TRUE(isReversed);
    EXPECT_TRUE(get<PvGenBoolean>("ReverseX").SetValue(false).IsOK());
    EXPECT_EQ(mPort.hex(0x8018, 4), "00000000");

    PvString name;
    EXPECT_TRUE(get<PvGenString>("UserName").GetValue(name).IsOK());
    EXPECT_EQ(name, PvString("Telvo"));
    EXPECT_TRUE(get<PvGenString>("UserName").SetValue("cam 1").IsOK());
    EXPECT_EQ(mPort.hex(0x8020, 8), "63616D2031000000");
    EXPECT_EQ(get<PvGenString>("UserName").SetValue("too long!"),
              PvResult(PvResult::Code::OutOfRange));
}

TEST_F(GenParameters, ExecuteCommands)
{
    EXPECT_TRUE(get<PvGenCommand>("AcquisitionStart").Execute().IsOK());
    EXPECT_EQ(mPort.hex(0x8018, 4), "C0000000");
}

TEST_F(GenParameters, AreNotAvailableWhileTheDeviceLacksThem)
{
    EXPECT_TRUE(mArray.Get("Width")->IsAvailable());
    for (const char* const name : {"Missing", "Absent"}) {
        std::int64_t value = -1;
        EXPECT_FALSE(mArray.Get(name)->IsAvailable());
        EXPECT_EQ(get<PvGenInteger>(name).GetValue(value), PvResult(PvResult::Code::NotAvailable));
        EXPECT_EQ(value, -1);
        EXPECT_EQ(get<PvGenInteger>(name).SetValue(1), PvResult(PvResult::Code::NotAvailable));
    }
}

TEST_F(GenParameters, AnswerAccessDeniedWhenLockedOrRefused)
{
    mPort.set(0x8018, "00000001");
    EXPECT_TRUE(mArray.Get("Width")->IsAvailable());
    EXPECT_EQ(get<PvGenInteger>("Width").SetValue(640), PvResult(PvResult::Code::AccessDenied));
    mPort.failWith(Status::PortAccessDenied);
    EXPECT_EQ(get<PvGenInteger>("Binning").SetValue(0), PvResult(PvResult::Code::AccessDenied));
}

TEST_F(GenParameters, PassOnWhatThePortSays)
{
    const std::pair<Status, PvResult::Code> rows[] = {
        {Status::PortTimeout, PvResult::Code::Timeout},
        {Status::PortNotConnected, PvResult::Code::NotConnected},
        {Status::PortBusy, PvResult::Code::Busy},
        {Status::PortBadAddress, PvResult::Code::InvalidParameter},
        {Status::PortError, PvResult::Code::GenericError},
    };
    for (const auto& [status, code] : rows) {
        mPort.failWith(status);
        std::int64_t value = -1;
        EXPECT_EQ(get<PvGenInteger>("Temperature").GetValue(value), PvResult(code));
        EXPECT_EQ(value, -1);
    }
}

TEST_F(GenParameters, AreNotConnectedOnceTheLinkIsGone)
{
    auto& width = get<PvGenInteger>("Width");
    std::int64_t number = -1;
    EXPECT_TRUE(width.GetValue(number).IsOK());
    mIsConnected = false;
    mPort.takeAccesses();

    const PvResult expected(PvResult::Code::NotConnected);
    PvString text;
    bool isOn = false;
    EXPECT_EQ(width.GetValue(number), expected);
    EXPECT_EQ(width.SetValue(640), expected);
    EXPECT_EQ(width.GetMin(number), expected);
    EXPECT_EQ(width.GetMax(number), expected);
    EXPECT_EQ(get<PvGenEnum>("GainSelector").GetValue(text), expected);
    EXPECT_EQ(get<PvGenEnum>("GainSelector").SetValue("AnalogAll"), expected);
    EXPECT_EQ(get<PvGenBoolean>("ReverseX").GetValue(isOn), expected);
    EXPECT_EQ(get<PvGenString>("UserName").GetValue(text), expected);
    EXPECT_EQ(get<PvGenCommand>("AcquisitionStart").Execute(), expected);
    EXPECT_FALSE(mArray.Get("Width")->IsAvailable());
    EXPECT_TRUE(mPort.takeAccesses().empty());
}

TEST(GenResults, NameEveryKindOfRefusal)
{
    EXPECT_EQ(toPvResult(Status::WriteOnly), PvResult(PvResult::Code::AccessDenied));
    EXPECT_EQ(toPvResult(Status::BadNode), PvResult(PvResult::Code::GenericError));
    EXPECT_EQ(toPvResult(Status::CircularReference), PvResult(PvResult::Code::GenericError));
    EXPECT_EQ(toPvResult(Status::UrlUnsupported), PvResult(PvResult::Code::NotSupported));
}

} // namespace
