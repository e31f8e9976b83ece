#include "FeatureText.h"

#include <gtest/gtest.h>

namespace gige::ui
{
namespace
{

using genapi::AccessMode;
using genapi::Representation;

FeatureInfo info(FeatureKind kind, Representation representation = Representation::Linear)
{
    FeatureInfo info;
    info.name = "Feature";
    info.kind = kind;
    info.representation = representation;
    return info;
}

FeatureState writable(FeatureLimits limits = {})
{
    FeatureState state;
    state.access = AccessMode::ReadWrite;
    state.limits = limits;
    return state;
}

FeatureState with(FeatureValue value)
{
    FeatureState state = writable();
    state.value = std::move(value);
    return state;
}

/// The value, or the refusal's sentence.
std::variant<FeatureValue, std::string>
parse(FeatureKind kind, const FeatureState& state, std::string_view text,
      Representation representation = Representation::Linear)
{
    return parseValue(info(kind, representation), state, text);
}

using Parsed = std::variant<FeatureValue, std::string>;
Parsed value(FeatureValue one)
{
    return one;
}
Parsed refusal(std::string sentence)
{
    return sentence;
}

TEST(ParseValue, TakesIntegersInDecimalAndHexadecimal)
{
    const FeatureState state = writable(IntegerLimits{.minimum = -10, .maximum = 5000});
    EXPECT_EQ(parse(FeatureKind::Integer, state, "1000"), value(std::int64_t{1000}));
    EXPECT_EQ(parse(FeatureKind::Integer, state, " -10 "), value(std::int64_t{-10}));
    EXPECT_EQ(parse(FeatureKind::Integer, state, "0x10"), value(std::int64_t{16}));
}

TEST(ParseValue, RefusesWhatIsNoInteger)
{
    for (const char* const text : {"", "abc", "1.5", "12 34", "99999999999999999999"}) {
        EXPECT_EQ(parse(FeatureKind::Integer, writable(), text),
                  refusal("\"" + std::string(text) + "\" is not an integer."));
    }
}

TEST(ParseValue, RefusesIntegersOutsideTheirLimits)
{
    const FeatureState state = writable(IntegerLimits{.minimum = 1, .maximum = 1068});
    EXPECT_EQ(parse(FeatureKind::Integer, state, "1068"), value(std::int64_t{1068}));
    EXPECT_EQ(parse(FeatureKind::Integer, state, "1069"),
              refusal("1069 is above the maximum of 1068."));
    EXPECT_EQ(parse(FeatureKind::Integer, state, "0"), refusal("0 is below the minimum of 1."));
}

TEST(ParseValue, RefusesIntegersBetweenTheSteps)
{
    const FeatureState state =
        writable(IntegerLimits{.minimum = 16, .maximum = 1024, .increment = 8});
    EXPECT_EQ(parse(FeatureKind::Integer, state, "24"), value(std::int64_t{24}));
    EXPECT_EQ(parse(FeatureKind::Integer, state, "25"),
              refusal("25 is not 16 plus a multiple of 8."));
}

TEST(ParseValue, CountsStepsFromTheLowestIntegerOn)
{
    const FeatureState state = writable(IntegerLimits{.increment = 2});
    EXPECT_EQ(parse(FeatureKind::Integer, state, "9223372036854775806"),
              value(std::int64_t{9223372036854775806}));
    EXPECT_NE(parse(FeatureKind::Integer, state, "9223372036854775807"),
              value(std::int64_t{9223372036854775807}));
}

TEST(ParseValue, TakesAddressesWhereTheFeatureIsOne)
{
    EXPECT_EQ(parse(FeatureKind::Integer, writable(), "127.0.0.1", Representation::Ipv4Address),
              value(std::int64_t{0x7F000001}));
    EXPECT_EQ(
        parse(FeatureKind::Integer, writable(), "02:54:45:00:00:0b", Representation::MacAddress),
        value(std::int64_t{0x02544500000B}));
    EXPECT_EQ(parse(FeatureKind::Integer, writable(), "0x7F000001", Representation::Ipv4Address),
              value(std::int64_t{0x7F000001}));
}

TEST(ParseValue, TakesNumbersWithinTheirLimits)
{
    const FeatureState state = writable(FloatLimits{.minimum = 0.5, .maximum = 100});
    EXPECT_EQ(parse(FeatureKind::Float, state, " 2.5 "), value(2.5));
    EXPECT_EQ(parse(FeatureKind::Float, state, "1e1"), value(10.0));
    EXPECT_EQ(parse(FeatureKind::Float, state, "100.5"),
              refusal("100.5 is above the maximum of 100."));
    EXPECT_EQ(parse(FeatureKind::Float, state, "0.25"),
              refusal("0.25 is below the minimum of 0.5."));
    EXPECT_EQ(parse(FeatureKind::Float, state, "fast"), refusal("\"fast\" is not a number."));
    EXPECT_EQ(parse(FeatureKind::Float, state, "nan"), refusal("\"nan\" is not a number."));
}

TEST(ParseValue, TakesEntriesThatAreOffered)
{
    FeatureState state = writable();
    state.choices = {"Mono8", "Mono10"};
    EXPECT_EQ(parse(FeatureKind::Enumeration, state, "Mono10"), value(std::string("Mono10")));
    EXPECT_EQ(parse(FeatureKind::Enumeration, state, "Mono12"),
              refusal("\"Mono12\" is not one of the choices."));
}

TEST(ParseValue, TakesTrueAndFalse)
{
    EXPECT_EQ(parse(FeatureKind::Boolean, writable(), "true"), value(true));
    EXPECT_EQ(parse(FeatureKind::Boolean, writable(), "0"), value(false));
    EXPECT_EQ(parse(FeatureKind::Boolean, writable(), "maybe"),
              refusal("\"maybe\" is neither true nor false."));
}

TEST(ParseValue, TakesTextsAsTheyAreUpToTheirLength)
{
    const FeatureState state = writable(TextLimits{.maximumLength = 8});
    EXPECT_EQ(parse(FeatureKind::String, state, " left "), value(std::string(" left ")));
    EXPECT_EQ(parse(FeatureKind::String, state, "123456789"),
              refusal("The text has 9 bytes; there is room for 8."));
}

TEST(ParseValue, TakesAnythingForACommand)
{
    FeatureState state;
    state.access = AccessMode::WriteOnly;
    EXPECT_EQ(parse(FeatureKind::Command, state, ""), value(ExecuteCommand()));
}

TEST(ParseValue, RefusesWhatCannotBeChanged)
{
    FeatureState state;
    state.access = AccessMode::ReadOnly;
    EXPECT_EQ(parse(FeatureKind::Integer, state, "1"),
              refusal("This cannot be changed now: integer, read only."));
    state.access = AccessMode::NotAvailable;
    EXPECT_EQ(parse(FeatureKind::Command, state, ""),
              refusal("This cannot be used now: command, not available."));
    EXPECT_EQ(parse(FeatureKind::Other, writable(), "1"),
              refusal("This cannot be changed now: other."));
}

TEST(ShownValue, IsTheValueWithItsUnit)
{
    FeatureInfo exposure = info(FeatureKind::Integer);
    exposure.unit = "us";
    EXPECT_EQ(shownValue(exposure, with(std::int64_t{1000})), "1000 us");
    EXPECT_EQ(valueText(exposure, with(std::int64_t{1000})), "1000");
    EXPECT_EQ(shownValue(info(FeatureKind::Float), with(0.1)), "0.1");
    EXPECT_EQ(shownValue(info(FeatureKind::Boolean), with(true)), "true");
    EXPECT_EQ(shownValue(info(FeatureKind::String), with(std::string("left"))), "left");
}

TEST(ShownValue, IsInTheFeaturesRepresentation)
{
    const auto shown = [](Representation representation, std::int64_t number) {
        return shownValue(info(FeatureKind::Integer, representation), with(number));
    };
    EXPECT_EQ(shown(Representation::HexNumber, 0x1AB), "0x1AB");
    EXPECT_EQ(shown(Representation::HexNumber, -1), "0xFFFFFFFFFFFFFFFF");
    EXPECT_EQ(shown(Representation::Ipv4Address, 0x7F00000B), "127.0.0.11");
    EXPECT_EQ(shown(Representation::MacAddress, 0x02544500000B), "02:54:45:00:00:0b");
}

TEST(ShownValue, SaysWhyThereIsNone)
{
    FeatureState state;
    state.access = AccessMode::NotAvailable;
    EXPECT_EQ(shownValue(info(FeatureKind::Integer), state), "not available");
    state.error = "TIMEOUT";
    EXPECT_EQ(shownValue(info(FeatureKind::Integer), state), "TIMEOUT");
    EXPECT_EQ(shownValue(info(FeatureKind::Command), writable()), "(command)");
}

TEST(LimitsText, NamesLimitsStepsAndUnit)
{
    FeatureInfo width = info(FeatureKind::Integer);
    width.unit = "px";
    EXPECT_EQ(limitsText(width, writable(IntegerLimits{16, 1024, 8})),
              "16 to 1024 px, in steps of 8");
    EXPECT_EQ(limitsText(info(FeatureKind::Integer), writable(IntegerLimits{1, 5, 1})), "1 to 5");
    EXPECT_EQ(limitsText(info(FeatureKind::Integer), writable(IntegerLimits())), "");
    EXPECT_EQ(limitsText(info(FeatureKind::Float), writable(FloatLimits{0.5, 2})), "0.5 to 2");
    EXPECT_EQ(limitsText(info(FeatureKind::Float), writable(FloatLimits())), "");
    EXPECT_EQ(limitsText(info(FeatureKind::String), writable(TextLimits{16})), "at most 16 bytes");
    EXPECT_EQ(limitsText(info(FeatureKind::Command), writable()), "");
}

TEST(AccessText, SaysWhatCanBeDoneWithAFeature)
{
    const auto text = [](FeatureKind kind, AccessMode access) {
        FeatureState state;
        state.access = access;
        return accessText(info(kind), state);
    };
    EXPECT_EQ(text(FeatureKind::Integer, AccessMode::ReadWrite), "integer");
    EXPECT_EQ(text(FeatureKind::Float, AccessMode::ReadOnly), "number, read only");
    EXPECT_EQ(text(FeatureKind::Enumeration, AccessMode::NotAvailable), "choice, not available");
    EXPECT_EQ(text(FeatureKind::String, AccessMode::WriteOnly), "text, write only");
    EXPECT_EQ(text(FeatureKind::Command, AccessMode::WriteOnly), "command");
    EXPECT_EQ(text(FeatureKind::Boolean, AccessMode::NotImplemented), "boolean, not available");
}

TEST(ChoicesOf, AreTheEntriesOrTheTwoTruthValues)
{
    FeatureState state = writable();
    state.choices = {"Mono8", "Mono10"};
    EXPECT_EQ(choicesOf(info(FeatureKind::Enumeration), state),
              (std::vector<std::string>{"Mono8", "Mono10"}));
    EXPECT_EQ(choicesOf(info(FeatureKind::Boolean), writable()),
              (std::vector<std::string>{"true", "false"}));
    EXPECT_TRUE(choicesOf(info(FeatureKind::Integer), writable()).empty());
}

} // namespace
} // namespace gige::ui
