#ifndef TELVO_GIGE_GENAPI_FORMULAMATH_H
#define TELVO_GIGE_GENAPI_FORMULAMATH_H

#include "Number.h"

#include <cstddef>
#include <span>
#include <string_view>

namespace gige::genapi
{

/// How a formula computes.
enum class Arithmetic : std::uint8_t {
    Integer, ///< all in 64 bits with wrap-around; `/` and functions truncate toward zero
    Float,   ///< `+ - *` of integers stay exact; `/`, `**` and functions compute in double
};

enum class BinaryOperator : std::uint8_t {
    BitOr,
    BitXor,
    BitAnd,
    Equal,
    NotEqual,
    Less,
    Greater,
    LessOrEqual,
    GreaterOrEqual,
    ShiftLeft,
    ShiftRight,
    Add,
    Subtract,
    Multiply,
    Divide,
    Modulo,
    Power,
};

enum class UnaryOperator : std::uint8_t { Negate, Complement };

/// ArithmeticError: division by zero, or bit operators on what is no 64-bit integer.
Result<Number> apply(BinaryOperator operation, const Number& left, const Number& right,
                     Arithmetic arithmetic);
Result<Number> apply(UnaryOperator operation, const Number& value);

/// A function of the formula language.
struct FormulaFunction {
    std::string_view name; // upper case
    std::size_t leastArguments;
    std::size_t mostArguments; // at most 2
    Result<Number> (*compute)(std::span<const Number> arguments);
};

/// @param name in any case
/// @return null when there is no such function
const FormulaFunction* findFunction(std::string_view name);

/// "E" and "PI". @return null when there is no such constant
const double* findConstant(std::string_view name);

/// A number as the arithmetic takes it: integer arithmetic truncates toward zero.
Result<Number> convert(const Number& value, Arithmetic arithmetic);

} // namespace gige::genapi

#endif
