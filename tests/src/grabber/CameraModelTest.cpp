// The model's name decides the camera type, its case and, for one model, the highest frame rate.
#include "GrabberTest.h"

#include <algorithm>

namespace
{

struct Model {
    const char* name;
    const char* line;
    std::int32_t type;
    int cameraCase;
    std::int32_t fixedMaxFps;
};

std::ostream& operator<<(std::ostream& stream, const Model& model)
{
    return stream << model.name;
}

class CameraModelTest : public GrabberTest, public ::testing::WithParamInterface<Model>
{
};

TEST_P(CameraModelTest, IsKnownByItsName)
{
    const Model& model = GetParam();
    s.camera().string("DeviceModelName").value(model.name);
    ASSERT_EQ(connect(), 0);
    ASSERT_EQ(initialize(), 0);

    Texts expected{std::string("log ") + model.line};
    if (model.fixedMaxFps != 0) {
        expected.push_back("log ----- checkCameraType() Used Camera Type: ORVALE6 Fenrow Lite");
    }
    expected.push_back("log --- Used Camera Type " + std::to_string(model.type) +
                       ",  Case: " + std::to_string(model.cameraCase));
    const Texts calls = s.takeCallsWithoutLookups();
    const auto begin = std::find(calls.begin(), calls.end(), expected.front());
    EXPECT_EQ(Texts(begin, std::find(begin, calls.end(), "SensorWidth.GetValue")), expected);

    std::uint8_t cameraCase = 77;
    std::uint32_t width = 0;
    std::uint32_t height = 0;
    EXPECT_EQ(expGetUsedCameraType(&cameraCase, kCamera, &width, &height), model.type);
    EXPECT_EQ(cameraCase, model.cameraCase);
    EXPECT_EQ(width, 1280U);
    EXPECT_EQ(height, 1024U);
    EXPECT_EQ(s.takeCallsWithoutLookups().back(),
              "log ------------- GENexpGetUsedCameraType: " + std::to_string(model.type) +
                  " maxWidth 1280 maxHeight 1024 fixedMaxFps " + std::to_string(model.fixedMaxFps));
}

INSTANTIATE_TEST_SUITE_P(
    Names, CameraModelTest,
    ::testing::Values(
        Model{"QuenLOFT 3", "Used Camera Model: quenloft 3", 0, 1, 0},
        Model{"quenloft fenrow lite", "Used Camera Model: quenloft fenrow lite", 0, 1,
              0}, // the first rule decides
        Model{"Fenrow Lite", "Used Camera Model: fenrow lite", 3, 1, 1000},
        Model{"Fenrow Lite Fenrow 4", "Used Camera Model: fenrow lite fenrow 4", 3, 1, 1000},
        Model{"Fenrow 1-HR", "Used Camera Model: fenrow 1-hr", 1, 1, 0},
        Model{"Fenrow 2-HR", "Used Camera Model: fenrow 2-hr", 1, 0, 0},
        Model{"fenrow 2-hr fenrow 4", "Used Camera Model: fenrow 2-hr fenrow 4", 1, 0, 0},
        Model{"Fenrow 4", "Used Camera Model: fenrow 4", 1, 1, 0},
        Model{"Fenrow 5", "Used Camera Model: fenrow 5", 1, 0, 0},
        Model{"Fenrow 1", "Used Camera Model: fenrow 1", 0, 1, 0},
        Model{"Fenrow 3", "Used Camera Model: fenrow 3", 0, 0, 0},
        Model{"Fenrow", "Used Camera Model: fenrow", 0, 0, 0},
        Model{"Tovi1", "Used Camera Model: tovi1", 0, 1, 0},
        Model{"Quor6", "Used Camera Model: quor6", 0, 0, 0},
        Model{"Tovi Quor6", "Used Camera Model: tovi quor6", 0, 1, 0},
        Model{"Tovi2", "Used Camera Model: tovi2", 1, 1, 0},
        Model{"Quor7", "Used Camera Model: quor7", 1, 0, 0},
        Model{"Quor7 Tovi", "Used Camera Model: quor7 tovi", 1, 1, 0},
        Model{"Tovi1 Tovi2", "Used Camera Model: tovi1 tovi2", 0, 1, 0},
        Model{"Quor9", "Used Camera Model: quor9", 2, 0, 0},
        Model{"Tovi9", "Used Camera Model: tovi9", 2, 1, 0},
        Model{"", "Used Camera Model:", 2, 0, 0},
        // Only A to Z change: the text is in one-byte letters of whatever code page.
        Model{"\xC4NDERUNG", "Used Camera Model: \xC4nderung", 2, 0, 0}));

class SensorSizeTest : public InitializedGrabberTest
{
  protected:
    void useModel(const char* name)
    {
        s.camera().string("DeviceModelName").value(name);
        rebind();
    }

