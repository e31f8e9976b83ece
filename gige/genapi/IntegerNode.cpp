#include "IntegerNode.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace gige::genapi
{

namespace
{

constexpr std::int64_t kNoMinimum = std::numeric_limits<std::int64_t>::min();
constexpr std::int64_t kNoMaximum = std::numeric_limits<std::int64_t>::max();

// A limit beyond 64 bits does not limit.
std::int64_t limitOr(const std::optional<Number>& limit, std::int64_t otherwise)
{
    if (!limit) {
        return otherwise;
    }
    const Result<std::int64_t> integer = limit->rounded();
    return integer ? *integer : otherwise;
}

// Unsigned, since the distance of two 64-bit integers may take 64 bits.
bool isOnIncrement(std::int64_t value, std::int64_t minimum, std::int64_t increment)
{
    const std::uint64_t distance =
        static_cast<std::uint64_t>(value) - static_cast<std::uint64_t>(minimum);
    return distance % static_cast<std::uint64_t>(increment) == 0;
}

} // namespace

IntegerNode::IntegerNode(NodeMapState& state, std::string name)
    : NumberNode(state, NodeKind::Integer, std::move(name))
{
}

Result<std::int64_t> IntegerNode::value(ReadFrom readFrom)
{
    return valueFor(readFrom).andThen(&Number::rounded);
}

Status IntegerNode::setValue(std::int64_t value)
{
    return writeFromHost(value);
}

IntegerNode::Limits IntegerNode::limits(const NumberRange& range)
{
    return {limitOr(range.minimum, kNoMinimum), limitOr(range.maximum, kNoMaximum),
            std::max<std::int64_t>(limitOr(range.increment, std::int64_t{1}), 1)};
}

Result<IntegerNode::Limits> IntegerNode::limitsForHost(const LimitChoice& wanted)
{
    return rangeForHost(wanted).transform(limits);
}

Result<std::int64_t> IntegerNode::minimum()
{
    return limitsForHost({.minimum = true}).transform(&Limits::minimum);
}

Result<std::int64_t> IntegerNode::maximum()
{
    return limitsForHost({.maximum = true}).transform(&Limits::maximum);
}

Result<std::int64_t> IntegerNode::increment()
{
    return limitsForHost({.increment = true}).transform(&Limits::increment);
}

Status IntegerNode::writeNumber(Evaluation& evaluation, const Number& value)
{
    const Result<std::int64_t> integer = value.rounded();
    if (!integer) {
        return Status::OutOfRange;
    }
    const Result<NumberRange> range = this->range(evaluation, kAllLimits);
    if (!range) {
        return range.status();
    }
    const auto [minimum, maximum, increment] = limits(*range);
    if (*integer < minimum || *integer > maximum || !isOnIncrement(*integer, minimum, increment)) {
        return Status::OutOfRange;
    }
    return source().write(evaluation, *integer);
}

} // namespace gige::genapi
