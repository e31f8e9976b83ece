#include "DescriptionXml.h"
#include "RegisterMap.h"

#include <gtest/gtest.h>
#include <pugixml.hpp>

#include <map>
#include <set>
#include <string>

namespace camera
{
namespace
{

struct Described {
    explicit Described(const CameraOptions& options = {})
    {
        EXPECT_TRUE(mDocument.load_string(descriptionXml(options).c_str()));
        for (const pugi::xml_node node : root().children()) {
            mNodes.emplace(node.attribute("Name").value(), node);
        }
    }
    pugi::xml_node root() const { return mDocument.child("RegisterDescription"); }
    bool has(const std::string& name) const { return mNodes.contains(name); }
    /// Element name of a node; empty if there is none.
    std::string kind(const std::string& name) const
    {
        const auto node = mNodes.find(name);
        return node == mNodes.end() ? "" : node->second.name();
    }
    pugi::xml_node node(const std::string& name) const { return mNodes.at(name); }

    pugi::xml_document mDocument;
    std::map<std::string, pugi::xml_node> mNodes;
};

// What the host library binds, by the type it binds it as.
const std::map<std::string, std::vector<std::string>> kExpected{
    {"Command",
     {"StreamGetInfoFrame", "AcquisitionStart", "AcquisitionStop", "RecordStart", "RecordStop",
      "UserSetSave", "AckEnable", "FlashCardWrite", "FlashCardWriteStop", "StreamSequenceStart",
      "SerialPort0ReceiveFlush"}},
    {"Integer",
     {"StreamSingleFrame",
      "ExposureTimeRaw",
      "AcquisitionFrameRateRaw",
      "RecordCurrentSequenceNumber",
      "RecordTrailer",
      "RecordMaxFramesPerSequence",
      "RecordNumberOfFrames",
      "RecordNumberOfFramesPerSequence",
      "BlackLevelRaw",
      "GainRaw",
      "MultipleSlopeDualRaw",
      "MultipleSlopeTripleRaw",
      "Temperature",
      "RecordBurstCnt",
      "Width",
      "Height",
      "OffsetX",
      "OffsetY",
      "SensorWidth",
      "SensorHeight",
      "IBOffsetX",
      "IBOffsetY",
      "IBWidth",
      "IBHeight",
      "IBThreshold",
      "IBReleaseCondition",
      "RecordLastRecWidth",
      "RecordLastRecHeight",
      "InternalDataRate",
      "Data00",
      "Data01",
      "Data02",
      "Data03",
      "FirmwareVersionFPGA",
      "FirmwareVersionController",
      "FirmwareVersionBootloader",
      "RecordCameraBufferSize",
      "GevSCPSPacketSize",
      "GevHeartbeatTimeout",
      "GevSCPD",
      "StreamSequenceSelector",
      "StreamStartNumber",
      "StreamEndNumber",
      "PayloadSize",
      "SerialPort0TransmitLength",
      "SerialPort0ReceiveLength",
      "SerialPort0ReceiveConsume"}},
    {"Enumeration",
     {"CameraState", "AcquisitionSource", "MultipleSlopeMode", "ExtTriggerPolarity",
      "SyncInPolarity", "SyncOutSelect", "SyncARMPolarity", "UserSetSelector",
      "UserSetDefaultSelector", "RecordMode", "RecordNumberOfSequences", "PixelFormat",
      "AcquisitionMode"}},
    {"Boolean",
     {"ExtTriggerEnable", "SyncInEnable", "DecimationXY", "RecordStandby",
      "RecordTrailerRecordingActive", "IBEnable", "IBWindowVisible", "RecordWhileTriggerActive",
      "ImageVANTOAvailable", "FlashCardAvailable", "FlashCardWriteAfterRecordEnable",
      "RecordStartAtPowerOn", "IRIGBEnable", "IRIGBAvailable", "MultisequenceAvailable"}},
    {"StringReg",
     {"DeviceUserID", "DeviceVendorName", "DeviceModelName", "DeviceID", "DeviceVersion",
      "GevSCDA"}},
    {"Register", {"SerialPort0TransmitBuffer", "SerialPort0ReceiveBuffer"}},
};

TEST(DescriptionXml, HasEveryFeatureThatTheHostLooksFor)
{
    const Described description;
    for (const auto& [kind, names] : kExpected) {
        for (const std::string& name : names) {
            EXPECT_EQ(description.kind(name), kind) << name;
        }
    }
}

TEST(DescriptionXml, RefersOnlyToNodesThatAreThere)
{
    const Described description;
    std::size_t references = 0;
    for (const pugi::xml_node node : description.root().children()) {
        for (const pugi::xml_node child : node.children()) {
            const std::string element = child.name();
            if (element.size() > 1 && element[0] == 'p' && std::isupper(element[1]) != 0) {
                EXPECT_TRUE(description.has(child.child_value())) << child.child_value();
                ++references;
            }
        }
    }
    EXPECT_GT(references, 300U);
}

TEST(DescriptionXml, NamesEachNodeOnce)
{
    const Described description;
    std::set<std::string> names;
    for (const pugi::xml_node node : description.root().children()) {
        EXPECT_TRUE(names.insert(node.attribute("Name").value()).second)
            << node.attribute("Name").value();
    }
}

TEST(DescriptionXml, GivesNoRegisterToTwoNodes)
{
    const Described description;
    std::set<std::string> addresses;
    for (const pugi::xml_node node : description.root().children()) {
        const pugi::xml_node address = node.child("Address");
        if (address) {
            EXPECT_TRUE(addresses.insert(address.child_value()).second) << address.child_value();
        }
    }
}

TEST(DescriptionXml, SpellsTheEntriesAsTheHostDoes)
{
    const Described description;
    const auto entries = [&description](const char* name) {
        std::string all;
        for (const pugi::xml_node entry : description.node(name).children("EnumEntry")) {
            all += std::string(entry.attribute("Name").value()) + ' ';
        }
        return all;
    };
    EXPECT_EQ(entries("CameraState"), "Idle Live Recording FlashWrite ");
    EXPECT_EQ(entries("ExtTriggerPolarity"), "falling raising ");
    EXPECT_EQ(entries("SyncInPolarity"), "falling raising ");
    EXPECT_EQ(entries("SyncOutSelect"), "ARM SyncOut ");
    EXPECT_EQ(entries("SyncARMPolarity"), "negative positive ");
    EXPECT_EQ(entries("MultipleSlopeMode"), "NormalShutter DualSlope TripleSlope ");
    EXPECT_EQ(entries("AcquisitionSource"), "Live Memory ");
    EXPECT_EQ(entries("RecordMode"), "Single Continuous ");
    EXPECT_EQ(entries("RecordNumberOfSequences"), "One Two Four Eight Sixteen ");
    EXPECT_EQ(entries("UserSetSelector"), "Default UserSet1 ");
    EXPECT_EQ(entries("UserSetDefaultSelector"), "Default UserSet1 ");
    EXPECT_EQ(entries("PixelFormat"), "Mono8 ");
}

TEST(DescriptionXml, ColourCamerasHaveABayerFormat)
{
    const Described description({.colour = true});
    EXPECT_TRUE(description.node("PixelFormat").find_child_by_attribute("Name", "BayerRG8"));
}

TEST(DescriptionXml, LeavesOutAndRetypesFeatures)
{
    const Described description({.missing = {FeatureId::Width, FeatureId::AcquisitionFrameRateRaw},
                                 .retyped = {{FeatureId::GainRaw, FeatureKind::Boolean}}});
    EXPECT_FALSE(description.has("Width"));
    EXPECT_FALSE(description.has("AcquisitionFrameRate"));
    EXPECT_EQ(description.kind("GainRaw"), "Boolean");
}

TEST(DescriptionXml, AsksForAvailabilityWhereItMayChange)
{
    const Described description({.unavailable = {FeatureId::RecordTrailer}});
    EXPECT_TRUE(description.node("RecordTrailer").child("pIsAvailable"));
    EXPECT_TRUE(description.node("FlashCardWrite").child("pIsAvailable"));
    EXPECT_FALSE(description.node("Width").child("pIsAvailable"));
}

TEST(RegisterMap, FindsFeaturesByTheirRegisters)
{
    EXPECT_EQ(RegisterMap::featureAt(0x0938), FeatureId::GevHeartbeatTimeout);
    EXPECT_EQ(RegisterMap::featureAt(0x0D04), FeatureId::GevSCPSPacketSize);
    EXPECT_EQ(RegisterMap::featureAt(0x00E8), FeatureId::DeviceUserID);
    EXPECT_EQ(RegisterMap::featureAt(0x00F4), FeatureId::DeviceUserID);
    EXPECT_EQ(RegisterMap::featureAt(registerOf(featureOf(FeatureId::Width))), FeatureId::Width);
    EXPECT_EQ(RegisterMap::featureAt(0x0000), std::nullopt);
}

} // namespace
} // namespace camera
