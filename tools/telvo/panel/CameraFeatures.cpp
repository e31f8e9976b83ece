#include "CameraFeatures.h"

#include "ToolError.h"

#include "DeviceSession.h"
#include "FeatureText.h"
#include "NodeFeatures.h"

#include <array>
#include <variant>

namespace telvo
{

namespace
{

namespace ui = gige::ui;

const char* kindName(ui::FeatureKind kind)
{
    constexpr std::array kNames{"integer", "float",   "enumeration", "boolean",
                                "string",  "command", "other"};
    return kNames[static_cast<std::size_t>(kind)];
}

const char* visibilityName(gige::genapi::Visibility visibility)
{
    constexpr std::array kNames{"Beginner", "Expert", "Guru", "Invisible"};
    return kNames[static_cast<std::size_t>(visibility)];
}

Json leafOf(ui::Feature& feature)
{
    const ui::FeatureInfo& info = feature.info();
    const ui::FeatureState state = feature.read();
    Json leaf{{"name", info.name},
              {"display", info.label},
              {"tooltip", info.description},
              {"type", kindName(info.kind)},
              {"value", ui::valueText(info, state)},
              {"unit", info.unit},
              {"limits", ui::limitsText(info, state)},
              {"access", ui::accessText(info, state)},
              {"writable", state.isWritable()},
              {"visibility", visibilityName(info.visibility)}};
    const std::vector<std::string> choices = ui::choicesOf(info, state);
    if (!choices.empty()) {
        leaf["choices"] = choices;
    }
    return leaf;
}

/// Throws Failure for a text that is no value.
ui::FeatureValue valueOf(const ui::FeatureInfo& info, const ui::FeatureState& state,
                         const std::string& text)
{
    if (info.kind == ui::FeatureKind::Command) {
        return ui::ExecuteCommand{};
    }
    const auto parsed = ui::parseValue(info, state, text);
    if (const auto* const refusal = std::get_if<std::string>(&parsed)) {
        throw Failure(*refusal);
    }
    return std::get<ui::FeatureValue>(parsed);
}

Json nodeOf(const ui::FeatureNode& node)
{
    if (node.feature) {
        return leafOf(*node.feature);
    }
    Json children = Json::array();
    for (const ui::FeatureNode& child : node.children) {
        children.push_back(nodeOf(child));
    }
    return {{"name", node.label},
            {"display", node.label},
            {"tooltip", node.description},
            {"children", children}};
}

} // namespace

CameraFeatures::CameraFeatures(const CameraAddress& address, Access access)
{
    // It outlives every connection, whose threads read it.
    static const gige::control::LinkSettings kSettings;
    const PvResult opened = DeviceSession::open(
        {.ip = address.device.ip(), .nic = address.device.nic},
        access == Access::Look ? PvAccessType::Open : PvAccessType::Control, kSettings, [] {},
        mDevice);
    if (!opened.IsOK()) {
        throw Failure("the camera at " + address.ip + " does not show its features (" +
                      opened.GetCodeString().GetAscii() + ")");
    }
}

CameraFeatures::~CameraFeatures()
{
    if (mDevice) {
        mDevice->disconnect();
    }
}

Json CameraFeatures::tree() const
{
    return nodeOf(ui::featuresOf(mDevice->nodes())).value("children", Json::array());
}

Json CameraFeatures::set(const std::string& name, const std::string& value) const
{
    gige::genapi::Node* const node = mDevice->nodes().find(name);
    if (node == nullptr) {
        throw Failure("the camera has no feature '" + name + "'");
    }
    const auto feature = ui::featureOf(*node);
    const ui::FeatureInfo& info = feature->info();
    const std::string error = feature->write(valueOf(info, feature->read(), value));
    if (!error.empty()) {
        throw Failure("the camera refuses " + name + " = " + value + " (" + error + ")");
    }
    return leafOf(*feature);
}

} // namespace telvo
