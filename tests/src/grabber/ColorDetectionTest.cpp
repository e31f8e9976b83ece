// A colour camera is known by its pixel format; its factors lie in three data words.
#include "GrabberTest.h"

#include <algorithm>

namespace
{

struct Colors {
    int flag = 77;
    double first = 77;
    double second = 77;
    double third = 77;
    bool operator==(const Colors&) const = default;
};

std::ostream& operator<<(std::ostream& stream, const Colors& colors)
{
    return stream << colors.flag << ": " << colors.first << ' ' << colors.second << ' '
                  << colors.third;
}

class ColorDetectionTest : public GrabberTest
{
  protected:
    void SetUp() override { ASSERT_EQ(connect(), 0); }

    void makeColorCamera(std::int64_t first, std::int64_t second, std::int64_t third)
    {
        s.camera().enumeration("PixelFormat").value("BayerGR8");
        s.camera().integer("Data00").value(first);
        s.camera().integer("Data01").value(second);
        s.camera().integer("Data02").value(third);
    }

    Colors colors()
    {
        Colors colors;
        std::uint8_t flag = 77;
        EXPECT_EQ(
            expGetColorInformation(&flag, &colors.first, &colors.second, &colors.third, kCamera),
            0);
        colors.flag = flag;
        return colors;
    }

    Texts initializeAndTakeDetection()
    {
        s.forget();
        EXPECT_EQ(initialize(), 0);
        const Texts calls = s.takeCalls();
        return {std::find(calls.begin(), calls.end(), "Get PixelFormat"),
                std::find(calls.begin(), calls.end(), "Get MultisequenceAvailable")};
    }
};

TEST_F(ColorDetectionTest, FactorsAreOneAndTheFlagIsClearBeforeInitialize)
{
    EXPECT_EQ(colors(), (Colors{0, 1.0, 1.0, 1.0}));
}

TEST_F(ColorDetectionTest, AColorCamerasWordsAreDecoded)
{
    makeColorCamera(250, 100, 600);
    EXPECT_EQ(initializeAndTakeDetection(),
              (Texts{"Get PixelFormat", "PixelFormat.GetValue", "Get Data00", "Data00.GetValue",
                     "log -- GEN getCustomData Data00 250", "Get Data01", "Data01.GetValue",
                     "log -- GEN getCustomData Data01 100", "Get Data02", "Data02.GetValue",
                     "log -- GEN getCustomData Data02 600"}));
    EXPECT_EQ(colors(), (Colors{1, 1.5, 0.0, 5.0}));
}

TEST_F(ColorDetectionTest, FactorsOutOfRangeAreNotTaken)
{
    makeColorCamera(99, 700, 601);
    ASSERT_EQ(initialize(), 0);
    EXPECT_EQ(colors(), (Colors{1, 1.0, 1.0, 1.0}));
}

TEST_F(ColorDetectionTest, TheDivisionKeepsTheFraction)
{
    makeColorCamera(201, 333, 750);
    ASSERT_EQ(initialize(), 0);
    const Colors decoded = colors();
    EXPECT_DOUBLE_EQ(decoded.first, 1.01);
    EXPECT_DOUBLE_EQ(decoded.second, 2.33);
    EXPECT_EQ(decoded.third, 1.0); // 6.5 is too much
}

TEST_F(ColorDetectionTest, AFactorOutOfRangeKeepsWhatTheHostHadSet)
{
    makeColorCamera(200, 200, 200);
    ASSERT_EQ(initialize(), 0);
    ASSERT_EQ(expSetColorInformation(2.0, 3.0, 4.0, kCamera), 0);
    s.camera().integer("Data01").value(750);
    ASSERT_EQ(initialize(), 0);
    EXPECT_EQ(colors(), (Colors{1, 2.0, 3.0, 4.0}));
}

TEST_F(ColorDetectionTest, MissingWordsAreLoggedAndChangeNothing)
{
    makeColorCamera(300, 300, 300);
    s.camera().remove({"Data00", "Data01", "Data02"});
    EXPECT_EQ(
        initializeAndTakeDetection(),
        (Texts{"Get PixelFormat", "PixelFormat.GetValue", "Get Data00",
               "log -- GEN getCustomData Error", "Get Data01", "log -- GEN getCustomData Error",
               "Get Data02", "log -- GEN getCustomData Error"}));
    EXPECT_EQ(colors(), (Colors{1, 1.0, 1.0, 1.0}));
}

TEST_F(ColorDetectionTest, AMonochromeCamerasWordsAreNotRead)
{
    s.camera().integer("Data00").value(300);
    EXPECT_EQ(initializeAndTakeDetection(), (Texts{"Get PixelFormat", "PixelFormat.GetValue"}));
    EXPECT_EQ(colors(), (Colors{0, 1.0, 1.0, 1.0}));
}

TEST_F(ColorDetectionTest, TheFlagIsClearedForAMonochromeCamera)
{
    makeColorCamera(300, 300, 300);
    ASSERT_EQ(initialize(), 0);
    s.camera().enumeration("PixelFormat").value("Mono8");
    ASSERT_EQ(initialize(), 0);
    EXPECT_EQ(colors(), (Colors{0, 2.0, 2.0, 2.0}));
}

TEST_F(ColorDetectionTest, WithoutAPixelFormatNothingChanges)
{
    makeColorCamera(300, 300, 300);
    ASSERT_EQ(initialize(), 0);
    s.camera().remove("PixelFormat");
    EXPECT_EQ(initializeAndTakeDetection(), Texts{"Get PixelFormat"});
    EXPECT_EQ(colors(), (Colors{1, 2.0, 2.0, 2.0}));
}

} // namespace
