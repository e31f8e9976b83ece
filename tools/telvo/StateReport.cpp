#include "StateReport.h"

namespace telvo
{

namespace
{

struct NamedFeature {
    const char* label;
    const char* key;
    const char* feature;
};

constexpr NamedFeature kCounts[] = {
    {"recorded frames", "recordedFrames", "RecordNumberOfFrames"},
    {"frames that fit a sequence", "framesPerSequence", "RecordMaxFramesPerSequence"},
    {"sequence", "sequence", "RecordCurrentSequenceNumber"},
};

constexpr NamedFeature kFlags[] = {
    {"recording after the trigger", "trailer", "RecordTrailerRecordingActive"},
    {"record standby", "standby", "RecordStandby"},
};

std::string controlText(const CameraLook& look)
{
    const auto host = look.controllingHost();
    if (!host) {
        return "free";
    }
    return host->empty() ? "held by another program" : "held by a program on " + *host;
}

/// "recording" for "Recording"
std::string stateText(const CameraLook& look)
{
    const std::string state = look.text("CameraState").value_or("unknown");
    if (state == "FlashWrite") {
        return "copying to the flash card";
    }
    std::string text = state;
    text.front() = static_cast<char>(text.front() | 0x20); // to lower case
    return text;
}

std::string shown(const Fact& fact)
{
    const std::string text = fact.value.is_boolean()  ? (fact.value.get<bool>() ? "yes" : "no")
                             : fact.value.is_string() ? fact.value.get<std::string>()
                                                      : fact.value.dump();
    return fact.unit.empty() ? text : text + ' ' + fact.unit;
}

} // namespace

Facts stateOf(const CameraLook& look)
{
    Facts facts{{"state", "state", stateText(look)}, {"control", "control", controlText(look)}};
    for (const NamedFeature& count : kCounts) {
        if (const auto value = look.integer(count.feature)) {
            facts.push_back({count.label, count.key, *value});
        }
    }
    for (const NamedFeature& flag : kFlags) {
        if (const auto value = look.flag(flag.feature)) {
            facts.push_back({flag.label, flag.key, *value});
        }
    }
    return facts;
}

Facts userSetsOf(const CameraLook& look)
{
    return {
        {"in use", "inUse", look.text("UserSetSelector").value_or("none")},
        {"after power-on", "afterPowerOn", look.text("UserSetDefaultSelector").value_or("none")}};
}

std::vector<std::vector<std::string>> rowsOf(const Facts& facts)
{
    std::vector<std::vector<std::string>> rows;
    for (const Fact& fact : facts) {
        rows.push_back({fact.label, shown(fact)});
    }
    return rows;
}

Json jsonOf(const Facts& facts)
{
    Json json = Json::object();
    for (const Fact& fact : facts) {
        json[fact.key] = fact.value;
    }
    return json;
}

} // namespace telvo
