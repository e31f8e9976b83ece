#include "Number.h"

#include <cmath>

namespace gige::genapi
{

namespace
{

// The first double that does not fit; the highest integer itself has no double.
constexpr double kTwoToThe63 = 9223372036854775808.0;

Result<std::int64_t> checked(double value)
{
    // Negated, so that what is not a number fails, too.
    if (!(value >= -kTwoToThe63 && value < kTwoToThe63)) {
        return Status::ArithmeticError;
    }
    return static_cast<std::int64_t>(value);
}

} // namespace

double Number::toDouble() const
{
    return isInteger() ? static_cast<double>(std::get<std::int64_t>(mValue))
                       : std::get<double>(mValue);
}

Result<std::int64_t> Number::truncated() const
{
    return isInteger() ? std::get<std::int64_t>(mValue) : checked(std::get<double>(mValue));
}

Result<std::int64_t> Number::rounded() const
{
    return isInteger() ? std::get<std::int64_t>(mValue)
                       : checked(std::round(std::get<double>(mValue)));
}

bool isLess(const Number& left, const Number& right)
{
    if (left.isInteger() && right.isInteger()) {
        return *left.truncated() < *right.truncated();
    }
    return left.toDouble() < right.toDouble();
}

bool isEqual(const Number& left, const Number& right)
{
    if (left.isInteger() && right.isInteger()) {
        return *left.truncated() == *right.truncated();
    }
    return left.toDouble() == right.toDouble();
}

} // namespace gige::genapi
