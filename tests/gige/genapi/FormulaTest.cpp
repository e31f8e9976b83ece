#include "Formula.h"

#include "GenApiLimits.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <map>

namespace gige::genapi
{
namespace
{

/// Operands by slot; a slot that is missing answers NotAvailable.
class TableOperands : public FormulaOperands
{
  public:
    explicit TableOperands(std::map<std::size_t, Number> values = {}) : mValues(std::move(values))
    {
    }

    Result<Number> operand(std::size_t slot) override
    {
        ++mFetches;
        const auto found = mValues.find(slot);
        return found == mValues.end() ? Result<Number>(Status::NotAvailable) : found->second;
    }

    int fetches() const { return mFetches; }

  private:
    std::map<std::size_t, Number> mValues;
    int mFetches = 0;
};

Result<Number> evaluate(const std::string& text, Arithmetic arithmetic)
{
    const Result<Formula> formula = Formula::compile(text, {});
    if (!formula) {
        return formula.status();
    }
    TableOperands none;
    return formula->evaluate(arithmetic, none);
}

double asFloat(const std::string& text)
{
    const Result<Number> result = evaluate(text, Arithmetic::Float);
    EXPECT_EQ(result.status(), Status::Ok) << text;
    return result ? result->toDouble() : std::nan("");
}

std::int64_t asInteger(const std::string& text)
{
    const Result<Number> result = evaluate(text, Arithmetic::Integer);
    EXPECT_EQ(result.status(), Status::Ok) << text;
    EXPECT_TRUE(!result || result->isInteger()) << text;
    return result ? *result->truncated() : -999;
}

Status floatStatus(const std::string& text)
{
    return evaluate(text, Arithmetic::Float).status();
}

std::string repeated(const std::string& text, std::size_t count)
{
    std::string result;
    for (std::size_t i = 0; i < count; ++i) {
        result += text;
    }
    return result;
}

struct Sample {
    const char* text;
    double value;
};

void PrintTo(const Sample& sample, std::ostream* out)
{
    *out << sample.text;
}

class FormulaInBothArithmetics : public testing::TestWithParam<Sample>
{
};

TEST_P(FormulaInBothArithmetics, HasTheSameValue)
{
    EXPECT_EQ(asFloat(GetParam().text), GetParam().value);
    EXPECT_EQ(static_cast<double>(asInteger(GetParam().text)), GetParam().value);
}

INSTANTIATE_TEST_SUITE_P(
    Formula, FormulaInBothArithmetics,
    testing::Values(
        Sample{"10-4-3", 3}, Sample{"2**3**2", 512}, Sample{"-2**2", 4}, Sample{"2*3**2", 18},
        Sample{"1<<2+1", 8}, Sample{"1?2:0?3:4", 2}, Sample{"0?2:0?3:4", 4}, Sample{"0?2:1?3:4", 3},
        Sample{"4|1&2", 4}, Sample{"6^3&1", 7}, Sample{"1||0&&0", 1}, Sample{"~0", -1},
        Sample{"-8>>1", -4}, Sample{"7.5%2", 1}, Sample{"LG(1000)", 3}, Sample{"3 & 2 = 2", 1},
        Sample{"2=2", 1}, Sample{"2==2", 1}, Sample{"2<>2", 0}, Sample{"2!=3", 1}, Sample{"1<2", 1},
        Sample{"2<=1", 0}, Sample{"2>=2", 1}, Sample{"3>2>1", 0}, Sample{"5&&3", 1},
        Sample{"0||7", 1}, Sample{"0||0", 0}, Sample{"-7%3", -1}, Sample{"+5", 5}, Sample{"--5", 5},
        Sample{"- - + ~ 4", -5}, Sample{"0x10+1", 17}, Sample{"0xFFFFFFFFFFFFFFFF", -1},
        Sample{"(1+2)*3", 9}, Sample{"010", 10}, Sample{"2*3+4*5", 26}, Sample{"12/3/2", 2},
        Sample{"1<<64", 1}, Sample{"1<<-1>>63", -1}, Sample{"SGN(-7)", -1}, Sample{"sgn(0)", 0},
        Sample{"Sgn(4)", 1}, Sample{"NEG(3)", -3}, Sample{"ABS(-4)", 4}, Sample{"SQRT(16)", 4},
        Sample{"EXP(0)", 1}, Sample{"LN(1)", 0}, Sample{"SIN(0)", 0}, Sample{"COS(0)", 1},
        Sample{"TAN(0)", 0}, Sample{"ASIN(0)", 0}, Sample{"ACOS(1)", 0}, Sample{"ATAN(0)", 0},
        Sample{"TRUNC(-8)", -8}, Sample{"FLOOR(8)", 8}, Sample{"CEIL(8)", 8},
        Sample{" 1\t+\n2 ", 3}, Sample{"2**-1*0", 0}, Sample{"2**0", 1}));

TEST(FormulaInFloat, DividesInDouble)
{
    EXPECT_EQ(asFloat("7/2"), 3.5);
    EXPECT_EQ(asFloat("7/2*2"), 7.0);
    EXPECT_EQ(asFloat("2.5*4"), 10.0);
    EXPECT_EQ(asFloat("1e3+.5"), 1000.5);
    EXPECT_EQ(asFloat("2E-1"), 0.2);
    EXPECT_EQ(asFloat("2**0.5"), std::sqrt(2.0));
}

TEST(FormulaInFloat, ComputesFunctions)
{
    EXPECT_DOUBLE_EQ(asFloat("ROUND(3.14159,2)"), 3.14);
    EXPECT_EQ(asFloat("ROUND(2.5)"), 3.0);
    EXPECT_EQ(asFloat("ROUND(-2.5)"), -3.0);
    EXPECT_EQ(asFloat("TRUNC(-2.7)"), -2.0);
    EXPECT_EQ(asFloat("FLOOR(-2.1)"), -3.0);
    EXPECT_EQ(asFloat("CEIL(2.1)"), 3.0);
    EXPECT_EQ(asFloat("SGN(-0.5)"), -1.0);
    EXPECT_EQ(asFloat("NEG(0.5)"), -0.5);
    EXPECT_EQ(asFloat("ABS(-0.5)"), 0.5);
    EXPECT_DOUBLE_EQ(asFloat("EXP(1)"), 2.718281828459045);
    EXPECT_DOUBLE_EQ(asFloat("LN(E)"), 1.0);
    EXPECT_DOUBLE_EQ(asFloat("sin(PI/2)"), 1.0);
    EXPECT_DOUBLE_EQ(asFloat("4*ATAN(1)"), 3.141592653589793);
    EXPECT_DOUBLE_EQ(asFloat("COS(PI())"), -1.0);
    EXPECT_DOUBLE_EQ(asFloat("E()"), 2.718281828459045);
}

TEST(FormulaInFloat, KeepsSumsAndProductsOfIntegersExact)
{
    const Result<Number> sum = evaluate("0x20000000000000 + 1", Arithmetic::Float);
    ASSERT_TRUE(sum);
    EXPECT_EQ(*sum, Number(std::int64_t{9007199254740993}));
    EXPECT_EQ(asFloat("9007199254740993 > 9007199254740992"), 1.0);
    EXPECT_EQ(asFloat("9007199254740993 = 9007199254740992"), 0.0);
}

TEST(FormulaInInteger, DividesTowardZero)
{
    EXPECT_EQ(asInteger("7/2*2"), 6);
    EXPECT_EQ(asInteger("-7/2"), -3);
    EXPECT_EQ(asInteger("-7%3"), -1);
}

TEST(FormulaInInteger, TruncatesLiteralsConstantsAndFunctions)
{
    EXPECT_EQ(asInteger("2.5*4"), 8);
    EXPECT_EQ(asInteger("PI"), 3);
    EXPECT_EQ(asInteger("SQRT(8)"), 2);
    EXPECT_EQ(asInteger("ABS(-3)"), 3);
}

TEST(FormulaInInteger, WrapsAround)
{
    constexpr std::int64_t kLowest = std::numeric_limits<std::int64_t>::min();
    EXPECT_EQ(asInteger("0x7FFFFFFFFFFFFFFF + 1"), kLowest);
    EXPECT_EQ(asInteger("0x8000000000000000 - 1"), std::numeric_limits<std::int64_t>::max());
    EXPECT_EQ(asInteger("0x8000000000000000 / -1"), kLowest);
    EXPECT_EQ(asInteger("0x8000000000000000 % -1"), 0);
    EXPECT_EQ(asInteger("-0x8000000000000000"), kLowest);
    EXPECT_EQ(asInteger("0x4000000000000000 * 4"), 0);
    EXPECT_EQ(asInteger("2**64"), 0);
    EXPECT_EQ(asInteger("3**40"), std::int64_t{-6289078614652622815});
}

TEST(FormulaInInteger, TakesNegativePowersTowardZero)
{
    EXPECT_EQ(asInteger("2**-1"), 0);
    EXPECT_EQ(asInteger("1**-5"), 1);
    EXPECT_EQ(asInteger("(-1)**-3"), -1);
    EXPECT_EQ(evaluate("0**-1", Arithmetic::Integer).status(), Status::ArithmeticError);
}

TEST(Formula, ReportsArithmeticErrors)
{
    for (const Arithmetic arithmetic : {Arithmetic::Integer, Arithmetic::Float}) {
        EXPECT_EQ(evaluate("1/0", arithmetic).status(), Status::ArithmeticError);
        EXPECT_EQ(evaluate("1%0", arithmetic).status(), Status::ArithmeticError);
        EXPECT_EQ(evaluate("SQRT(-1)", arithmetic).status(), Status::ArithmeticError);
        EXPECT_EQ(evaluate("LN(0)", arithmetic).status(), Status::ArithmeticError);
        EXPECT_EQ(evaluate("~1e300", arithmetic).status(), Status::ArithmeticError);
        EXPECT_EQ(evaluate("1e300 & 1", arithmetic).status(), Status::ArithmeticError);
    }
    EXPECT_EQ(floatStatus("1e300*1e300"), Status::ArithmeticError);
    EXPECT_EQ(evaluate("1e300", Arithmetic::Integer).status(), Status::ArithmeticError);
}

TEST(Formula, LeavesOutWhatItNeedNotCompute)
{
    EXPECT_EQ(asInteger("0 && 1/0"), 0);
    EXPECT_EQ(asInteger("1 || 1/0"), 1);
    EXPECT_EQ(asInteger("1 ? 5 : 1/0"), 5);
    EXPECT_EQ(asInteger("0 ? 1/0 : 6"), 6);
    EXPECT_EQ(asInteger("1 ? 1 ? 2 : 3 : 4"), 2);
}

TEST(Formula, ReadsItsOperandsByDottedName)
{
    const Result<Formula> formula =
        Formula::compile("W * Width.Max + w_1", {{"W", 0}, {"Width.Max", 1}, {"w_1", 2}});
    ASSERT_TRUE(formula);
    TableOperands operands({{0, std::int64_t{3}}, {1, std::int64_t{10}}, {2, 0.5}});
    EXPECT_EQ(*formula->evaluate(Arithmetic::Float, operands), Number(30.5));
    EXPECT_EQ(*formula->evaluate(Arithmetic::Integer, operands), Number(std::int64_t{30}));
}

TEST(Formula, FetchesOnlyTheOperandsItNeeds)
{
    const Result<Formula> formula = Formula::compile("A ? B : C", {{"A", 0}, {"B", 1}, {"C", 2}});
    ASSERT_TRUE(formula);
    TableOperands operands({{0, std::int64_t{1}}, {1, std::int64_t{8}}});
    EXPECT_EQ(*formula->evaluate(Arithmetic::Integer, operands), Number(std::int64_t{8}));
    EXPECT_EQ(operands.fetches(), 2);
    TableOperands missing;
    EXPECT_EQ(formula->evaluate(Arithmetic::Integer, missing).status(), Status::NotAvailable);
}

TEST(Formula, LetsADeclaredNameWinOverAConstantOrFunction)
{
    const Result<Formula> formula = Formula::compile("E + SIN", {{"E", 0}, {"SIN", 1}});
    ASSERT_TRUE(formula);
    TableOperands operands({{0, std::int64_t{40}}, {1, std::int64_t{2}}});
    EXPECT_EQ(*formula->evaluate(Arithmetic::Float, operands), Number(std::int64_t{42}));
}

TEST(Formula, RefusesWhatIsNotInTheLanguage)
{
    for (const char* const text : {"",
                                   " ",
                                   "1+",
                                   "*1",
                                   "(1",
                                   "1)",
                                   "1 2",
                                   "1?2",
                                   "1?2:",
                                   "?1:2",
                                   "UNKNOWN",
                                   "SIN",
                                   "SIN()",
                                   "SIN(1,2)",
                                   "ROUND(1,2,3)",
                                   "ROUND(1,)",
                                   "!1",
                                   "1 = = 2",
                                   "a.b",
                                   "0x",
                                   "0xG",
                                   "1..2",
                                   "@",
                                   "\"1\"",
                                   "1;2",
                                   "FOO(1)",
                                   "()",
                                   "0x1FFFFFFFFFFFFFFFF",
                                   "1e999",
                                   "PI(1)",
                                   "PI("}) {
        EXPECT_EQ(floatStatus(text), Status::FormulaMalformed) << text;
    }
}

TEST(Formula, HasALengthLimit)
{
    EXPECT_EQ(asFloat(repeated(" ", kFormulaLengthLimit - 1) + "1"), 1.0);
    EXPECT_EQ(floatStatus(repeated(" ", kFormulaLengthLimit) + "1"), Status::FormulaTooLong);
}

TEST(Formula, TakesLongChainsAtOneLevel)
{
    EXPECT_EQ(asFloat("1" + repeated("+1", 4000)), 4001.0);
    EXPECT_EQ(asFloat(repeated("0?1:", 2000) + "7"), 7.0);
    EXPECT_EQ(asFloat("0" + repeated("||0", 2000) + "||3"), 1.0);
}

TEST(Formula, HasANestingLimit)
{
    EXPECT_EQ(asFloat(repeated("(", 64) + "1" + repeated(")", 64)), 1.0);
    EXPECT_EQ(floatStatus(repeated("(", 65) + "1" + repeated(")", 65)), Status::FormulaTooDeep);
    EXPECT_EQ(asFloat(repeated("-", 64) + "1"), 1.0);
    EXPECT_EQ(floatStatus(repeated("-", 65) + "1"), Status::FormulaTooDeep);
    EXPECT_EQ(floatStatus("1" + repeated("**1", 65)), Status::FormulaTooDeep);
    EXPECT_EQ(floatStatus(repeated("1?", 65) + "1" + repeated(":1", 65)), Status::FormulaTooDeep);
    EXPECT_EQ(floatStatus(repeated("ABS(", 65) + "1" + repeated(")", 65)), Status::FormulaTooDeep);
}

TEST(Formula, NestedTenThousandDeepIsAnErrorNotAnOverflow)
{
    EXPECT_EQ(floatStatus(repeated("(", 10'000) + "1" + repeated(")", 10'000)),
              Status::FormulaTooLong);
    EXPECT_EQ(floatStatus(repeated("(", 4'000) + "1" + repeated(")", 4'000)),
              Status::FormulaTooDeep);
    EXPECT_EQ(floatStatus(repeated("~", 8'000) + "1"), Status::FormulaTooDeep);
}

} // namespace
} // namespace gige::genapi
