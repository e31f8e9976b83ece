#include "NodeReader.h"

#include "FormulaSources.h"
#include "IntegerNode.h"
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
    return {reader.choice<Representation>("Representation", kRepresentations), reader.text("Unit")};
}

namespace
{

void readConstants(ElementReader& reader, Arithmetic arithmetic, FormulaScope& scope)
{
    for (const pugi::xml_node& element : reader.children("Constant")) {
        const std::string name = element.attribute("Name").value();
        const std::optional<std::int64_t> integer = parseInteger(textOf(element));
        const std::optional<double> real = parseReal(textOf(element));
        // Whole numbers stay exact: a double has 53 bits, an address 64.
        if (!real && !integer) {
            reader.fail(Status::BadNode);
        } else if (integer) {
            scope.addConstant(name, *integer);
        } else {
            const Result<Number> constant = convert(*real, arithmetic);
            constant ? scope.addConstant(name, *constant) : reader.fail(constant.status());
        }
    }
}

FormulaScope readScope(ElementReader& reader, Arithmetic arithmetic, bool isConverter)
{
    FormulaScope scope;
    for (const pugi::xml_node& element : reader.children("pVariable")) {
        const std::string name = element.attribute("Name").value();
        if (Node* const target = reader.reference(textOf(element)); target != nullptr) {
            scope.addVariable(name, propertyOf(*target, name));
        }
    }
    readConstants(reader, arithmetic, scope);
    // Reserved names: they win.
    if (isConverter) {
        scope.addArgument("FROM");
        scope.addArgument("TO");
    }
    for (const pugi::xml_node& element : reader.children("Expression")) {
        const Status status =
            scope.addExpression(element.attribute("Name").value(), textOf(element));
        if (status != Status::Ok) {
            reader.fail(status);
        }
    }
    return scope;
}

Formula compile(ElementReader& reader, const FormulaScope& scope, std::string_view tag)
{
    Result<Formula> formula = scope.compile(textOf(reader.child(tag)));
    if (!formula) {
        reader.fail(formula.status());
        return {};
    }
    return *std::move(formula);
}

Slope slopeOf(ElementReader& reader)
{
    const auto text = textOf(reader.child("Slope"));
    if (text == "Increasing") {
        return Slope::Increasing;
    }
    if (text == "Decreasing") {
        return Slope::Decreasing;
    }
    // Without the element, too: most descriptions leave it out.
    return text == "Varying" ? Slope::Varying : Slope::Automatic;
}

} // namespace

std::unique_ptr<NumberSource> readFormula(ElementReader& reader, Arithmetic arithmetic)
{
    FormulaScope scope = readScope(reader, arithmetic, false);
    Formula formula = compile(reader, scope, "Formula");
    if (reader.node().defect() != Status::Ok) {
        return nullptr;
    }
    return std::make_unique<FormulaSource>(std::move(scope), std::move(formula), arithmetic);
}

std::unique_ptr<NumberSource> readConverter(ElementReader& reader, Arithmetic arithmetic)
{
    ConverterFormulas formulas{readScope(reader, arithmetic, true), {}, {}};
    // FormulaTo makes the device's value of the host's, FormulaFrom the other way round.
    formulas.to = compile(reader, formulas.scope, "FormulaTo");
    formulas.from = compile(reader, formulas.scope, "FormulaFrom");
    Node* const target = reader.referenceIn("pValue");
    if (target == nullptr) {
        reader.fail(Status::BadNode);
        return nullptr;
    }
    if (reader.node().defect() != Status::Ok) {
        return nullptr;
    }
    return std::make_unique<ConverterSource>(*target, std::move(formulas), arithmetic,
                                             slopeOf(reader));
}

Node& readEmbeddedFormula(ElementReader& reader, const pugi::xml_node& element)
{
    auto owned = std::make_unique<IntegerNode>(reader.store().state(), "");
    IntegerNode& node = *owned;
    reader.store().add(std::move(owned));
    ElementReader inner(reader.store(), node, element);
    std::unique_ptr<NumberSource> source = readFormula(inner, Arithmetic::Integer);
    if (source == nullptr) {
        reader.fail(node.defect());
    }
    node.define(std::move(source), {}, {});
    // Linked as if it were named: what invalidates the formula's variables reaches the register.
    reader.node().links().below.push_back(&node);
    node.links().above.push_back(&reader.node());
    return node;
}

} // namespace gige::genapi
