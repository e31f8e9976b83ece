#include "FloatNode.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace gige::genapi
{

namespace
{

constexpr double kHighest = std::numeric_limits<double>::max();
constexpr double kStepTolerance = 1e-6; // of a step: decimal steps have no exact double

double limitOr(const std::optional<Number>& limit, double otherwise)
{
    return limit ? limit->toDouble() : otherwise;
}

bool isOnIncrement(double value, double minimum, const std::optional<Number>& increment)
{
    if (!increment || !(increment->toDouble() > 0.0)) {
        return true;
    }
    const double steps = (value - minimum) / increment->toDouble();
    return std::abs(steps - std::round(steps)) <= kStepTolerance * std::max(1.0, std::abs(steps));
}

} // namespace

FloatNode::FloatNode(NodeMapState& state, std::string name)
    : NumberNode(state, NodeKind::Float, std::move(name))
{
}

Result<double> FloatNode::value(ReadFrom readFrom)
{
    return valueFor(readFrom).transform(&Number::toDouble);
}

Status FloatNode::setValue(double value)
{
    return writeFromHost(value);
}

Result<double> FloatNode::minimum()
{
    return rangeForHost({.minimum = true}).transform([](const NumberRange& range) {
        return limitOr(range.minimum, -kHighest);
    });
}

Result<double> FloatNode::maximum()
{
    return rangeForHost({.maximum = true}).transform([](const NumberRange& range) {
        return limitOr(range.maximum, kHighest);
    });
}

Result<std::optional<double>> FloatNode::increment()
{
    return rangeForHost({.increment = true}).transform([](const NumberRange& range) {
        return range.increment ? std::optional(range.increment->toDouble()) : std::nullopt;
    });
}

Status FloatNode::writeNumber(Evaluation& evaluation, const Number& value)
{
    const Result<NumberRange> range = this->range(evaluation, kAllLimits);
    if (!range) {
        return range.status();
    }
    const double number = value.toDouble();
    const double minimum = limitOr(range->minimum, -kHighest);
    const bool isWithin = number >= minimum && number <= limitOr(range->maximum, kHighest);
    if (!isWithin || !isOnIncrement(number, minimum, range->increment)) {
        return Status::OutOfRange;
    }
    return source().write(evaluation, value);
}

} // namespace gige::genapi
