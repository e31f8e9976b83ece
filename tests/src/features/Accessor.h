/**
 * Tests of exports that reach one or a few features, as rows of a table: what the camera is like,
 * what is called, and what must come back, be called and be logged, each spelled out.
 */
#ifndef TELVO_TESTS_SRC_FEATURES_ACCESSOR_H
#define TELVO_TESTS_SRC_FEATURES_ACCESSOR_H

#include "GrabberTest.h"

#include <cstdint>
#include <functional>
#include <initializer_list>
#include <iosfwd>
#include <optional>
#include <string>
#include <vector>

/// Out variables hold this before every call.
constexpr std::uint8_t kUntouched = 77;

/// What an export gave back: its result, then its out variables in order (32-bit ones as signed).
struct Answer {
    std::int32_t result = 0;
    std::vector<double> outs;
    bool operator==(const Answer&) const = default;
};
std::ostream& operator<<(std::ostream& stream, const Answer& answer);

// Calls of kCamera's exports, by shape.
Answer get(std::int32_t (*function)(std::uint32_t*, std::int32_t));
Answer get(std::int32_t (*function)(std::uint8_t*, std::int32_t));
Answer get(std::int32_t (*function)(std::uint32_t*, std::uint32_t*, std::int32_t));
Answer get(std::int32_t (*function)(std::uint32_t*, std::uint32_t*, std::uint32_t*, std::int32_t));
Answer get(std::int32_t (*function)(double*, double*, double*, std::int32_t));
Answer set(std::int32_t (*function)(std::uint32_t, std::int32_t), std::int32_t value);
Answer set(std::int32_t (*function)(std::uint8_t, std::int32_t), bool value);
/// In/out: the variable holds `value` before.
Answer set(std::int32_t (*function)(std::uint32_t*, std::int32_t), std::int32_t value);

struct Row {
    std::string behaviour; // the test's name
    std::function<Answer()> call;
    Answer answer;
    Texts calls; // with the look-ups and the log lines
    std::function<void(StandIn&)> beforeBinding = nullptr;
    std::function<void(StandIn&)> script = nullptr; // after initialise
};
std::ostream& operator<<(std::ostream& stream, const Row& row);
using Rows = std::vector<Row>;

Rows join(std::initializer_list<Rows> parts);

enum class Reach { Bound, LookedUp };

/// An export that makes one call to one feature: success, refusal by the camera, missing feature
/// and feature of another type.
struct Plain {
    std::string name;
    std::function<Answer()> call;
    Reach reach;
    std::string feature;
    std::string access;    // "GainRaw.SetValue 3"
    std::string done = ""; // log lines; "": none
    std::string failed = "";
    std::vector<double> outs = {};                                   // after success
    std::optional<std::vector<double>> outsOnFailure = std::nullopt; // else untouched
    std::optional<std::string> missing = std::nullopt;               // line if not as `failed`
    bool asksAvailability = false;                                   // then -1 while unavailable
};
Rows rowsOf(const Plain& plain);

class AccessorTest : public GrabberTest, public ::testing::WithParamInterface<Row>
{
};

std::string behaviourOf(const ::testing::TestParamInfo<Row>& info);

/// The rows become tests "Subject/AccessorTest.Behaves/…".
// NOLINTNEXTLINE(cppcoreguidelines-macro-usage): GoogleTest needs a macro
#define TELVO_ACCESSORS(subject, ...)                                                              \
    INSTANTIATE_TEST_SUITE_P(subject, AccessorTest, ::testing::ValuesIn(__VA_ARGS__), behaviourOf)

#endif
