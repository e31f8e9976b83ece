#include "FormulaSources.h"

#include <utility>

namespace gige::genapi
{

FormulaSource::FormulaSource(FormulaScope scope, Formula formula, Arithmetic arithmetic)
    : mScope(std::move(scope)), mFormula(std::move(formula)), mArithmetic(arithmetic)
{
}

// Whether its operands can be read shows when they are: asking all of them first would double the
// traffic.
Result<AccessMode> FormulaSource::access(Evaluation& /*evaluation*/)
{
    return AccessMode::ReadOnly;
}

Result<Number> FormulaSource::read(Evaluation& evaluation)
{
    return mScope.evaluate(mFormula, mArithmetic, evaluation);
}

Status FormulaSource::write(Evaluation& /*evaluation*/, const Number& /*value*/)
{
    return Status::ReadOnly;
}

Result<NumberRange> FormulaSource::range(Evaluation& /*evaluation*/, const LimitChoice& /*wanted*/)
{
    return NumberRange{};
}

ConverterSource::ConverterSource(Node& target, ConverterFormulas formulas, Arithmetic arithmetic,
                                 Slope slope)
    : mTarget(target), mFormulas(std::move(formulas)), mArithmetic(arithmetic), mSlope(slope)
{
}

Result<AccessMode> ConverterSource::access(Evaluation& evaluation)
{
    return mTarget.access(evaluation);
}

Result<Number> ConverterSource::fromTarget(Evaluation& evaluation, const Number& value) const
{
    return mFormulas.scope.evaluate(mFormulas.from, mArithmetic, evaluation, value);
}

Result<Number> ConverterSource::read(Evaluation& evaluation)
{
    return mTarget.read(evaluation).andThen([&](const Number& value) {
        return fromTarget(evaluation, value);
    });
}

Status ConverterSource::write(Evaluation& evaluation, const Number& value)
{
    const Result<Number> converted =
        mFormulas.scope.evaluate(mFormulas.to, mArithmetic, evaluation, value);
    return converted.andThen(
        [&](const Number& number) { return mTarget.write(evaluation, number); });
}

// A limit that cannot be converted, such as 0 ticks to a rate, does not limit.
Result<std::optional<Number>>
ConverterSource::limitFromTarget(Evaluation& evaluation, const std::optional<Number>& limit) const
{
    if (!limit) {
        return limit;
    }
    const Result<Number> converted = fromTarget(evaluation, *limit);
    if (converted.status() == Status::ArithmeticError) {
        return std::optional<Number>();
    }
    return converted.transform([](const Number& number) { return std::optional(number); });
}

Result<NumberRange> ConverterSource::convertedRange(Evaluation& evaluation,
                                                    const LimitChoice& ends) const
{
    const Result<NumberRange> target = mTarget.range(evaluation, ends);
    if (!target) {
        return target;
    }
    const auto lower = limitFromTarget(evaluation, ends.minimum ? target->minimum : std::nullopt);
    const auto upper = limitFromTarget(evaluation, ends.maximum ? target->maximum : std::nullopt);
    if (!lower || !upper) {
        return lower ? upper.status() : lower.status();
    }
    return NumberRange{*lower, *upper, {}};
}

// A decreasing slope swaps the limits. Where it is not told, only both limits together tell it.
Result<NumberRange> ConverterSource::range(Evaluation& evaluation, const LimitChoice& wanted)
{
    if (mSlope == Slope::Varying || (!wanted.minimum && !wanted.maximum)) {
        return NumberRange{};
    }
    LimitChoice ends{.minimum = wanted.minimum, .maximum = wanted.maximum};
    if (mSlope == Slope::Automatic) {
        ends = {.minimum = true, .maximum = true};
    } else if (mSlope == Slope::Decreasing) {
        std::swap(ends.minimum, ends.maximum);
    }
    Result<NumberRange> range = convertedRange(evaluation, ends);
    if (!range) {
        return range;
    }
    const bool isTold = mSlope != Slope::Automatic;
    if (!isTold && (!range->minimum || !range->maximum)) {
        return NumberRange{};
    }
    if (isTold ? mSlope == Slope::Decreasing : isLess(*range->maximum, *range->minimum)) {
        std::swap(range->minimum, range->maximum);
    }
    return range;
}

} // namespace gige::genapi
