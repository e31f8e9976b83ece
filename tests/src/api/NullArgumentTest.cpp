// Null where a text, a settings block or an out variable belongs: refused, nothing is touched.
#include "AnyExport.h"
#include "GrabberTest.h"

namespace
{

struct NullArgument {
    std::string name;
    AnyExport function;
    std::size_t index;
};

std::ostream& operator<<(std::ostream& stream, const NullArgument& argument)
{
    return stream << argument.name;
}

std::vector<NullArgument> everyPointerOfEveryExport()
{
    std::vector<NullArgument> all;
    for (const AnyExport& function : exportsWithKnownId()) {
        for (std::size_t index = 0; index < function.isPointer.size(); ++index) {
            if (function.isPointer[index]) {
                all.push_back({function.name + "_" + std::to_string(index + 1), function, index});
            }
        }
    }
    return all;
}

std::string nameOf(const ::testing::TestParamInfo<NullArgument>& info)
{
    return info.param.name;
}

class NullArgumentTest : public InitializedGrabberTest,
                         public ::testing::WithParamInterface<NullArgument>
{
};

TEST_P(NullArgumentTest, IsRefused)
{
    const auto& [name, function, index] = GetParam();
    const Attempt attempt = function.call(kCamera, index);
    EXPECT_EQ(attempt.result, returnsPointer(function.name) ? 0 : -1);
    EXPECT_FALSE(attempt.touchedMemory);
    EXPECT_EQ(s.takeCalls(), Texts{});
}

INSTANTIATE_TEST_SUITE_P(Argument, NullArgumentTest,
                         ::testing::ValuesIn(everyPointerOfEveryExport()), nameOf);

class NullArgumentOfConnectTest : public GrabberTest
{
};

TEST_F(NullArgumentOfConnectTest, IsRefused)
{
    const TelvoConnectionSettings settings{};
    EXPECT_EQ(expConnectGrabber(nullptr, kIp, 1, &settings, kCamera), -1);
    EXPECT_EQ(expConnectGrabber(kMac, nullptr, 1, &settings, kCamera), -1);
    EXPECT_EQ(expConnectGrabber(kMac, kIp, 1, nullptr, kCamera), -1);
    EXPECT_EQ(s.takeCalls(), Texts{});
    EXPECT_EQ(expDisconnectGrabber(kCamera), -1);
}

} // namespace
