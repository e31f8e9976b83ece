#include "DemoDescription.h"
#include "MemoryPort.h"
#include "NodeMap.h"

#include <gtest/gtest.h>

namespace gige::genapi
{
namespace
{

class DemoCamera : public testing::Test
{
  protected:
    void SetUp() override
    {
        auto map = NodeMap::load(kDemoDescription, mPort);
        ASSERT_EQ(map.status(), Status::Ok);
        mMap = *std::move(map);
        for (const Node* const node : mMap->nodes()) {
            EXPECT_EQ(node->defect(), Status::Ok) << node->name();
        }
    }

    IntegerNode& integer(const char* name) { return *mMap->find<IntegerNode>(name); }
    FloatNode& real(const char* name) { return *mMap->find<FloatNode>(name); }
    BooleanNode& boolean(const char* name) { return *mMap->find<BooleanNode>(name); }
    EnumerationNode& enumeration(const char* name) { return *mMap->find<EnumerationNode>(name); }
    CommandNode& command(const char* name) { return *mMap->find<CommandNode>(name); }

    MemoryPort mPort{0x8000, kDemoMemory};
    std::unique_ptr<NodeMap> mMap;
};

TEST_F(DemoCamera, ListsItsFeaturesFromTheRoot)
{
    std::vector<std::string> names;
    for (const Node* const node : mMap->root()->features()) {
        names.push_back(node->name());
    }
    EXPECT_EQ(names,
              (std::vector<std::string>{"Width", "PixelFormat", "ExposureTime", "GainSelector",
                                        "Gain", "ReverseX", "AcquisitionStart"}));
}

TEST_F(DemoCamera, ReadsMaskedBitsAndAFormulaOfThem)
{
    EXPECT_EQ(*integer("Binning").value(), 1);
    EXPECT_EQ(*integer("Binning").maximum(), 3);
    EXPECT_EQ(*integer("WidthMax").value(), 1024);
}

TEST_F(DemoCamera, ReadsAnIntegerWithItsLimits)
{
    EXPECT_EQ(*integer("Width").value(), 640);
    EXPECT_EQ(*integer("Width").minimum(), 16);
    EXPECT_EQ(*integer("Width").maximum(), 1024);
    EXPECT_EQ(*integer("Width").increment(), 8);
}

TEST_F(DemoCamera, ReadsAnEnumerationAndAFormulaOfIt)
{
    EXPECT_EQ(*enumeration("PixelFormat").text(), "Mono8");
    EXPECT_EQ(*enumeration("PixelFormat").value(), 0x01080001);
    EXPECT_EQ(*integer("PayloadSize").value(), 307200);
}

TEST_F(DemoCamera, ConvertsARegisterToMicroseconds)
{
    FloatNode& exposure = real("ExposureTime");
    EXPECT_EQ(*exposure.value(), 1000.0);
    EXPECT_EQ(*exposure.minimum(), 4.0);
    EXPECT_EQ(*exposure.maximum(), 100000.0);
    EXPECT_EQ(*exposure.increment(), std::nullopt);
    EXPECT_EQ(exposure.unit(), "us");
}

TEST_F(DemoCamera, WritesAConvertedValueRounded)
{
    EXPECT_EQ(real("ExposureTime").setValue(1234.56), Status::Ok);
    EXPECT_EQ(mPort.hex(0x800C, 4), "00007890");
    EXPECT_EQ(real("ExposureTime").setValue(3.9), Status::OutOfRange);
    EXPECT_EQ(real("ExposureTime").setValue(100001), Status::OutOfRange);
    EXPECT_EQ(mPort.hex(0x800C, 4), "00007890");
}

TEST_F(DemoCamera, SelectsARegisterByIndex)
{
    EXPECT_EQ(*integer("Gain").value(), -10);
    EXPECT_EQ(enumeration("GainSelector").setText("DigitalAll"), Status::Ok);
    EXPECT_EQ(*integer("Gain").value(), 300);
}

TEST_F(DemoCamera, WritesTwoBytesWithoutTouchingTheirNeighbours)
{
    mPort.set(0x8012, "1234");
    EXPECT_EQ(integer("Gain").setValue(-300), Status::Ok);
    EXPECT_EQ(mPort.hex(0x8010, 8), "D4FE12342C010000");
}

TEST_F(DemoCamera, SwitchesOneBitAndRunsACommandThatClearsItself)
{
    EXPECT_TRUE(*boolean("ReverseX").value());
    EXPECT_EQ(boolean("ReverseX").setValue(false), Status::Ok);
    EXPECT_EQ(mPort.hex(0x8018, 4), "00000000");
    EXPECT_FALSE(*boolean("ReverseX").value());

    EXPECT_EQ(command("AcquisitionStart").execute(), Status::Ok);
    EXPECT_EQ(mPort.hex(0x8018, 4), "40000000");
    EXPECT_FALSE(*command("AcquisitionStart").isDone());
    mPort.set(0x8018, "00000000");
    EXPECT_TRUE(*command("AcquisitionStart").isDone());
}

TEST_F(DemoCamera, DoesNotStartAgainByWritingANeighbouringBit)
{
    EXPECT_EQ(command("AcquisitionStart").execute(), Status::Ok);
    mPort.set(0x8018, "80000000"); // done, as the host has not seen yet
    EXPECT_EQ(boolean("ReverseX").setValue(true), Status::Ok);
    EXPECT_EQ(mPort.hex(0x8018, 4), "80000000");
}

TEST_F(DemoCamera, ReadsASignedBitField)
{
    EXPECT_EQ(*integer("Temperature").value(), -22);
    EXPECT_EQ(*integer("Temperature").minimum(), -2048);
    EXPECT_EQ(*integer("Temperature").maximum(), 2047);
}

TEST_F(DemoCamera, ChecksRangeAndIncrementBeforeItWrites)
{
    EXPECT_EQ(integer("Width").setValue(648), Status::Ok);
    EXPECT_EQ(mPort.hex(0x8000, 4), "00000288");
    EXPECT_EQ(integer("Width").setValue(645), Status::OutOfRange);
    EXPECT_EQ(integer("Width").setValue(1032), Status::OutOfRange);
    EXPECT_EQ(integer("Width").setValue(8), Status::OutOfRange);
    EXPECT_EQ(mPort.hex(0x8000, 4), "00000288");
}

TEST_F(DemoCamera, OffersAnEntryOnlyWhileItIsAvailable)
{
    EnumEntryNode& mono12 = *enumeration("PixelFormat").findEntry("Mono12");
    EXPECT_EQ(*mono12.accessMode(), AccessMode::ReadOnly);
    EXPECT_EQ(enumeration("PixelFormat").setText("Mono12"), Status::Ok);
    EXPECT_EQ(mPort.hex(0x8008, 4), "01100005");

    EXPECT_EQ(integer("Binning").setValue(0), Status::Ok);
    EXPECT_EQ(*mono12.accessMode(), AccessMode::NotAvailable);
    EXPECT_EQ(enumeration("PixelFormat").setText("Mono8"), Status::Ok);
    EXPECT_EQ(enumeration("PixelFormat").setText("Mono12"), Status::EntryNotOffered);
    EXPECT_EQ(enumeration("PixelFormat").setText("Mono16"), Status::NoSuchEntry);
    EXPECT_EQ(enumeration("PixelFormat").setValue(7), Status::NoSuchEntry);
    EXPECT_EQ(mPort.hex(0x8008, 4), "01080001");
}

TEST_F(DemoCamera, KeepsTheOtherBitsOfAMaskedRegister)
{
    EXPECT_EQ(integer("Binning").setValue(2), Status::Ok);
    EXPECT_EQ(mPort.hex(0x8004, 4), "FFFFFFFE");
    EXPECT_EQ(*integer("WidthMax").value(), 512);
    EXPECT_EQ(*integer("Width").maximum(), 512);
}

TEST_F(DemoCamera, RefusesToWriteALockedFeature)
{
    mPort.set(0x8018, "00000001");
    EXPECT_EQ(*integer("Streaming").value(), 1);
    EXPECT_EQ(*integer("Width").accessMode(), AccessMode::ReadOnly);
    EXPECT_EQ(integer("Width").setValue(648), Status::ReadOnly);
    EXPECT_EQ(mPort.hex(0x8000, 4), "00000280");
    EXPECT_EQ(*integer("Width").value(), 640);
}

TEST_F(DemoCamera, GivesEveryNodeItsKind)
{
    const auto kindOf = [this](const char* name) { return mMap->find(name)->kind(); };
    EXPECT_EQ(kindOf("Root"), NodeKind::Category);
    EXPECT_EQ(kindOf("Width"), NodeKind::Integer);
    EXPECT_EQ(kindOf("Binning"), NodeKind::Integer);
    EXPECT_EQ(kindOf("ReverseXBit"), NodeKind::Integer);
    EXPECT_EQ(kindOf("ExposureTime"), NodeKind::Float);
    EXPECT_EQ(kindOf("PixelFormat"), NodeKind::Enumeration);
    EXPECT_EQ(kindOf("ReverseX"), NodeKind::Boolean);
    EXPECT_EQ(kindOf("AcquisitionStart"), NodeKind::Command);
    EXPECT_EQ(kindOf("Device"), NodeKind::Port);
    EXPECT_EQ(mMap->find("Nothing"), nullptr);
    EXPECT_EQ(mMap->find<FloatNode>("Width"), nullptr);
}

} // namespace
} // namespace gige::genapi
