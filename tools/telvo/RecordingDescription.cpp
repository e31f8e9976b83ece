#include "RecordingDescription.h"

#include "Setting.h"

#include <string>

namespace telvo
{

namespace
{

struct IdentityText {
    const char* name;
    const char* key; // as the library calls it
};

constexpr IdentityText kIdentity[] = {
    {"manufacturer", "manufacturer"},  {"model", "model"},
    {"serial-number", "serialNumber"}, {"name", "cameraName"},
    {"version", "cameraVersion"},
};

const char* pixelFormatOf(bool isColour, BayerPattern pattern)
{
    constexpr const char* kNames[] = {"BayerRG8", "BayerGR8", "BayerGB8", "BayerBG8"};
    return isColour ? kNames[static_cast<std::size_t>(pattern)] : "Mono8";
}

} // namespace

Json describeCamera(const CameraSession& camera)
{
    Json json{{"mac-address", camera.address().mac}, {"ip-address", camera.address().ip}};
    for (const IdentityText& text : kIdentity) {
        json[text.name] = camera.identity(text.key);
    }
    return json;
}

Json describeSettings(const CameraSession& camera)
{
    Json json = Json::object();
    for (const Setting& setting : allSettings()) {
        if (setting.ofConnection != nullptr) {
            continue;
        }
        if (const auto text = camera.read(setting)) {
            json[std::string(setting.name)] = jsonOf(*text);
            json[std::string(setting.name)].erase("limits"); // those of now, not of the recording
        }
    }
    return json;
}

Json describeSequence(const SequenceFacts& facts)
{
    const Recording& recording = facts.recording;
    return {{"width", recording.info.width},
            {"height", recording.info.height},
            {"mode", recording.info.isRing ? "ring" : "single"},
            {"sequences", recording.info.sequences},
            {"sequence", recording.sequence},
            {"frames", recording.frames},
            {"trigger-frame", facts.trigger ? Json(*facts.trigger) : Json()},
            {"end", facts.end}};
}

Json describeSelection(FrameSelection selection)
{
    return {{"first", selection.first}, {"count", selection.count}, {"every", selection.every}};
}

Json describePictures(const RecordingInfo& info, const PictureDescription& pictures)
{
    const bool isRendered = pictures.style.colour.has_value();
    return {{"file-format", pictures.fileFormat},
            {"width", info.width},
            {"height", info.height},
            {"pixel-format",
             isRendered ? "RGB8" : pixelFormatOf(pictures.isColourCamera, pictures.filter)},
            {"header", pictures.hasHeader ? "kept" : "hidden"}};
}

} // namespace telvo