    struct Size {
        std::int32_t width;
        std::int32_t height;
        bool operator==(const Size&) const = default;
    };

    Size sensorSize()
    {
        std::uint8_t cameraCase = 0;
        std::uint32_t width = 77;
        std::uint32_t height = 77;
        expGetUsedCameraType(&cameraCase, kCamera, &width, &height);
        return {static_cast<std::int32_t>(width), static_cast<std::int32_t>(height)};
    }
};

TEST_F(SensorSizeTest, IsReadAnewOnEveryCall)
{
    s.camera().integer("SensorWidth").value(640);
    s.camera().integer("SensorHeight").value(480);
    EXPECT_EQ(sensorSize(), (Size{640, 480}));
    EXPECT_EQ(s.takeCalls(),
              (Texts{"Get SensorWidth", "SensorWidth.GetValue", "log -- GEN getMaxWidth 640",
                     "Get SensorHeight", "SensorHeight.GetValue", "log -- GEN getMaxHeight 480",
                     "log ------------- GENexpGetUsedCameraType: 1 maxWidth 640 maxHeight 480 "
                     "fixedMaxFps 0"}));
}

TEST_F(SensorSizeTest, IsTheTypesDefaultWithoutTheFeatures)
{
    s.camera().remove({"SensorWidth", "SensorHeight"});
    EXPECT_EQ(sensorSize(), (Size{1696, 1710}));
    EXPECT_EQ(s.takeCalls(),
              (Texts{"Get SensorWidth", "log -- GEN getMaxWidth Error", "Get SensorHeight",
                     "log -- GEN getMaxHeight Error",
                     "log ------------- GENexpGetUsedCameraType: 1 maxWidth -1 maxHeight -1 "
                     "fixedMaxFps 0"}));
    useModel("Quor6");
    EXPECT_EQ(sensorSize(), (Size{1280, 1024}));
    useModel("Fenrow Lite");
    EXPECT_EQ(sensorSize(), (Size{708, 528}));
    useModel("Other");
    EXPECT_EQ(sensorSize(), (Size{-1, -1}));
}

TEST_F(SensorSizeTest, IsReplacedAsAWholeWhenOneNumberIsMissing)
{
    s.camera().integer("SensorWidth").value(640);
    s.camera().remove("SensorHeight");
    EXPECT_EQ(sensorSize(), (Size{1696, 1710}));
    useModel("Other");
    EXPECT_EQ(sensorSize(), (Size{640, -1}));
}

TEST_F(SensorSizeTest, IsReplacedWhenANumberIsZero)
{
    s.camera().integer("SensorWidth").value(0);
    EXPECT_EQ(sensorSize(), (Size{1696, 1710}));
}

using CameraTypeBeforeInitialize = GrabberTest;

TEST_F(CameraTypeBeforeInitialize, IsZeroWithoutAFixedFrameRate)
{
    ASSERT_EQ(connect(), 0);
    std::uint8_t cameraCase = 77;
    std::uint32_t width = 0;
    std::uint32_t height = 0;
    EXPECT_EQ(expGetUsedCameraType(&cameraCase, kCamera, &width, &height), 0);
    EXPECT_EQ(cameraCase, 0);
    EXPECT_EQ(s.takeCalls().back(), "log ------------- GENexpGetUsedCameraType: 0 maxWidth 1280 "
                                    "maxHeight 1024 fixedMaxFps 0");
}

} // namespace
