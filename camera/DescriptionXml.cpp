#include "DescriptionXml.h"

#include <pugixml.hpp>

#include <array>
#include <cstdio>
#include <sstream>

namespace camera
{
namespace
{

constexpr std::string_view kPort = "Device";
constexpr std::string_view kImagingNode = "ImagingReg";

/// A float view of a raw integer, for clients that know the standard's names only.
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

const char* elementOf(FeatureKind kind)
{
    constexpr std::array<const char*, 6> kElements{"Integer", "Enumeration", "Boolean",
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

void text(pugi::xml_node node, const char* element, std::string_view content)
{
    node.append_child(element).text() = std::string(content).c_str();
}

void number(pugi::xml_node node, const char* element, std::int64_t value)
{
    text(node, element, std::to_string(value));
}

/// What every node that lies in a register says of it.
void place(pugi::xml_node node, std::uint32_t address, std::uint32_t length, Access access,
           bool constant = false)
{
    std::array<char, 16> digits{};
    std::snprintf(digits.data(), digits.size(), "0x%08X", address);
    text(node, "Address", digits.data());
    number(node, "Length", length);
    text(node, "AccessMode", accessText(access));
    text(node, "pPort", kPort);
    if (!constant) {
        text(node, "Cachable", "NoCache");
    }
}

void unsignedBigEndian(pugi::xml_node node)
{
    text(node, "Sign", "Unsigned");
    text(node, "Endianess", "BigEndian");
}

/// Builds one camera's description.
class Description
{
  public:
    explicit Description(const CameraOptions& options) : mOptions(options)
    {
        declare();
        categories();
        for (const Feature& feature : featureTable()) {
            if (!mOptions.missing.contains(feature.id)) {
                describe(retyped(feature));
            }
        }
        for (const FloatView& view : kFloatViews) {
            if (!mOptions.missing.contains(view.raw)) {
                floatView(view);
            }
        }
        wordRegister(kImagingNode, kImagingRegister);
        add("Port", kPort);
    }

    [[nodiscard]] std::string write() const
    {
        std::ostringstream text;
        mDocument.save(text, "  ");
        return text.str();
    }

  private:
    void declare()
    {
        pugi::xml_node declaration = mDocument.append_child(pugi::node_declaration);
        declaration.append_attribute("version") = "1.0";
        declaration.append_attribute("encoding") = "UTF-8";
        mRoot = mDocument.append_child("RegisterDescription");
        constexpr std::array<std::array<const char*, 2>, 13> kAttributes{{
            {"ModelName", "VirtualCamera"},
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
            {"xmlns", "http://www.genicam.org/GenApi/Version_1_1"},
        }};
        for (const auto& [name, value] : kAttributes) {
            mRoot.append_attribute(name) = value;
        }
    }

    pugi::xml_node add(const char* element, std::string_view name)
    {
        pugi::xml_node node = mRoot.append_child(element);
        node.append_attribute("Name") = std::string(name).c_str();
        return node;
    }

    [[nodiscard]] Feature retyped(Feature feature) const
    {
        const auto found = mOptions.retyped.find(feature.id);
        if (found != mOptions.retyped.end()) {
            feature.kind = found->second;
        }
        return feature;
    }

    void categories()
    {
        const pugi::xml_node root = add("Category", "Root");
        for (std::size_t i = 0; i < static_cast<std::size_t>(Category::Count); ++i) {
            text(root, "pFeature", categoryName(static_cast<Category>(i)));
        }
        for (std::size_t i = 0; i < static_cast<std::size_t>(Category::Count); ++i) {
            category(static_cast<Category>(i));
        }
    }

    void category(Category category)
    {
        const pugi::xml_node node = add("Category", categoryName(category));
        for (const Feature& feature : featureTable()) {
            if (feature.category == category && !mOptions.missing.contains(feature.id)) {
                text(node, "pFeature", feature.name);
            }
        }
        for (const FloatView& view : kFloatViews) {
            if (featureOf(view.raw).category == category && !mOptions.missing.contains(view.raw)) {
                text(node, "pFeature", view.name);
            }
        }
    }

    void describe(const Feature& feature)
    {
        const pugi::xml_node node = add(elementOf(feature.kind), feature.name);
        text(node, "ToolTip", feature.tooltip);
        text(node, "Visibility", visibilityText(feature.visibility));
        if (isConditional(feature, mOptions)) {
            text(node, "pIsAvailable", availabilityNode(feature));
        }
        if (feature.locked) {
            text(node, "pIsLocked", kImagingNode);
        }
        if (feature.kind == FeatureKind::String || feature.kind == FeatureKind::Register) {
            place(node, registerOf(feature), feature.length, feature.access, feature.constant);
        } else {
            valueContent(node, feature);
            valueRegister(feature);
        }
        if (isConditional(feature, mOptions)) {
            wordRegister(availabilityNode(feature), availabilityRegisterOf(feature.id));
        }
    }

    void valueContent(pugi::xml_node node, const Feature& feature)
    {
        if (feature.kind == FeatureKind::Enumeration) {
            enumEntries(node, feature);
        }
        text(node, "pValue", registerNode(feature));
        if (feature.kind == FeatureKind::Command) {
            number(node, "CommandValue", 1);
        } else if (feature.kind == FeatureKind::Boolean) {
            number(node, "OnValue", 1);
            number(node, "OffValue", 0);
        } else if (feature.kind == FeatureKind::Integer) {
            integerContent(node, feature);
        }
        for (const Selection& selection : kSelections) {
            if (selection.selector == feature.id &&
                !mOptions.missing.contains(selection.selected)) {
                text(node, "pSelected", featureOf(selection.selected).name);
            }
        }
    }

    void enumEntries(pugi::xml_node node, const Feature& feature)
    {
        for (const EnumEntry& entry : entriesOf(feature, mOptions)) {
            pugi::xml_node child = node.append_child("EnumEntry");
            child.append_attribute("Name") = std::string(entry.name).c_str();
            number(child, "Value", entry.value);
        }
    }

    static void integerContent(pugi::xml_node node, const Feature& feature)
    {
        number(node, "Min", feature.limits.minimum);
        if (feature.maximum != nullptr) {
            text(node, "pMax", maximumNode(feature));
        } else {
            number(node, "Max", feature.limits.maximum);
        }
        number(node, "Inc", feature.limits.increment);
        if (!feature.unit.empty()) {
            text(node, "Unit", feature.unit);
        }
        text(node, "Representation", representationText(feature.representation));
    }

    void valueRegister(const Feature& feature)
    {
        const pugi::xml_node node =
            add(feature.lowHalf ? "MaskedIntReg" : "IntReg", registerNode(feature));
        place(node, registerOf(feature), feature.length, feature.access, feature.constant);
        if (feature.lowHalf) {
            // Big-endian registers count bits from the most significant end.
            number(node, "LSB", 31);
            number(node, "MSB", 16);
        }
        unsignedBigEndian(node);
        if (feature.maximum != nullptr && feature.kind == FeatureKind::Integer) {
            wordRegister(maximumNode(feature), maximumRegisterOf(feature.id));
        }
    }

    /// One of the camera's own registers that the host reads only.
    void wordRegister(std::string_view name, std::uint32_t address)
    {
        const pugi::xml_node node = add("IntReg", name);
        place(node, address, 4, Access::ReadOnly);
        unsignedBigEndian(node);
    }

    void floatView(const FloatView& view)
    {
        const pugi::xml_node node = add("Converter", view.name);
        text(node, "ToolTip", featureOf(view.raw).tooltip);
        text(node, "FormulaTo", "FROM");
        text(node, "FormulaFrom", "TO");
        text(node, "pValue", featureOf(view.raw).name);
        text(node, "Unit", view.unit);
        text(node, "Slope", "Increasing");
    }

    const CameraOptions& mOptions;
    pugi::xml_document mDocument;
    pugi::xml_node mRoot;
};

} // namespace

std::string descriptionXml(const CameraOptions& options)
{
    return Description(options).write();
}

bool isConditional(const Feature& feature, const CameraOptions& options)
{
    return feature.needs != nullptr || options.unavailable.contains(feature.id) ||
           options.switchable.contains(feature.id);
}

} // namespace camera
