#include "SourceReader.h"

#include "NumberSource.h"
#include "TextNumbers.h"

#include <utility>

namespace gige::genapi
{

namespace
{

constexpr std::pair<std::string_view, Representation> kRepresentations[] = {
    {"Linear", Representation::Linear},         {"Logarithmic", Representation::Logarithmic},
    {"Boolean", Representation::Boolean},       {"PureNumber", Representation::PureNumber},
    {"HexNumber", Representation::HexNumber},   {"IPV4Address", Representation::Ipv4Address},
    {"MACAddress", Representation::MacAddress},
};

constexpr std::pair<std::string_view, DisplayNotation> kNotations[] = {
    {"Automatic", DisplayNotation::Automatic},
    {"Fixed", DisplayNotation::Fixed},
    {"Scientific", DisplayNotation::Scientific},
};

using Source = std::unique_ptr<NumberSource>;

Source constantSource(ElementReader& reader, const pugi::xml_node& element, bool isInteger)
{
    const std::optional<std::int64_t> integer = parseInteger(textOf(element));
    const std::optional<double> real = parseReal(textOf(element));
    if (isInteger ? !integer : !real) {
        reader.fail(Status::BadNode);
        return nullptr;
    }
    return std::make_unique<ConstantSource>(isInteger ? Number(*integer) : Number(*real));
}

Source referenceSource(ElementReader& reader, const pugi::xml_node& element)
{
    Node* const target = reader.reference(textOf(element));
    return target == nullptr ? nullptr : std::make_unique<ReferenceSource>(*target);
}

Source indexedSource(ElementReader& reader, bool isInteger)
{
    Node* const index = reader.referenceIn("pIndex");
    IndexedSource::Elements elements;
    for (const std::string_view tag : {"ValueIndexed", "pValueIndexed"}) {
        for (const pugi::xml_node& element : reader.children(tag)) {
            const auto at = parseInteger(element.attribute("Index").value());
            Source source = tag.front() == 'p' ? referenceSource(reader, element)
                                               : constantSource(reader, element, isInteger);
            if (at && source != nullptr) {
                elements.try_emplace(*at, std::move(source));
            } else {
                reader.fail(Status::BadNode);
            }
        }
    }
    Source otherwise;
    if (reader.has("pValueDefault")) {
        otherwise = referenceSource(reader, reader.child("pValueDefault"));
    } else if (reader.has("ValueDefault")) {
        otherwise = constantSource(reader, reader.child("ValueDefault"), isInteger);
    }
    if (index == nullptr) {
        return nullptr;
    }
    return std::make_unique<IndexedSource>(*index, std::move(elements), std::move(otherwise));
}

} // namespace

std::unique_ptr<NumberSource> readSource(ElementReader& reader, bool isInteger)
{
    if (reader.has("pValue")) {
        Node* const target = reader.referenceIn("pValue");
        std::vector<Node*> copies = reader.referencesIn("pValueCopy");
        return target == nullptr ? nullptr
                                 : std::make_unique<ReferenceSource>(*target, std::move(copies));
    }
    if (reader.has("pIndex")) {
        return indexedSource(reader, isInteger);
    }
    return constantSource(reader, reader.child("Value"), isInteger);
}

OwnLimits readLimits(ElementReader& reader, bool isInteger)
{
    return {reader.operand("Min", isInteger), reader.operand("Max", isInteger),
            reader.operand("Inc", isInteger)};
}

Presentation readPresentation(ElementReader& reader)
{
    Presentation presentation;
    presentation.representation = reader.choice<Representation>("Representation", kRepresentations);
    presentation.unit = reader.text("Unit");
    presentation.notation = reader.choice<DisplayNotation>("DisplayNotation", kNotations);
    if (const auto precision = parseInteger(textOf(reader.child("DisplayPrecision")))) {
        presentation.precision = static_cast<int>(*precision);
    }
    return presentation;
}

} // namespace gige::genapi
