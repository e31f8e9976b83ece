#include "DescriptionXml.h"

#include "XmlWriter.h"

#include <array>

namespace camera
{
namespace
{

constexpr std::string_view kPort = "Device";
constexpr std::string_view kImagingNode = "ImagingReg";

/** A float view of a raw integer, for clients that know the standard's names only. */
struct FloatView {
    std::string_view name;
    FeatureId raw;
    std::string_view unit;
};
constexpr std::array kFloatViews{
    FloatView{"AcquisitionFrameRate", FeatureId::AcquisitionFrameRateRaw, "Hz"},
    FloatView{"ExposureTime", FeatureId::ExposureTimeRaw, "us"},
};

struct Selection {
    FeatureId selector;
    FeatureId selected;
};
constexpr std::array kSelections{
    Selection{FeatureId::UserSetSelector, FeatureId::UserSetLoad},
    Selection{FeatureId::UserSetSelector, FeatureId::UserSetSave},
    Selection{FeatureId::StreamSequenceSelector, FeatureId::StreamSingleFrame},
    Selection{FeatureId::StreamSequenceSelector, FeatureId::StreamStartNumber},
    Selection{FeatureId::StreamSequenceSelector, FeatureId::StreamEndNumber},
    Selection{FeatureId::StreamSequenceSelector, FeatureId::RecordNumberOfFramesPerSequence},
};

std::string_view accessText(Access access)
{
    switch (access) {
    case Access::ReadOnly:
        return "RO";
    case Access::WriteOnly:
        return "WO";
    case Access::ReadWrite:
        break;
    }
    return "RW";
}

std::string_view visibilityText(Visibility visibility)
{
    constexpr std::array<std::string_view, 4> kTexts{"Beginner", "Expert", "Guru", "Invisible"};
    return kTexts[static_cast<std::size_t>(visibility)];
}

std::string_view representationText(Representation representation)
{
    constexpr std::array<std::string_view, 4> kTexts{"Linear", "PureNumber", "HexNumber",
                                                     "IPV4Address"};
    return kTexts[static_cast<std::size_t>(representation)];
}

std::string_view elementOf(FeatureKind kind)
{
    constexpr std::array<std::string_view, 6> kElements{"Integer", "Enumeration", "Boolean",
                                                        "Command", "StringReg",   "Register"};
    return kElements[static_cast<std::size_t>(kind)];
}

std::string registerNode(const Feature& feature)
{
    return std::string(feature.name) + "Reg";
}
std::string maximumNode(const Feature& feature)
{
    return "MaximumOf" + std::string(feature.name);
}
std::string availabilityNode(const Feature& feature)
{
    return "AvailabilityOf" + std::string(feature.name);
}

/** Writes one camera's description. */
class Description
{
  public:
    explicit Description(const CameraOptions& options) : mOptions(options) {}

    std::string write()
    {
        mXml.open("RegisterDescription", {{"ModelName", "VirtualCamera"},
                                          {"VendorName", "Telvo"},
                                          {"ToolTip", "Virtual high-speed camera"},
                                          {"StandardNameSpace", "GEV"},
                                          {"SchemaMajorVersion", "1"},
                                          {"SchemaMinorVersion", "1"},
                                          {"SchemaSubMinorVersion", "0"},
                                          {"MajorVersion", "1"},
                                          {"MinorVersion", "0"},
                                          {"SubMinorVersion", "0"},
                                          {"ProductGuid", "7A1D6C52-3B0E-4C0B-9C37-5C2E6F0D9A11"},
                                          {"VersionGuid", "0E5B2F64-9D5A-4E7F-8A43-21C7B94D3E02"},
                                          {"xmlns", "http://www.genicam.org/GenApi/Version_1_1"}});
        categories();
        for (const Feature& feature : featureTable()) {
            if (!mOptions.missing.contains(feature.id)) {
                node(described(feature));
            }
        }
        for (const FloatView& view : kFloatViews) {
            if (!mOptions.missing.contains(view.raw)) {
                floatView(view);
            }
        }
        wordRegister(kImagingNode, kImagingRegister, Access::ReadOnly, false);
        mXml.empty("Port", {{"Name", kPort}});
        mXml.close();
        return mXml.result();
    }

  private:
    [[nodiscard]] Feature described(Feature feature) const
    {
        const auto retyped = mOptions.retyped.find(feature.id);
        if (retyped != mOptions.retyped.end()) {
            feature.kind = retyped->second;
        }
        return feature;
    }

    void categories()
    {
        mXml.open("Category", {{"Name", "Root"}});
        for (std::size_t i = 0; i < static_cast<std::size_t>(Category::Count); ++i) {
            mXml.text("pFeature", categoryName(static_cast<Category>(i)));
        }
        mXml.close();
        for (std::size_t i = 0; i < static_cast<std::size_t>(Category::Count); ++i) {
            category(static_cast<Category>(i));
        }
    }

    void category(Category category)
    {
        mXml.open("Category", {{"Name", categoryName(category)}});
        for (const Feature& feature : featureTable()) {
            if (feature.category == category && !mOptions.missing.contains(feature.id)) {
                mXml.text("pFeature", feature.name);
            }
        }
        for (const FloatView& view : kFloatViews) {
            if (featureOf(view.raw).category == category && !mOptions.missing.contains(view.raw)) {
                mXml.text("pFeature", view.name);
            }
        }
        mXml.close();
    }

