#include "FormulaSources.h"

#include <utility>

namespace gige::genapi
{

FormulaSource::FormulaSource(FormulaScope scope, Formula formula, Arithmetic arithmetic)
    : mScope(std::move(scope)), mFormula(std::move(formula)), mArithmetic(arithmetic)
{
}

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

Result<NumberRange> FormulaSource::range(Evaluation& /*evaluation*/)
{
    return NumberRange{};
}

ConverterSource::ConverterSource(Node& target, ConverterFormulas formulas, Arithmetic arithmetic,
                                 bool isMonotonic)
    : mTarget(target),
      mFormulas(std::move(formulas)),
      mArithmetic(arithmetic),
      mIsMonotonic(isMonotonic)
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
    const Result<Number> value = mTarget.read(evaluation);
    return value ? fromTarget(evaluation, *value) : value.status();
}

Status ConverterSource::write(Evaluation& evaluation, const Number& value)
{
    const Result<Number> converted =
        mFormulas.scope.evaluate(mFormulas.to, mArithmetic, evaluation, value);
    return converted ? mTarget.write(evaluation, *converted) : converted.status();
}

// A decreasing slope swaps the limits. A limit that cannot be converted, such as 0 ticks to a rate,
// does not limit.
Result<NumberRange> ConverterSource::range(Evaluation& evaluation)
{
    const Result<NumberRange> target = mIsMonotonic ? mTarget.range(evaluation) : NumberRange{};
    if (!target || !target->minimum || !target->maximum) {
        return target ? NumberRange{} : target;
    }
    const Result<Number> first = fromTarget(evaluation, *target->minimum);
    const Result<Number> second = fromTarget(evaluation, *target->maximum);
    for (const Status status : {first.status(), second.status()}) {
        if (status != Status::Ok) {
            return status == Status::ArithmeticError ? Result(NumberRange{}) : status;
        }
    }
    const bool isSwapped = isLess(*second, *first);
    return NumberRange{isSwapped ? *second : *first, isSwapped ? *first : *second, {}};
}

} // namespace gige::genapi
