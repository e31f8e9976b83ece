#include "NodeReader.h"

#include "GenApiLimits.h"
#include "PortNode.h"
#include "TextNumbers.h"

#include <utility>

namespace gige::genapi
{

namespace
{

constexpr std::pair<std::string_view, AccessMode> kAccessModes[] = {
    {"RO", AccessMode::ReadOnly},
    {"WO", AccessMode::WriteOnly},
    {"RW", AccessMode::ReadWrite},
};

constexpr std::pair<std::string_view, Caching> kCachings[] = {
    {"NoCache", Caching::NoCache},
    {"WriteThrough", Caching::WriteThrough},
    {"WriteAround", Caching::WriteAround},
};

constexpr std::pair<std::string_view, ByteOrder> kByteOrders[] = {
    {"LittleEndian", ByteOrder::LittleEndian},
    {"BigEndian", ByteOrder::BigEndian},
};

constexpr std::pair<std::string_view, bool> kSigns[] = {{"Unsigned", false}, {"Signed", true}};

RegisterIndex readIndex(ElementReader& reader, const pugi::xml_node& element)
{
    RegisterIndex term;
    term.index = reader.reference(textOf(element));
    const pugi::xml_attribute step = element.attribute("Offset");
    const pugi::xml_attribute stepNode = element.attribute("pOffset");
    if (!stepNode.empty()) {
        term.stepNode = reader.reference(stepNode.value());
    } else if (!step.empty()) {
        term.step = parseInteger(step.value());
        if (!term.step) {
            reader.fail(Status::BadNode);
        }
    }
    return term;
}

void readAddress(ElementReader& reader, RegisterDefinition& definition)
{
    for (const pugi::xml_node& element : reader.children("Address")) {
        const std::optional<std::int64_t> term = parseInteger(textOf(element));
        if (!term) {
            reader.fail(Status::BadNode);
        }
        definition.address += static_cast<std::uint64_t>(term.value_or(0));
    }
    definition.addressNodes = reader.referencesIn("pAddress");
    for (const pugi::xml_node& element : reader.children("IntSwissKnife")) {
        definition.addressNodes.push_back(&readEmbeddedFormula(reader, element));
    }
    for (const pugi::xml_node& element : reader.children("pIndex")) {
        definition.indexes.push_back(readIndex(reader, element));
    }
    const bool hasAddress =
        reader.has("Address") || !definition.addressNodes.empty() || !definition.indexes.empty();
    if (!hasAddress) {
        reader.fail(Status::BadNode);
    }
}

void readLength(ElementReader& reader, RegisterDefinition& definition)
{
    definition.lengthNode = reader.referenceIn("pLength");
    if (definition.lengthNode != nullptr) {
        return;
    }
    definition.length = reader.integer("Length").value_or(0);
    if (definition.length <= 0 || std::cmp_greater(definition.length, kRegisterSizeLimit)) {
        reader.fail(Status::RegisterTooLarge);
    }
}

// The port takes no part in the value, but is touched by each write.
Node* referencedPort(ElementReader& reader)
{
    const std::vector<Node*> ports = reader.linksIn("pPort");
    auto* const port = ports.empty() ? nullptr : dynamic_cast<PortNode*>(ports.front());
    if (port == nullptr && reader.has("pPort")) {
        reader.fail(Status::BadNode);
    }
    return port;
}

} // namespace

std::shared_ptr<Register> readRegister(ElementReader& reader)
{
    RegisterDefinition definition;
    readAddress(reader, definition);
    readLength(reader, definition);
    definition.port = referencedPort(reader);
    definition.access = reader.required<AccessMode>("AccessMode", kAccessModes, definition.access);
    definition.caching = reader.required<Caching>("Cachable", kCachings, definition.caching);
    // Entries of one structure stand at one position: they are one register of the device.
    definition.cacheId = reader.position();
    // Addresses are summed up over all elements; half of them would be another register.
    if (reader.node().defect() != Status::Ok) {
        return nullptr;
    }
    auto registers = std::make_shared<Register>(std::move(definition));
    reader.node().setRegister(registers);
    return registers;
}

ByteOrder readByteOrder(ElementReader& reader)
{
    return reader.required<ByteOrder>("Endianess", kByteOrders, ByteOrder::LittleEndian);
}

IntegerLayout readIntegerLayout(ElementReader& reader, bool isMasked)
{
    IntegerLayout layout;
    layout.order = readByteOrder(reader);
    layout.isSigned = reader.required<bool>("Sign", kSigns, false);
    if (!isMasked) {
        return layout;
    }
    const std::optional<std::int64_t> bit = reader.integer("Bit");
    const std::optional<std::int64_t> lsb = bit ? bit : reader.integer("LSB");
    const std::optional<std::int64_t> msb = bit ? bit : reader.integer("MSB");
    if (!lsb || !msb) {
        reader.fail(Status::BadNode);
    } else {
        layout.field = BitField{*lsb, *msb};
    }
    return layout;
}

} // namespace gige::genapi
