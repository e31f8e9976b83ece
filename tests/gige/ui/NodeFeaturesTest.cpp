#include "NodeFeatures.h"

#include <array>
#include <cstring>
#include <gtest/gtest.h>

namespace gige::ui
{
namespace
{

using genapi::AccessMode;
using genapi::NodeMap;
using genapi::Status;

/// 64 bytes of registers from address 0.
class Registers final : public genapi::RegisterPort
{
  public:
    Status readMemory(std::uint64_t address, std::span<std::uint8_t> bytes) override
    {
        if (silent) {
            return Status::PortTimeout;
        }
        std::memcpy(bytes.data(), &memory.at(address), bytes.size());
        return Status::Ok;
    }
    Status writeMemory(std::uint64_t address, std::span<const std::uint8_t> bytes) override
    {
        std::memcpy(&memory.at(address), bytes.data(), bytes.size());
        return Status::Ok;
    }
    Status readRegister(std::uint64_t address, std::uint32_t& value) override
    {
        value = (memory.at(address) * 256U + memory.at(address + 1)) * 65536U +
                memory.at(address + 2) * 256U + memory.at(address + 3);
        return silent ? Status::PortTimeout : Status::Ok;
    }
    Status writeRegister(std::uint64_t address, std::uint32_t value) override
    {
        for (std::size_t i = 0; i < 4; ++i) {
            memory.at(address + i) = static_cast<std::uint8_t>(value >> (24 - 8 * i));
        }
        return Status::Ok;
    }

    std::array<std::uint8_t, 64> memory{0, 0, 0, 32}; // Width: 32
    bool silent = false;
};

constexpr const char* kDescription = R"(
<RegisterDescription ModelName="M" VendorName="V" SchemaMajorVersion="1" SchemaMinorVersion="1">
<Category Name="Root"><pFeature>Image</pFeature><pFeature>Control</pFeature></Category>
<Category Name="Image"><DisplayName>Image format</DisplayName><ToolTip>Size and format</ToolTip>
  <pFeature>Width</pFeature><pFeature>Format</pFeature><pFeature>Zoom</pFeature>
  <pFeature>Missing</pFeature></Category>
<Category Name="Control"><pFeature>Mirror</pFeature><pFeature>UserName</pFeature>
  <pFeature>Start</pFeature><pFeature>Serial</pFeature><pFeature>Root</pFeature></Category>
<Integer Name="Width"><ToolTip>short</ToolTip><Description>Columns of the image</Description>
  <DisplayName>Image width</DisplayName><Visibility>Expert</Visibility>
  <pValue>WidthReg</pValue><Min>16</Min><Max>64</Max><Inc>8</Inc><Unit>px</Unit></Integer>
<IntReg Name="WidthReg"><Address>0</Address><Length>4</Length><AccessMode>RW</AccessMode>
  <pPort>Device</pPort><Sign>Unsigned</Sign><Endianess>BigEndian</Endianess></IntReg>
<Enumeration Name="Format"><EnumEntry Name="Mono8"><Value>0</Value></EnumEntry>
  <EnumEntry Name="Mono10"><Value>1</Value></EnumEntry>
  <EnumEntry Name="Mono12"><pIsAvailable>Zero</pIsAvailable><Value>2</Value></EnumEntry>
  <Value>0</Value></Enumeration>
<Float Name="Zoom"><Value>1.5</Value><Min>1</Min><Max>4</Max></Float>
<Integer Name="Missing"><pIsAvailable>Zero</pIsAvailable><Value>5</Value></Integer>
<Boolean Name="Mirror"><Value>0</Value></Boolean>
<StringReg Name="UserName"><Address>16</Address><Length>8</Length><AccessMode>RW</AccessMode>
  <pPort>Device</pPort></StringReg>
<Command Name="Start"><pValue>StartReg</pValue><CommandValue>7</CommandValue></Command>
<IntReg Name="StartReg"><Address>32</Address><Length>4</Length><AccessMode>WO</AccessMode>
  <pPort>Device</pPort><Sign>Unsigned</Sign><Endianess>BigEndian</Endianess></IntReg>
<Integer Name="Serial"><Value>99</Value><ImposedAccessMode>RO</ImposedAccessMode></Integer>
<Integer Name="Zero"><Value>0</Value></Integer>
<Port Name="Device"/>
</RegisterDescription>)";

class NodeFeatures : public testing::Test
{
  protected:
    Feature& feature(std::size_t category, std::size_t index)
    {
        return *mRoot.children.at(category).children.at(index).feature;
    }
    Feature& width() { return feature(0, 0); }
    Feature& format() { return feature(0, 1); }
    Feature& zoom() { return feature(0, 2); }
    Feature& missing() { return feature(0, 3); }
    Feature& mirror() { return feature(1, 0); }
    Feature& userName() { return feature(1, 1); }
    Feature& start() { return feature(1, 2); }
    Feature& serial() { return feature(1, 3); }

