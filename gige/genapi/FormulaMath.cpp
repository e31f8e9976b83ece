#include "FormulaMath.h"

#include <algorithm>
#include <cctype>
#include <cmath>
#include <limits>
#include <numbers>

namespace gige::genapi
{

namespace
{

constexpr std::uint64_t kShiftMask = 63; // shift counts use their low six bits

// Integer arithmetic wraps around as the formula language wants it; in C++ only unsigned does.
std::uint64_t bits(std::int64_t value)
{
    return static_cast<std::uint64_t>(value);
}

std::int64_t fromBits(std::uint64_t value)
{
    return static_cast<std::int64_t>(value);
}

Number truth(bool value)
{
    return std::int64_t{value ? 1 : 0};
}

// Wraps around: the smallest integer divided by -1 is itself.
Result<Number> divideIntegers(std::int64_t left, std::int64_t right)
{
    if (right == 0) {
        return Status::ArithmeticError;
    }
    return Number(right == -1 ? fromBits(0 - bits(left)) : left / right);
}

Result<Number> moduloIntegers(std::int64_t left, std::int64_t right)
{
    if (right == 0) {
        return Status::ArithmeticError;
    }
    return Number(right == -1 ? std::int64_t{0} : left % right);
}

// By squaring: an exponent comes from the device and may be any number.
// A negative exponent gives the fraction 1 / base^n, truncated toward zero.
Result<Number> powerIntegers(std::int64_t base, std::int64_t exponent)
{
    if (exponent < 0) {
        if (base == 0) {
            return Status::ArithmeticError;
        }
        if (base != 1 && base != -1) {
            return Number(std::int64_t{0});
        }
    }
    std::uint64_t result = 1;
    std::uint64_t square = bits(base);
    for (std::uint64_t left = bits(exponent); left != 0; left >>= 1U) {
        result *= (left & 1U) != 0 ? square : 1;
        square *= square;
    }
    return Number(fromBits(result));
}

Result<Number> divideDoubles(double left, double right)
{
    if (right == 0.0) {
        return Status::ArithmeticError;
    }
    return Number(left / right);
}

Number computeIntegers(BinaryOperator operation, std::int64_t left, std::int64_t right)
{
    switch (operation) {
    case BinaryOperator::BitOr:
        return fromBits(bits(left) | bits(right));
    case BinaryOperator::BitXor:
        return fromBits(bits(left) ^ bits(right));
    case BinaryOperator::BitAnd:
        return fromBits(bits(left) & bits(right));
    case BinaryOperator::ShiftLeft:
        return fromBits(bits(left) << (bits(right) & kShiftMask));
    case BinaryOperator::ShiftRight: // arithmetic
        return left >> (bits(right) & kShiftMask);
    case BinaryOperator::Add:
        return fromBits(bits(left) + bits(right));
    case BinaryOperator::Subtract:
        return fromBits(bits(left) - bits(right));
    default:
        return fromBits(bits(left) * bits(right));
    }
}

Number computeDoubles(BinaryOperator operation, double left, double right)
{
    switch (operation) {
    case BinaryOperator::Add:
        return left + right;
    case BinaryOperator::Subtract:
        return left - right;
    default:
        return left * right;
    }
}

bool compare(BinaryOperator operation, const Number& left, const Number& right)
{
    switch (operation) {
    case BinaryOperator::Equal:
        return isEqual(left, right);
    case BinaryOperator::NotEqual:
        return !isEqual(left, right);
    case BinaryOperator::Less:
        return isLess(left, right);
    case BinaryOperator::Greater:
        return isLess(right, left);
    case BinaryOperator::LessOrEqual:
        return isLess(left, right) || isEqual(left, right);
    default:
        return isLess(right, left) || isEqual(left, right);
    }
}

// Applies `compute` to both operands as integers, if they are some.
template <typename Compute>
Result<Number> withIntegers(const Number& left, const Number& right, Compute compute)
{
    const Result<std::int64_t> first = left.truncated();
    const Result<std::int64_t> second = right.truncated();
    if (!first || !second) {
        return Status::ArithmeticError;
    }
    return compute(*first, *second);
}

} // namespace

Result<Number> apply(BinaryOperator operation, const Number& left, const Number& right,
                     Arithmetic arithmetic)
{
    const auto integers = [operation](std::int64_t first, std::int64_t second) {
        return computeIntegers(operation, first, second);
    };
    switch (operation) {
    case BinaryOperator::Equal:
    case BinaryOperator::NotEqual:
    case BinaryOperator::Less:
    case BinaryOperator::Greater:
    case BinaryOperator::LessOrEqual:
    case BinaryOperator::GreaterOrEqual:
        return truth(compare(operation, left, right));
    case BinaryOperator::Divide:
        return arithmetic == Arithmetic::Integer ? withIntegers(left, right, divideIntegers)
                                                 : divideDoubles(left.toDouble(), right.toDouble());
    case BinaryOperator::Modulo:
        return withIntegers(left, right, moduloIntegers);
    case BinaryOperator::Power:
        return arithmetic == Arithmetic::Integer
                   ? withIntegers(left, right, powerIntegers)
                   : Result<Number>(std::pow(left.toDouble(), right.toDouble()));
    case BinaryOperator::Add:
    case BinaryOperator::Subtract:
    case BinaryOperator::Multiply:
        // Addresses and counters use all 64 bits, of which a double keeps 53.
        return left.isInteger() && right.isInteger()
                   ? withIntegers(left, right, integers)
                   : computeDoubles(operation, left.toDouble(), right.toDouble());
    default: // bit operators and shifts
        return withIntegers(left, right, integers);
    }
}

Result<Number> apply(UnaryOperator operation, const Number& value)
{
    // A complement, on the other hand, is one of bits.
    if (operation == UnaryOperator::Negate && !value.isInteger()) {
        return Number(-value.toDouble());
    }
    const Result<std::int64_t> integer = value.truncated();
    if (!integer) {
        return integer.status();
    }
    return Number(operation == UnaryOperator::Negate ? fromBits(0 - bits(*integer))
                                                     : fromBits(~bits(*integer)));
}

namespace
{

using Arguments = std::span<const Number>;

template <double (*Compute)(double)>
Result<Number> ofDouble(Arguments arguments)
{
    return Number(Compute(arguments[0].toDouble()));
}

// Functions that leave an integer as it is.
template <double (*Compute)(double)>
Result<Number> toWhole(Arguments arguments)
{
    return arguments[0].isInteger() ? arguments[0] : ofDouble<Compute>(arguments);
}

Result<Number> sign(Arguments arguments)
{
    const Number zero(std::int64_t{0});
    return Number(std::int64_t{isLess(zero, arguments[0])} -
                  std::int64_t{isLess(arguments[0], zero)});
}

Result<Number> negate(Arguments arguments)
{
    return apply(UnaryOperator::Negate, arguments[0]);
}

Result<Number> absolute(Arguments arguments)
{
    return isLess(arguments[0], std::int64_t{0}) ? negate(arguments) : arguments[0];
}

// ROUND(x) and ROUND(x, digits): halves away from zero.
Result<Number> roundTo(Arguments arguments)
{
    if (arguments.size() == 1) {
        return toWhole<std::round>(arguments);
    }
    // Too many digits make the scale infinite, and the result is refused as not finite.
    const double scale = std::pow(10.0, arguments[1].toDouble());
    return Number(std::round(arguments[0].toDouble() * scale) / scale);
}

constexpr FormulaFunction kFunctions[] = {
    {"SGN", 1, 1, sign},
    {"NEG", 1, 1, negate},
    {"ABS", 1, 1, absolute},
    {"SQRT", 1, 1, ofDouble<std::sqrt>},
    {"EXP", 1, 1, ofDouble<std::exp>},
    {"LN", 1, 1, ofDouble<std::log>},
    {"LG", 1, 1, ofDouble<std::log10>},
    {"SIN", 1, 1, ofDouble<std::sin>},
    {"COS", 1, 1, ofDouble<std::cos>},
    {"TAN", 1, 1, ofDouble<std::tan>},
    {"ASIN", 1, 1, ofDouble<std::asin>},
    {"ACOS", 1, 1, ofDouble<std::acos>},
    {"ATAN", 1, 1, ofDouble<std::atan>},
    {"TRUNC", 1, 1, toWhole<std::trunc>},
    {"FLOOR", 1, 1, toWhole<std::floor>},
    {"CEIL", 1, 1, toWhole<std::ceil>},
    {"ROUND", 1, 2, roundTo},
};

// Descriptions write "SQRT" and "sqrt", "PI" and "pi".
bool equalsIgnoringCase(std::string_view text, std::string_view upper)
{
    return std::ranges::equal(text, upper, {}, [](char letter) {
        return static_cast<char>(std::toupper(static_cast<unsigned char>(letter)));
    });
}

} // namespace

const FormulaFunction* findFunction(std::string_view name)
{
    const auto* const found = std::ranges::find_if(
        kFunctions, [name](const auto& entry) { return equalsIgnoringCase(name, entry.name); });
    return found == std::end(kFunctions) ? nullptr : found;
}

const double* findConstant(std::string_view name)
{
    if (equalsIgnoringCase(name, "E")) {
        return &std::numbers::e;
    }
    return equalsIgnoringCase(name, "PI") ? &std::numbers::pi : nullptr;
}

Result<Number> convert(const Number& value, Arithmetic arithmetic)
{
    if (arithmetic == Arithmetic::Float || value.isInteger()) {
        return value;
    }
    return value.truncated().transform([](std::int64_t integer) { return Number(integer); });
}

} // namespace gige::genapi
