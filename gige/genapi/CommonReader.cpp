#include "NodeReader.h"

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
    info.documentation = reader.text("DocuURL").value_or("");
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
    info.isStandard = reader.attribute("NameSpace") == "Standard";
    info.isDeprecated = reader.isYes("IsDeprecated");
    info.isStreamable = reader.isYes("Streamable");
    info.eventId = parseHexadecimal(textOf(reader.child("EventID")));
    const auto polling = parseInteger(textOf(reader.child("PollingTime")));
    info.pollingTime = std::chrono::milliseconds(std::max<std::int64_t>(polling.value_or(0), 0));
    readConditions(reader);
    for (Node* const invalidator : reader.linksIn("pInvalidator")) {
        invalidator->links().invalidates.push_back(&node);
    }
    node.links().selected = reader.linksIn("pSelected");
}

} // namespace gige::genapi