    void node(const Feature& feature)
    {
        mXml.open(elementOf(feature.kind), {{"Name", feature.name}});
        mXml.text("ToolTip", feature.tooltip);
        mXml.text("Visibility", visibilityText(feature.visibility));
        if (isConditional(feature, mOptions)) {
            mXml.text("pIsAvailable", availabilityNode(feature));
        }
        if (feature.locked) {
            mXml.text("pIsLocked", kImagingNode);
        }
        if (feature.kind == FeatureKind::String || feature.kind == FeatureKind::Register) {
            bytesContent(feature);
            mXml.close();
        } else {
            valueContent(feature);
            mXml.close();
            valueRegister(feature);
        }
        if (isConditional(feature, mOptions)) {
            wordRegister(availabilityNode(feature), availabilityRegisterOf(feature.id),
                         Access::ReadOnly, false);
        }
    }

    void bytesContent(const Feature& feature)
    {
        mXml.hexadecimal("Address", registerOf(feature));
        mXml.number("Length", feature.length);
        mXml.text("AccessMode", accessText(feature.access));
        mXml.text("pPort", kPort);
        cachable(feature.constant);
    }

    void valueContent(const Feature& feature)
    {
        if (feature.kind == FeatureKind::Enumeration) {
            for (const EnumEntry& entry : entriesOf(feature, mOptions)) {
                mXml.open("EnumEntry", {{"Name", entry.name}});
                mXml.number("Value", entry.value);
                mXml.close();
            }
        }
        mXml.text("pValue", registerNode(feature));
        if (feature.kind == FeatureKind::Command) {
            mXml.number("CommandValue", 1);
        } else if (feature.kind == FeatureKind::Boolean) {
            mXml.number("OnValue", 1);
            mXml.number("OffValue", 0);
        } else if (feature.kind == FeatureKind::Integer) {
            integerContent(feature);
        }
        for (const Selection& selection : kSelections) {
            if (selection.selector == feature.id &&
                !mOptions.missing.contains(selection.selected)) {
                mXml.text("pSelected", featureOf(selection.selected).name);
            }
        }
    }

    void integerContent(const Feature& feature)
    {
        mXml.number("Min", feature.limits.minimum);
        if (feature.movingLimits) {
            mXml.text("pMax", maximumNode(feature));
        } else {
            mXml.number("Max", feature.limits.maximum);
        }
        mXml.number("Inc", feature.limits.increment);
        if (!feature.unit.empty()) {
            mXml.text("Unit", feature.unit);
        }
        mXml.text("Representation", representationText(feature.representation));
    }

    void valueRegister(const Feature& feature)
    {
        mXml.open(feature.lowHalf ? "MaskedIntReg" : "IntReg", {{"Name", registerNode(feature)}});
        mXml.hexadecimal("Address", registerOf(feature));
        mXml.number("Length", feature.length);
        mXml.text("AccessMode", accessText(feature.access));
        mXml.text("pPort", kPort);
        cachable(feature.constant);
        if (feature.lowHalf) {
            // Big-endian registers count bits from the most significant end.
            mXml.number("LSB", 31);
            mXml.number("MSB", 16);
        }
        mXml.text("Sign", "Unsigned");
        mXml.text("Endianess", "BigEndian");
        mXml.close();
        if (feature.movingLimits && feature.kind == FeatureKind::Integer) {
            wordRegister(maximumNode(feature), maximumRegisterOf(feature.id), Access::ReadOnly,
                         false);
        }
    }

    void wordRegister(std::string_view name, std::uint32_t address, Access access, bool constant)
    {
        mXml.open("IntReg", {{"Name", name}});
        mXml.hexadecimal("Address", address);
        mXml.number("Length", 4);
        mXml.text("AccessMode", accessText(access));
        mXml.text("pPort", kPort);
        cachable(constant);
        mXml.text("Sign", "Unsigned");
        mXml.text("Endianess", "BigEndian");
        mXml.close();
    }

    void floatView(const FloatView& view)
    {
        mXml.open("Converter", {{"Name", view.name}});
        mXml.text("ToolTip", featureOf(view.raw).tooltip);
        mXml.text("FormulaTo", "FROM");
        mXml.text("FormulaFrom", "TO");
        mXml.text("pValue", featureOf(view.raw).name);
        mXml.text("Unit", view.unit);
        mXml.text("Slope", "Increasing");
        mXml.close();
    }

    void cachable(bool constant)
    {
        if (!constant) {
            mXml.text("Cachable", "NoCache");
        }
    }

    const CameraOptions& mOptions;
    XmlWriter mXml;
};

} // namespace

std::string descriptionXml(const CameraOptions& options)
{
    return Description(options).write();
}

bool isConditional(const Feature& feature, const CameraOptions& options)
{
    return feature.needs != Option::None || options.unavailable.contains(feature.id) ||
           options.switchable.contains(feature.id);
}

} // namespace camera
