#ifndef TELVO_GIGE_GENAPI_NUMBER_H
#define TELVO_GIGE_GENAPI_NUMBER_H

#include "GenApiStatus.h"

#include <cstdint>
#include <variant>

namespace gige::genapi
{

/// An integer or a floating-point value. Integers stay exact: 64 bits do not fit a double.
class Number
{
  public:
    // Implicit: a number is either of the two.
    Number(std::int64_t value) : mValue(value) {}
    Number(double value) : mValue(value) {}

    bool isInteger() const { return std::holds_alternative<std::int64_t>(mValue); }
    bool isZero() const
    {
        return isInteger() ? std::get<0>(mValue) == 0 : std::get<1>(mValue) == 0;
    }

    double toDouble() const;
    /// Toward zero, as integer formulas take operands. ArithmeticError outside 64 bits.
    Result<std::int64_t> truncated() const;
    /// To nearest, halves away from zero: a floating-point value that goes into an integer feature.
    Result<std::int64_t> rounded() const;

    bool operator==(const Number&) const = default;

  private:
    std::variant<std::int64_t, double> mValue;
};

/// Exact for two integers, else as doubles.
bool isLess(const Number& left, const Number& right);
bool isEqual(const Number& left, const Number& right);

} // namespace gige::genapi

#endif
