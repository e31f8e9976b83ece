// Hosts without memory, threads or processes to be had: every export returns, and the camera can be
// used as soon as there is enough again.
#include "ChildProcess.h"
#include "VirtualCamera.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <string>

namespace
{

using camera::FeatureId;
using camera::VirtualCamera;

constexpr int kNotPossibleHere = 77;

/// What becomes scarce.
class Shortage : public testing::TestWithParam<std::string>
{
};

/// With a recording to read, and a memory that a next one fills at once.
camera::CameraOptions smallCamera()
{
    camera::CameraOptions options;
    options.address = "127.0.0.11";
    options.userSetsPrepared = true;
    options.recordAtPowerOn = true;
    options.memoryBytes = std::uint64_t{4} * 320 * 240;
    options.settings = {{FeatureId::Width, 320},
                        {FeatureId::Height, 240},
                        {FeatureId::AcquisitionFrameRateRaw, 500}};
    return options;
}

TEST_P(Shortage, FailsExportsAndSparesTheHost)
{
    VirtualCamera camera(smallCamera());
    ASSERT_FALSE(camera.start());
    const ChildResult result = runChild({TELVO_TEST_PROGRAMS "/starved_host", GetParam(),
                                         camera.macText(), camera.options().address});
    if (result.status == kNotPossibleHere) {
        GTEST_SKIP() << "this user cannot become another";
    }
    EXPECT_EQ(result.output, "");
    EXPECT_EQ(result.status, 0);
}

std::string nameOf(const testing::TestParamInfo<std::string>& instance)
{
    std::string name = instance.param;
    std::replace(name.begin(), name.end(), '-', '_');
    return name;
}

INSTANTIATE_TEST_SUITE_P(Of, Shortage,
                         testing::Values("allocations", "one-allocation", "threads", "processes"),
                         nameOf);

// A sanitizer itself needs more of the address space than is there to be made scarce.
#if !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__)
INSTANTIATE_TEST_SUITE_P(OfAll, Shortage, testing::Values("address-space"), nameOf);
#endif

} // namespace
