#include "PictureDescription.h"

namespace telvo
{

Json describeHeader(const FrameHeader& header)
{
    Json json{
        {"counter", header.counter}, {"time", header.time}, {"flags", flagNames(header.flags)}};
    if (isTimeOfDay(header)) {
        json["timeOfDay"] = timeOfDay(header.time);
    }
    return json;
}

Json describePicture(GrayView whole, const PictureFigures& figures, const PreviewPicture& preview)
{
    const Region& region = preview.region;
    return {
        {"format", preview.isRaw ? "gray8" : "jpeg"},
        {"width", preview.width},
        {"height", preview.height},
        {"scale", preview.scale},
        {"region",
         {{"x", region.x}, {"y", region.y}, {"width", region.width}, {"height", region.height}}},
        {"pictureWidth", whole.width},
        {"pictureHeight", whole.height},
        {"histogram", figures.histogram},
        {"clippedLow", figures.clippedLow()},
        {"clippedHigh", figures.clippedHigh()},
        {"mean", figures.mean},
        {"focus", figures.focus}};
}

} // namespace telvo
