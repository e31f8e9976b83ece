#include "NodeReader.h"

#include "BooleanNode.h"
#include "CategoryNode.h"
#include "CommandNode.h"
#include "ElementReader.h"
#include "EnumerationNode.h"
#include "FloatNode.h"
#include "IntegerNode.h"
#include "NumberSource.h"
#include "PortNode.h"
#include "RegisterNode.h"
#include "StringNode.h"
#include "TextNumbers.h"

#include <algorithm>
#include <utility>

namespace gige::genapi
{

namespace
{

constexpr std::pair<std::string_view, Visibility> kVisibilities[] = {
    {"Beginner", Visibility::Beginner},
    {"Expert", Visibility::Expert},
    {"Guru", Visibility::Guru},
    {"Invisible", Visibility::Invisible},
};

constexpr std::pair<std::string_view, AccessMode> kImposedModes[] = {
    {"RO", AccessMode::ReadOnly},
    {"WO", AccessMode::WriteOnly},
    {"RW", AccessMode::ReadWrite},
};

void readTexts(const ElementReader& reader, NodeInfo& info)
{
    info.displayName = reader.text("DisplayName").value_or(info.displayName);
    info.toolTip = reader.text("ToolTip").value_or("");
    info.description = reader.text("Description").value_or("");
}

void readConditions(ElementReader& reader)
{
    NodeConditions& conditions = reader.node().conditions();
    conditions.isImplemented = reader.conditionIn("pIsImplemented");
    conditions.isAvailable = reader.conditionIn("pIsAvailable");
    conditions.isLocked = reader.conditionIn("pIsLocked");
    conditions.imposed =
        reader.required<AccessMode>("ImposedAccessMode", kImposedModes, AccessMode::ReadWrite);
}

} // namespace

void readCommon(ElementReader& reader)
{
    Node& node = reader.node();
    NodeInfo& info = node.info();
    readTexts(reader, info);
    info.visibility =
        reader.choice<Visibility>("Visibility", kVisibilities).value_or(Visibility::Beginner);
    const auto polling = parseInteger(textOf(reader.child("PollingTime")));
    info.pollingTime = std::chrono::milliseconds(std::max<std::int64_t>(polling.value_or(0), 0));
    readConditions(reader);
    for (Node* const invalidator : reader.linksIn("pInvalidator")) {
        // Kept at the other end: a write asks whom it invalidates.
        invalidator->links().invalidates.push_back(&node);
    }
    node.links().selected = reader.linksIn("pSelected");
}

namespace
{

template <typename T>
std::unique_ptr<Node> create(NodeMapState& state, std::string name)
{
    return std::make_unique<T>(state, std::move(name));
}

std::unique_ptr<Node> createPlain(NodeMapState& state, std::string name)
{
    return std::make_unique<Node>(state, NodeKind::Plain, std::move(name));
}

// The recipe that reads an element has created its node.
template <typename T>
T& nodeOf(ElementReader& reader)
{
    return static_cast<T&>(reader.node());
}

void defineNumber(ElementReader& reader, std::unique_ptr<NumberSource> source, OwnLimits limits)
{
    if (source == nullptr) {
        reader.fail(Status::BadNode);
    }
    nodeOf<NumberNode>(reader).define(std::move(source), limits, readPresentation(reader));
}

void readPlain(ElementReader& /*reader*/) {}

void readCategory(ElementReader& reader)
{
    nodeOf<CategoryNode>(reader).define(reader.linksIn("pFeature"));
}

void readPort(ElementReader& reader)
{
    // In the chunks of a buffer or the data of an event, which are not read.
    const bool isElsewhere =
        reader.has("ChunkID") || reader.has("pChunkID") || reader.has("EventID");
    nodeOf<PortNode>(reader).define(!isElsewhere);
}

template <bool isInteger>
void readNumber(ElementReader& reader)
{
    const OwnLimits limits = readLimits(reader, isInteger);
    defineNumber(reader, readSource(reader, isInteger), limits);
}

template <bool isMasked>
void readIntegerRegister(ElementReader& reader)
{
    const IntegerLayout layout = readIntegerLayout(reader, isMasked);
    std::shared_ptr<Register> registers = readRegister(reader);
    std::unique_ptr<NumberSource> source;
    if (registers != nullptr) {
        source = std::make_unique<IntegerRegister>(std::move(registers), layout);
    }
    defineNumber(reader, std::move(source), {});
}

void readFloatRegister(ElementReader& reader)
{
    const ByteOrder order = readByteOrder(reader);
    std::shared_ptr<Register> registers = readRegister(reader);
    std::unique_ptr<NumberSource> source;
    if (registers != nullptr) {
        source = std::make_unique<FloatRegister>(std::move(registers), order);
    }
    defineNumber(reader, std::move(source), {});
}

void readStringRegister(ElementReader& reader)
{
    readRegister(reader);
    nodeOf<StringNode>(reader).define(StringNode::InRegister{});
}

void readByteRegister(ElementReader& reader)
{
    readRegister(reader);
}

template <bool isInteger>
void readFormulaNode(ElementReader& reader)
{
    defineNumber(reader, readFormula(reader, isInteger ? Arithmetic::Integer : Arithmetic::Float),
                 {});
}

template <bool isInteger>
void readConverterNode(ElementReader& reader)
{
    defineNumber(reader, readConverter(reader, isInteger ? Arithmetic::Integer : Arithmetic::Float),
                 {});
}

void readString(ElementReader& reader)
{
    if (!reader.has("pValue")) {
        const std::optional<std::string> text = reader.text("Value");
        nodeOf<StringNode>(reader).define(text.value_or(""));
        return;
    }
    auto* const target = dynamic_cast<StringNode*>(reader.referenceIn("pValue"));
    if (target == nullptr) {
        reader.fail(Status::BadNode);
        return;
    }
    nodeOf<StringNode>(reader).define(target);
}

void readBoolean(ElementReader& reader)
{
    const std::int64_t on = reader.integer("OnValue").value_or(1);
    const std::int64_t off = reader.integer("OffValue").value_or(0);
    std::unique_ptr<NumberSource> source;
    if (reader.has("pValue")) {
        source = readSource(reader, true);
    } else if (const std::string text = reader.text("Value").value_or(""); !text.empty()) {
        // Descriptions write truth values and numbers.
        source = std::make_unique<ConstantSource>(text == "true" || text == "1" ? on : off);
    }
    if (source == nullptr) {
        reader.fail(Status::BadNode);
    }
    nodeOf<BooleanNode>(reader).define(std::move(source), on, off);
}

void readCommand(ElementReader& reader)
{
    const std::optional<Operand> value = reader.operand("CommandValue", true);
    std::unique_ptr<NumberSource> source = readSource(reader, true);
    if (source == nullptr) {
        reader.fail(Status::BadNode);
    }
    nodeOf<CommandNode>(reader).define(std::move(source),
                                       value.value_or(Operand(Number(std::int64_t{1}))));
}

std::unique_ptr<EnumEntryNode> readEntry(ElementReader& parent, const pugi::xml_node& element)
{
    auto entry =
        std::make_unique<EnumEntryNode>(parent.store().state(), element.attribute("Name").value());
    ElementReader reader(parent.store(), *entry, element);
    readCommon(reader);
    const std::optional<std::int64_t> value = reader.integer("Value");
    if (!value || entry->name().empty()) {
        return nullptr;
    }
    entry->define(*value, reader.text("Symbolic"));
    // What the entry's availability depends on is stale with the enumeration.
    parent.node().links().below.push_back(entry.get());
    return entry;
}

void readEnumeration(ElementReader& reader)
{
    std::vector<std::unique_ptr<EnumEntryNode>> entries;
    for (const pugi::xml_node& element : reader.children("EnumEntry")) {
        if (std::unique_ptr<EnumEntryNode> entry = readEntry(reader, element); entry != nullptr) {
            entries.push_back(std::move(entry));
        }
    }
    std::unique_ptr<NumberSource> source = readSource(reader, true);
    if (source == nullptr) {
        reader.fail(Status::BadNode);
    }
    nodeOf<EnumerationNode>(reader).define(std::move(source), std::move(entries));
}

constexpr NodeRecipe kRecipes[] = {
    {"Node", createPlain, readPlain},
    {"Category", create<CategoryNode>, readCategory},
    {"Port", create<PortNode>, readPort},
    {"Integer", create<IntegerNode>, readNumber<true>},
    {"Float", create<FloatNode>, readNumber<false>},
    {"Boolean", create<BooleanNode>, readBoolean},
    {"String", create<StringNode>, readString},
    {"Command", create<CommandNode>, readCommand},
    {"Enumeration", create<EnumerationNode>, readEnumeration},
    {"Register", create<RegisterNode>, readByteRegister},
    {"IntReg", create<IntegerNode>, readIntegerRegister<false>},
    {"MaskedIntReg", create<IntegerNode>, readIntegerRegister<true>},
    {"StructEntry", create<IntegerNode>, readIntegerRegister<true>},
    {"FloatReg", create<FloatNode>, readFloatRegister},
    {"StringReg", create<StringNode>, readStringRegister},
    {"IntSwissKnife", create<IntegerNode>, readFormulaNode<true>},
    {"SwissKnife", create<FloatNode>, readFormulaNode<false>},
    {"IntConverter", create<IntegerNode>, readConverterNode<true>},
    {"Converter", create<FloatNode>, readConverterNode<false>},
};

} // namespace

const NodeRecipe* findRecipe(std::string_view tag)
{
    const auto* const found = std::ranges::find(kRecipes, tag, &NodeRecipe::tag);
    return found == std::end(kRecipes) ? nullptr : found;
}

} // namespace gige::genapi
