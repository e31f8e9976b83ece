#ifndef TELVO_TESTS_GIGE_GENAPI_DEMODESCRIPTION_H
#define TELVO_TESTS_GIGE_GENAPI_DEMODESCRIPTION_H

namespace gige::genapi
{

/// A small camera with a feature of most kinds, and its memory from 0x8000 on.
constexpr const char* kDemoMemory =
    "00000280 FFFFFFFD 01080001 000061A8 F6FF0000 2C010000 80000000 A3FE0000";

constexpr const char* kDemoDescription = R"(<?xml version="1.0" encoding="utf-8"?>
<RegisterDescription ModelName="DemoCam" VendorName="DemoWorks" StandardNameSpace="GEV"
  SchemaMajorVersion="1" SchemaMinorVersion="1" SchemaSubMinorVersion="0"
  MajorVersion="1" MinorVersion="0" SubMinorVersion="0"
  ProductGuid="11111111-2222-3333-4444-555555555555" VersionGuid="66666666-7777-8888-9999-AAAAAAAAAAAA"
  xmlns="http://www.genicam.org/GenApi/Version_1_1">
<Category Name="Root"><pFeature>Width</pFeature><pFeature>PixelFormat</pFeature>
  <pFeature>ExposureTime</pFeature><pFeature>GainSelector</pFeature><pFeature>Gain</pFeature>
  <pFeature>ReverseX</pFeature><pFeature>AcquisitionStart</pFeature></Category>
<Group Comment="geometry">
<Integer Name="Width"><pIsLocked>Streaming</pIsLocked>
  <pValue>WidthReg</pValue><Min>16</Min><pMax>WidthMax</pMax><Inc>8</Inc></Integer>
<IntReg Name="WidthReg"><Address>0x8000</Address><Length>4</Length><AccessMode>RW</AccessMode>
  <pPort>Device</pPort><Endianess>BigEndian</Endianess></IntReg>
<IntSwissKnife Name="WidthMax"><pVariable Name="BIN">Binning</pVariable>
  <Constant Name="SENSOR">2048</Constant><Expression Name="FACTOR">1 &lt;&lt; BIN</Expression>
  <Formula>SENSOR / FACTOR</Formula></IntSwissKnife>
<MaskedIntReg Name="Binning"><Address>0x8004</Address><Length>4</Length><AccessMode>RW</AccessMode>
  <pPort>Device</pPort><LSB>31</LSB><MSB>30</MSB><Endianess>BigEndian</Endianess></MaskedIntReg>
<IntSwissKnife Name="PayloadSize"><pVariable Name="W">Width</pVariable><pVariable Name="PF">PixelFormat</pVariable>
  <Formula>(W * 480 * ((PF &gt;&gt; 16) &amp; 0xFF) + 7) / 8</Formula></IntSwissKnife>
</Group>
<Enumeration Name="PixelFormat">
  <EnumEntry Name="Mono8"><Value>0x01080001</Value></EnumEntry>
  <EnumEntry Name="Mono12"><pIsAvailable>Binning</pIsAvailable><Value>0x01100005</Value></EnumEntry>
  <pValue>PixelFormatReg</pValue></Enumeration>
<IntReg Name="PixelFormatReg"><Address>0x8008</Address><Length>4</Length><AccessMode>RW</AccessMode>
  <pPort>Device</pPort><Endianess>BigEndian</Endianess></IntReg>
<Converter Name="ExposureTime"><Constant Name="CLK">25</Constant>
  <FormulaTo>FROM * CLK</FormulaTo><FormulaFrom>TO / CLK</FormulaFrom>
  <pValue>ExposureTicks</pValue><Unit>us</Unit></Converter>
<Integer Name="ExposureTicks"><pValue>ExposureReg</pValue><Min>100</Min><Max>2500000</Max></Integer>
<IntReg Name="ExposureReg"><Address>0x800C</Address><Length>4</Length><AccessMode>RW</AccessMode>
  <pPort>Device</pPort><Endianess>BigEndian</Endianess></IntReg>
<Enumeration Name="GainSelector">
  <EnumEntry Name="AnalogAll"><Value>0</Value></EnumEntry><EnumEntry Name="DigitalAll"><Value>1</Value></EnumEntry>
  <Value>0</Value><pSelected>Gain</pSelected></Enumeration>
<Integer Name="GainIndex"><pValue>GainSelector</pValue></Integer>
<IntReg Name="Gain"><Address>0x8010</Address><pIndex Offset="4">GainIndex</pIndex><Length>2</Length>
  <AccessMode>RW</AccessMode><pPort>Device</pPort><Sign>Signed</Sign><Endianess>LittleEndian</Endianess></IntReg>
<StructReg Comment="flags"><Address>0x8018</Address><Length>4</Length><AccessMode>RW</AccessMode>
  <pPort>Device</pPort><Endianess>BigEndian</Endianess>
  <StructEntry Name="ReverseXBit"><Bit>0</Bit></StructEntry>
  <StructEntry Name="StartBit"><Bit>1</Bit></StructEntry>
  <StructEntry Name="Streaming"><AccessMode>RO</AccessMode><Bit>31</Bit></StructEntry></StructReg>
<Boolean Name="ReverseX"><pValue>ReverseXBit</pValue></Boolean>
<Command Name="AcquisitionStart"><pValue>StartBit</pValue><CommandValue>1</CommandValue></Command>
<MaskedIntReg Name="Temperature"><Address>0x801C</Address><Length>4</Length><AccessMode>RO</AccessMode>
  <pPort>Device</pPort><Cachable>NoCache</Cachable><LSB>4</LSB><MSB>15</MSB><Sign>Signed</Sign>
  <Endianess>LittleEndian</Endianess></MaskedIntReg>
<Port Name="Device"/>
</RegisterDescription>
)";

} // namespace gige::genapi

#endif
