// Width, height and offsets of the image, and what the library remembers of them.
#include "Accessor.h"

namespace
{

TELVO_ACCESSORS(
    Width,
    Rows{
        {.behaviour = "SetSendsAValueInsideTheLimits",
         .call = [] { return set(expSetWidth, 640); },
         .answer = {0, {640}},
         .calls = {"Get Width", "Width.GetMin", "Width.GetMax",
                   "log <--------------- GEN setCurrentWidth: min = 16, max = 1280, value = 640",
                   "Width.SetValue 640", "log -- GEN setCurrentWidth 640"}},
        {.behaviour = "SetDoesNotRoundToTheIncrement",
         .call = [] { return set(expSetWidth, 641); },
         .answer = {-1, {641}},
         .calls = {"Get Width", "Width.GetMin", "Width.GetMax",
                   "log <--------------- GEN setCurrentWidth: min = 16, max = 1280, value = 641",
                   "Width.SetValue 641", "log -- GEN setCurrentWidth Error"},
         .script = [](StandIn& s) { s.answer("Width.SetValue", {Code::OutOfRange}); }},
        {.behaviour = "SetCutsAtTheMaximum",
         .call = [] { return set(expSetWidth, 5000); },
         .answer = {0, {1280}},
         .calls = {"Get Width", "Width.GetMin", "Width.GetMax",
                   "log <--------------- GEN setCurrentWidth: min = 16, max = 1280, value = 5000",
                   "Width.SetValue 1280", "log -- GEN setCurrentWidth 1280"}},
        {.behaviour = "SetComparesSigned",
         .call = [] { return set(expSetWidth, -1); },
         .answer = {0, {16}},
         .calls = {"Get Width", "Width.GetMin", "Width.GetMax",
                   "log <--------------- GEN setCurrentWidth: min = 16, max = 1280, value = -1",
                   "Width.SetValue 16", "log -- GEN setCurrentWidth 16"}},
        {.behaviour = "SetGivesTheClampedValueBackWhenTheCameraRefuses",
         .call = [] { return set(expSetWidth, 3); },
         .answer = {-1, {16}},
         .calls = {"Get Width", "Width.GetMin", "Width.GetMax",
                   "log <--------------- GEN setCurrentWidth: min = 16, max = 1280, value = 3",
                   "Width.SetValue 16", "log -- GEN setCurrentWidth Error"},
         .script = [](StandIn& s) { s.answer("Width.SetValue", {Code::AccessDenied}); }},
        {.behaviour = "SetPassesAValueUnclampedWhoseLimitsCannotBeRead",
         .call = [] { return set(expSetWidth, 640); },
         .answer = {0, {640}},
         .calls = {"Get Width", "Width.GetMin", "Width.GetMax",
                   "log <--------------- GEN setCurrentWidth: min = -2147483648, "
                   "max = 2147483647, value = 640",
                   "Width.SetValue 640", "log -- GEN setCurrentWidth 640"},
         .script =
             [](StandIn& s) {
                 s.answer("Width.GetMin", {Code::Timeout});
                 s.answer("Width.GetMax", {Code::Timeout});
             }},
        {.behaviour = "SetFailsWithoutTheFeatureAndLeavesTheVariable",
         .call = [] { return set(expSetWidth, 640); },
         .answer = {-1, {640}},
         .calls = {"Get Width", "log -- GEN setCurrentWidth Error"},
         .script = [](StandIn& s) { s.camera().remove("Width"); }},
        {.behaviour = "SetFailsWithAFeatureOfAnotherType",
         .call = [] { return set(expSetWidth, 640); },
         .answer = {-1, {640}},
         .calls = {"Get Width", "log -- GEN setCurrentWidth Error"},
         .script = [](StandIn& s) { s.camera().boolean("Width"); }},
        {.behaviour = "GetReadsTheCamera",
         .call = [] { return get(expGetWidth); },
         .answer = {0, {800}},
         .calls = {"Get Width", "Width.GetValue", "log -- GEN getCurrentWidth 800"},
         .script = [](StandIn& s) { s.camera().integer("Width").value(800); }},
        {.behaviour = "GetGivesTheLastKnownWidthWhenTheReadFails",
         .call = [] { return get(expGetWidth); },
         .answer = {0, {1280}},
         .calls = {"Get Width", "Width.GetValue", "log -- GEN getCurrentWidth 1280"},
         .script = [](StandIn& s) { s.answer("Width.GetValue", {Code::Timeout}); }},
        {.behaviour = "GetGivesMinus1AsTheWidthWithoutTheFeature",
         .call = [] { return get(expGetWidth); },
         .answer = {0, {-1}},
         .calls = {"Get Width", "log -- GEN getCurrentWidth Error"},
         .script = [](StandIn& s) { s.camera().remove("Width"); }},
    });

TELVO_ACCESSORS(
    Height, Rows{
                {.behaviour = "SetSendsAValueInsideTheLimits",
                 .call = [] { return set(expSetHeight, 512); },
                 .answer = {0, {512}},
                 .calls = {"Get Height", "Height.GetMin", "Height.GetMax", "Height.SetValue 512",
                           "log -- GEN setCurrentHeight 512"}},
                {.behaviour = "SetCutsAtTheMaximum",
                 .call = [] { return set(expSetHeight, 5000); },
                 .answer = {0, {1024}},
                 .calls = {"Get Height", "Height.GetMin", "Height.GetMax", "Height.SetValue 1024",
                           "log -- GEN setCurrentHeight 1024"}},
                {.behaviour = "SetRaisesToTheMinimum",
                 .call = [] { return set(expSetHeight, 0); },
                 .answer = {0, {1}},
                 .calls = {"Get Height", "Height.GetMin", "Height.GetMax", "Height.SetValue 1",
                           "log -- GEN setCurrentHeight 1"}},
                {.behaviour = "SetFailsWhenTheCameraRefuses",
                 .call = [] { return set(expSetHeight, 5000); },
                 .answer = {-1, {1024}},
                 .calls = {"Get Height", "Height.GetMin", "Height.GetMax", "Height.SetValue 1024",
                           "log -- GEN setCurrentHeight Error"},
                 .script = [](StandIn& s) { s.answer("Height.SetValue", {Code::AccessDenied}); }},
                {.behaviour = "SetFailsWithoutTheFeature",
                 .call = [] { return set(expSetHeight, 512); },
                 .answer = {-1, {512}},
                 .calls = {"Get Height", "log -- GEN setCurrentHeight Error"},
                 .script = [](StandIn& s) { s.camera().remove("Height"); }},
                {.behaviour = "GetReadsTheCamera",
                 .call = [] { return get(expGetHeight); },
                 .answer = {0, {600}},
                 .calls = {"Get Height", "Height.GetValue", "log -- GEN getCurrentHeight 600"},
                 .script = [](StandIn& s) { s.camera().integer("Height").value(600); }},
                {.behaviour = "GetGivesMinus1AsTheHeightWithoutTheFeature",
                 .call = [] { return get(expGetHeight); },
                 .answer = {0, {-1}},
                 .calls = {"Get Height", "log -- GEN getCurrentHeight Error"},
                 .script = [](StandIn& s) { s.camera().remove("Height"); }},
            });

TELVO_ACCESSORS(
    Offset, Rows{
                {.behaviour = "SetXSendsAValueInsideTheLimits",
                 .call = [] { return set(expSetOffsetX, 32); },
                 .answer = {0, {32}},
                 .calls = {"Get OffsetX", "OffsetX.GetMin", "OffsetX.GetMax", "OffsetX.SetValue 32",
                           "log -- GEN setOffsetX 32"}},
                {.behaviour = "SetXCutsAtTheMaximum",
                 .call = [] { return set(expSetOffsetX, 2000); },
                 .answer = {0, {1264}},
                 .calls = {"Get OffsetX", "OffsetX.GetMin", "OffsetX.GetMax",
                           "OffsetX.SetValue 1264", "log -- GEN setOffsetX 1264"}},
                {.behaviour = "SetXFailsWhenTheCameraRefuses",
                 .call = [] { return set(expSetOffsetX, -7); },
                 .answer = {-1, {0}},
                 .calls = {"Get OffsetX", "OffsetX.GetMin", "OffsetX.GetMax", "OffsetX.SetValue 0",
                           "log -- GEN setOffsetX Error"},
                 .script = [](StandIn& s) { s.answer("OffsetX.SetValue", {Code::AccessDenied}); }},
                {.behaviour = "SetXFailsWithoutTheFeature",
                 .call = [] { return set(expSetOffsetX, 32); },
                 .answer = {-1, {32}},
                 .calls = {"Get OffsetX", "log -- GEN setOffsetX Error"},
                 .script = [](StandIn& s) { s.camera().remove("OffsetX"); }},
                {.behaviour = "SetYSendsAValueInsideTheLimits",
                 .call = [] { return set(expSetOffsetY, 33); },
                 .answer = {0, {33}},
                 .calls = {"Get OffsetY", "OffsetY.GetMin", "OffsetY.GetMax", "OffsetY.SetValue 33",
                           "log -- GEN setOffsetY 33"}},
                {.behaviour = "SetYCutsAtTheMaximum",
                 .call = [] { return set(expSetOffsetY, 2000); },
                 .answer = {0, {1023}},
                 .calls = {"Get OffsetY", "OffsetY.GetMin", "OffsetY.GetMax",
                           "OffsetY.SetValue 1023", "log -- GEN setOffsetY 1023"}},
                {.behaviour = "SetYFailsWhenTheCameraRefuses",
                 .call = [] { return set(expSetOffsetY, -7); },
                 .answer = {-1, {0}},
                 .calls = {"Get OffsetY", "OffsetY.GetMin", "OffsetY.GetMax", "OffsetY.SetValue 0",
                           "log -- GEN setOffsetY Error"},
                 .script = [](StandIn& s) { s.answer("OffsetY.SetValue", {Code::AccessDenied}); }},
                {.behaviour = "SetYFailsWithoutTheFeature",
                 .call = [] { return set(expSetOffsetY, 33); },
                 .answer = {-1, {33}},
                 .calls = {"Get OffsetY", "log -- GEN setOffsetY Error"},
                 .script = [](StandIn& s) { s.camera().remove("OffsetY"); }},
                {.behaviour = "GetReadsXThenY",
                 .call = [] { return get(expGetOffset); },
                 .answer = {0, {48, 9}},
                 .calls = {"Get OffsetX", "OffsetX.GetValue", "log -- GEN getOffsetX 48",
                           "Get OffsetY", "OffsetY.GetValue", "log -- GEN getOffsetY 9"},
                 .script =
                     [](StandIn& s) {
                         s.camera().integer("OffsetX").value(48);
                         s.camera().integer("OffsetY").value(9);
                     }},
                {.behaviour = "GetStopsWhenXCannotBeRead",
                 .call = [] { return get(expGetOffset); },
                 .answer = {-1, {kUntouched, kUntouched}},
                 .calls = {"Get OffsetX", "OffsetX.GetValue", "log -- GEN getOffsetX Error"},
                 .script = [](StandIn& s) { s.answer("OffsetX.GetValue", {Code::Timeout}); }},
                {.behaviour = "GetStopsWithoutX",
                 .call = [] { return get(expGetOffset); },
                 .answer = {-1, {kUntouched, kUntouched}},
                 .calls = {"Get OffsetX", "log -- GEN getOffsetX Error"},
                 .script = [](StandIn& s) { s.camera().remove("OffsetX"); }},
                {.behaviour = "GetFailsWhenYCannotBeRead",
                 .call = [] { return get(expGetOffset); },
                 .answer = {-1, {0, kUntouched}},
                 .calls = {"Get OffsetX", "OffsetX.GetValue", "log -- GEN getOffsetX 0",
                           "Get OffsetY", "OffsetY.GetValue", "log -- GEN getOffsetY Error"},
                 .script = [](StandIn& s) { s.answer("OffsetY.GetValue", {Code::Timeout}); }},
                {.behaviour = "GetFailsWithoutY",
                 .call = [] { return get(expGetOffset); },
                 .answer = {-1, {0, kUntouched}},
                 .calls = {"Get OffsetX", "OffsetX.GetValue", "log -- GEN getOffsetX 0",
                           "Get OffsetY", "log -- GEN getOffsetY Error"},
                 .script = [](StandIn& s) { s.camera().remove("OffsetY"); }},
            });

struct Geometry {
    std::uint32_t offsetX = 0;
    std::uint32_t offsetY = 0;
    std::uint32_t width = 0;
    std::uint32_t height = 0;
    bool operator==(const Geometry&) const = default;
};

Geometry cachedGeometry()
{
    Geometry cached;
    std::int64_t frames = 0;
    std::int64_t reserved = 0;
    expGetRecordInfo(&cached.offsetX, &cached.offsetY, &cached.width, &cached.height, &frames,
                     &reserved, nullptr, kCamera);
    return cached;
}

class GeometryCacheTest : public InitializedGrabberTest
{
};

using GeometryBeforeInitialize = GrabberTest;

TEST_F(GeometryBeforeInitialize, Is1280Times1024)
{
    ASSERT_EQ(connect(), 0);
    const Geometry cached = cachedGeometry();
    EXPECT_EQ(cached.width, 1280U);
    EXPECT_EQ(cached.height, 1024U);
}

TEST_F(GeometryCacheTest, HoldsWhatTheSettersWrote)
{
    EXPECT_EQ(set(expSetWidth, 5000), (Answer{0, {1280}}));
    EXPECT_EQ(set(expSetHeight, 300), (Answer{0, {300}}));
    EXPECT_EQ(set(expSetOffsetX, 64), (Answer{0, {64}}));
    EXPECT_EQ(set(expSetOffsetY, 65), (Answer{0, {65}}));
    EXPECT_EQ(cachedGeometry(), (Geometry{64, 65, 1280, 300}));
}

TEST_F(GeometryCacheTest, HoldsWhatTheGettersRead)
{
    s.camera().integer("Width").value(100);
    s.camera().integer("Height").value(200);
    s.camera().integer("OffsetX").value(3);
    s.camera().integer("OffsetY").value(4);
    EXPECT_EQ(cachedGeometry(), (Geometry{0, 0, 1280, 1024}));
    get(expGetWidth);
    get(expGetHeight);
    get(expGetOffset);
    EXPECT_EQ(cachedGeometry(), (Geometry{3, 4, 100, 200}));
}

TEST_F(GeometryCacheTest, KeepsTheOldValuesWhenTheCameraRefuses)
{
    for (const char* feature : {"Width", "Height", "OffsetX", "OffsetY"}) {
        s.answerAlways(std::string(feature) + ".SetValue", Code::AccessDenied);
    }
    set(expSetWidth, 640);
    set(expSetHeight, 480);
    set(expSetOffsetX, 10);
    set(expSetOffsetY, 10);
    EXPECT_EQ(cachedGeometry(), (Geometry{0, 0, 1280, 1024}));
}

TEST_F(GeometryCacheTest, KeepsTheOldValuesWhenTheReadFailsOrTheFeatureIsMissing)
{
    s.camera().remove({"Width", "Height"});
    s.answer("OffsetX.GetValue", {Code::Timeout});
    get(expGetWidth);
    get(expGetHeight);
    get(expGetOffset);
    EXPECT_EQ(cachedGeometry(), (Geometry{0, 0, 1280, 1024}));
}

} // namespace
