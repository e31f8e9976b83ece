#include "Accessor.h"

#include <ostream>

namespace
{

double asSigned(std::uint32_t value)
{
    return static_cast<std::int32_t>(value);
}

Texts logLine(const std::string& text)
{
    return text.empty() ? Texts{} : Texts{"log " + text};
}

std::string callName(const std::string& access)
{
    return access.substr(0, access.find(' '));
}

} // namespace

std::ostream& operator<<(std::ostream& stream, const Answer& answer)
{
    stream << "result " << answer.result << ", outs";
    for (const double out : answer.outs) {
        stream << ' ' << out;
    }
    return stream;
}

std::ostream& operator<<(std::ostream& stream, const Row& row)
{
    return stream << row.behaviour;
}

Answer get(std::int32_t (*function)(std::uint32_t*, std::int32_t))
{
    std::uint32_t out = kUntouched;
    const std::int32_t result = function(&out, kCamera);
    return {result, {asSigned(out)}};
}

Answer get(std::int32_t (*function)(std::uint8_t*, std::int32_t))
{
    std::uint8_t out = kUntouched;
    const std::int32_t result = function(&out, kCamera);
    return {result, {static_cast<double>(out)}};
}

Answer get(std::int32_t (*function)(std::uint32_t*, std::uint32_t*, std::int32_t))
{
    std::uint32_t first = kUntouched;
    std::uint32_t second = kUntouched;
    const std::int32_t result = function(&first, &second, kCamera);
    return {result, {asSigned(first), asSigned(second)}};
}

Answer get(std::int32_t (*function)(std::uint32_t*, std::uint32_t*, std::uint32_t*, std::int32_t))
{
    std::uint32_t minimum = kUntouched;
    std::uint32_t maximum = kUntouched;
    std::uint32_t value = kUntouched;
    const std::int32_t result = function(&minimum, &maximum, &value, kCamera);
    return {result, {asSigned(minimum), asSigned(maximum), asSigned(value)}};
}

Answer get(std::int32_t (*function)(double*, double*, double*, std::int32_t))
{
    double minimum = kUntouched;
    double maximum = kUntouched;
    double value = kUntouched;
    const std::int32_t result = function(&minimum, &maximum, &value, kCamera);
    return {result, {minimum, maximum, value}};
}

Answer set(std::int32_t (*function)(std::uint32_t, std::int32_t), std::int32_t value)
{
    return {function(static_cast<std::uint32_t>(value), kCamera), {}};
}

Answer set(std::int32_t (*function)(std::uint8_t, std::int32_t), bool value)
{
    return {function(value ? 1 : 0, kCamera), {}};
}

Answer set(std::int32_t (*function)(std::uint32_t*, std::int32_t), std::int32_t value)
{
    auto inOut = static_cast<std::uint32_t>(value);
    const std::int32_t result = function(&inOut, kCamera);
    return {result, {asSigned(inOut)}};
}

Rows join(std::initializer_list<Rows> parts)
{
    Rows all;
    for (const Rows& part : parts) {
        all.insert(all.end(), part.begin(), part.end());
    }
    return all;
}

Rows rowsOf(const Plain& plain)
{
    const bool bound = plain.reach == Reach::Bound;
    const Texts lookup = bound ? Texts{} : Texts{"Get " + plain.feature};
    const Texts available =
        plain.asksAvailability ? Texts{plain.feature + ".IsAvailable"} : Texts{};
    const Answer failure{
        -1, plain.outsOnFailure.value_or(std::vector<double>(plain.outs.size(), kUntouched))};
    const Texts withoutFeature = lookup + logLine(plain.missing.value_or(plain.failed));

    const auto beforeOrAfterBinding = [=](Row row, std::function<void(StandIn&)> change) {
        (bound ? row.beforeBinding : row.script) = std::move(change);
        return row;
    };
    const std::string& feature = plain.feature;
    Rows rows{
        {.behaviour = plain.name + "ReachesTheFeature",
         .call = plain.call,
         .answer = {0, plain.outs},
         .calls = lookup + available + Texts{plain.access} + logLine(plain.done)},
        {.behaviour = plain.name + "FailsWhenTheCameraRefuses",
         .call = plain.call,
         .answer = failure,
         .calls = lookup + available + Texts{plain.access} + logLine(plain.failed),
         .script = [=](StandIn& s) { s.answerAlways(callName(plain.access), Code::Busy); }},
        beforeOrAfterBinding({.behaviour = plain.name + "FailsWithoutTheFeature",
                              .call = plain.call,
                              .answer = failure,
                              .calls = withoutFeature},
                             [=](StandIn& s) { s.camera().remove(feature); }),
        beforeOrAfterBinding({.behaviour = plain.name + "FailsWithAFeatureOfAnotherType",
                              .call = plain.call,
                              .answer = failure,
                              .calls = withoutFeature},
                             [=](StandIn& s) { s.camera().string(feature).value("text"); }),
    };
    if (plain.asksAvailability) {
        rows.push_back({.behaviour = plain.name + "FailsWhileTheFeatureIsUnavailable",
                        .call = plain.call,
                        .answer = failure,
                        .calls = lookup + available + logLine(plain.failed),
                        .script = [=](StandIn& s) {
                            s.answerAlways(feature + ".IsAvailable", Code::NotAvailable);
                        }});
    }
    return rows;
}

std::string behaviourOf(const ::testing::TestParamInfo<Row>& info)
{
    return info.param.behaviour;
}

TEST_P(AccessorTest, Behaves)
{
    const Row& row = GetParam();
    ASSERT_EQ(connect(), 0);
    if (row.beforeBinding) {
        row.beforeBinding(s);
    }
    initialize();
    if (row.script) {
        row.script(s);
    }
    s.forget();

    EXPECT_EQ(row.call(), row.answer);
    EXPECT_EQ(s.takeCalls(), row.calls);
}
