/// What a command says when a camera does not do what it should.
#include "CameraSession.h"
#include "CameraChoice.h"
#include "ToolError.h"

#include "VirtualCamera.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace
{

using namespace telvo;

class CameraSessionTest : public testing::Test
{
  protected:
    void SetUp() override
    {
        camera::CameraOptions options;
        options.address = "127.0.0.11";
        options.userSetsPrepared = true;
        camera = std::make_unique<camera::VirtualCamera>(options);
        ASSERT_FALSE(camera->start());
    }

    /// Loses the link after a second without an answer.
    static std::unique_ptr<CameraSession> connect()
    {
        return std::make_unique<CameraSession>(
            chooseCamera({.camera = "127.0.0.11", .search = {}}),
            std::vector{parseAssignment("heartbeat-timeout=1000"),
                        parseAssignment("heartbeat-interval=200")});
    }

    static std::string reasonToFail(const CameraSession& session)
    {
        try {
            session.fail("no picture comes");
        } catch (const Failure& failure) {
            return failure.what();
        }
    }

    std::unique_ptr<camera::VirtualCamera> camera;
};

TEST_F(CameraSessionTest, AnAnsweringCameraFailsForTheGivenReason)
{
    EXPECT_EQ(reasonToFail(*connect()), "no picture comes");
}

TEST_F(CameraSessionTest, ACameraThatFellSilentJustNowIsALostLink)
{
    const auto session = connect();
    camera->faults().setSilent(true);
    EXPECT_EQ(reasonToFail(*session),
              "the connection to the camera was lost; look at cable and power, then try again");
}

} // namespace
