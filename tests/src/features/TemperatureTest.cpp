#include "Accessor.h"

namespace
{

TELVO_ACCESSORS(Temperature,
                Rows{
                    {.behaviour = "GetPassesTheNumberOnSilently",
                     .call = [] { return get(expGetTemperature); },
                     .answer = {0, {42}},
                     .calls = {"Temperature.GetValue"}},
                    {.behaviour = "GetGivesZeroAndSuccessWhenTheReadFails",
                     .call = [] { return get(expGetTemperature); },
                     .answer = {0, {0}},
                     .calls = {"Temperature.GetValue"},
                     .script =
                         [](StandIn& s) { s.answer("Temperature.GetValue", {Code::Timeout}); }},
                });

class TemperatureTest : public GrabberTest
{
};

TEST_F(TemperatureTest, SucceedsSilentlyWithoutTheFeature)
{
    ASSERT_EQ(connect(), 0);
    s.camera().remove("Temperature");
    ASSERT_EQ(initialize(), 0);
    s.forget();
    EXPECT_EQ(get(expGetTemperature).result, 0);
    EXPECT_EQ(s.takeCalls(), Texts{});
}

} // namespace
