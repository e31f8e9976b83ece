#include "EnumerationReader.h"

#include "NodeReader.h"
#include "SourceReader.h"
#include "TextNumbers.h"

#include <utility>

namespace gige::genapi
{

namespace
{

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
    entry->define(*value, reader.text("Symbolic"), parseReal(textOf(reader.child("NumericValue"))),
                  reader.isYes("IsSelfClearing"));
    parent.node().links().below.push_back(entry.get());
    return entry;
}

} // namespace

void readEnumeration(ElementReader& reader, EnumerationNode& node)
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
    node.define(std::move(source), std::move(entries));
}

} // namespace gige::genapi