    Registers mPort;
    std::unique_ptr<NodeMap> mMap = *NodeMap::load(kDescription, mPort);
    FeatureNode mRoot = featuresOf(*mMap);
};

TEST_F(NodeFeatures, FollowTheCategoriesOfTheDescription)
{
    ASSERT_EQ(mRoot.children.size(), 2U);
    EXPECT_EQ(mRoot.children[0].label, "Image format");
    EXPECT_EQ(mRoot.children[0].description, "Size and format");
    EXPECT_EQ(mRoot.children[0].feature, nullptr);
    ASSERT_EQ(mRoot.children[0].children.size(), 4U);
    EXPECT_EQ(mRoot.children[0].children[0].label, "Image width");
    EXPECT_EQ(mRoot.children[0].children[0].description, "Columns of the image");
    EXPECT_EQ(mRoot.children[1].label, "Control");
}

TEST_F(NodeFeatures, LeaveOutACategoryThatLeadsBackUp)
{
    EXPECT_EQ(mRoot.children[1].children.size(), 4U); // Root is not in it
}

TEST_F(NodeFeatures, KnowWhatTheyAre)
{
    EXPECT_EQ(width().info().kind, FeatureKind::Integer);
    EXPECT_EQ(width().info().name, "Width");
    EXPECT_EQ(width().info().unit, "px");
    EXPECT_EQ(width().info().visibility, genapi::Visibility::Expert);
    EXPECT_EQ(format().info().kind, FeatureKind::Enumeration);
    EXPECT_EQ(zoom().info().kind, FeatureKind::Float);
    EXPECT_EQ(mirror().info().kind, FeatureKind::Boolean);
    EXPECT_EQ(userName().info().kind, FeatureKind::String);
    EXPECT_EQ(start().info().kind, FeatureKind::Command);
}

TEST_F(NodeFeatures, ReadValueAndLimitsOfAnInteger)
{
    const FeatureState state = width().read();
    EXPECT_EQ(state.value, FeatureValue(std::int64_t{32}));
    const auto& limits = std::get<IntegerLimits>(state.limits);
    EXPECT_EQ(limits.minimum, 16);
    EXPECT_EQ(limits.maximum, 64);
    EXPECT_EQ(limits.increment, 8);
    EXPECT_TRUE(state.isWritable());
}

TEST_F(NodeFeatures, OfferTheEntriesThatAreThereNow)
{
    const FeatureState state = format().read();
    EXPECT_EQ(state.value, FeatureValue(std::string("Mono8")));
    EXPECT_EQ(state.choices, (std::vector<std::string>{"Mono8", "Mono10"}));
}

TEST_F(NodeFeatures, ShowReadOnlyAndUnavailableOnesAsSuch)
{
    EXPECT_EQ(serial().read().access, AccessMode::ReadOnly);
    EXPECT_EQ(serial().read().value, FeatureValue(std::int64_t{99}));
    EXPECT_FALSE(missing().read().isAvailable());
    EXPECT_EQ(missing().read().value, std::nullopt);
    EXPECT_EQ(missing().read().error, "");
}

TEST_F(NodeFeatures, SayWhyTheyCannotBeRead)
{
    mPort.silent = true;
    const FeatureState state = width().read();
    EXPECT_EQ(state.value, std::nullopt);
    EXPECT_EQ(state.error, "PORT_TIMEOUT");
}

TEST_F(NodeFeatures, WriteEveryKindOfValue)
{
    EXPECT_EQ(width().write(std::int64_t{40}), "");
    EXPECT_EQ(mPort.memory[3], 40);
    EXPECT_EQ(format().write(std::string("Mono10")), "");
    EXPECT_EQ(format().read().value, FeatureValue(std::string("Mono10")));
    EXPECT_EQ(zoom().write(2.5), "");
    EXPECT_EQ(zoom().read().value, FeatureValue(2.5));
    EXPECT_EQ(mirror().write(true), "");
    EXPECT_EQ(mirror().read().value, FeatureValue(true));
    EXPECT_EQ(userName().write(std::string("left")), "");
    EXPECT_EQ(userName().read().value, FeatureValue(std::string("left")));
    EXPECT_EQ(start().write(ExecuteCommand()), "");
    EXPECT_EQ(mPort.memory[35], 7);
}

TEST_F(NodeFeatures, NameTheReasonOfARefusal)
{
    EXPECT_EQ(width().write(std::int64_t{17}), "OUT_OF_RANGE");
    EXPECT_EQ(width().write(2.5), "WRONG_KIND");
    EXPECT_EQ(serial().write(std::int64_t{1}), "READ_ONLY");
    EXPECT_EQ(userName().write(std::string("longer than that")), "OUT_OF_RANGE");
}

TEST(NodeFeaturesOf, ADescriptionWithoutRootAreNone)
{
    Registers port;
    const auto map = NodeMap::load(
        R"(<RegisterDescription><Integer Name="A"><Value>1</Value></Integer></RegisterDescription>)",
        port);
    ASSERT_TRUE(map);
    EXPECT_TRUE(featuresOf(**map).children.empty());
}

} // namespace
} // namespace gige::ui
