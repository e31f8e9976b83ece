#ifndef TELVO_GIGE_GENAPI_FORMULA_H
#define TELVO_GIGE_GENAPI_FORMULA_H

#include "FormulaMath.h"

#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace gige::genapi
{

/// The values of a formula's names, fetched only when the formula comes to need them.
class FormulaOperands
{
  public:
    FormulaOperands() = default;
    virtual ~FormulaOperands() = default;
    FormulaOperands(const FormulaOperands&) = delete;
    FormulaOperands& operator=(const FormulaOperands&) = delete;

    virtual Result<Number> operand(std::size_t slot) = 0;
};

/// Names that a formula may use, each with its slot. Case-sensitive.
using FormulaNames = std::map<std::string, std::size_t, std::less<>>;

/// A formula of the description, compiled once to code for a small stack machine: evaluation
/// neither recurses nor looks names up. `&&`, `||` and `?:` leave out what they need not compute.
class Formula
{
  public:
    /// @return FormulaTooLong, FormulaTooDeep, FormulaMalformed (syntax, or a name not in `names`)
    static Result<Formula> compile(std::string_view text, const FormulaNames& names);

    /// @return an integer in integer arithmetic; ArithmeticError when the result is not finite;
    /// else the first error of an operand or operation
    Result<Number> evaluate(Arithmetic arithmetic, FormulaOperands& operands) const;

    /// Number of instructions: an evaluation executes each at most once.
    std::size_t size() const { return mCode.size(); }

  private:
    friend class FormulaParser;

    enum class Operation : std::uint8_t {
        Constant,   // push mConstants[argument]
        Operand,    // push operand in slot `argument`
        Unary,      // argument: UnaryOperator
        Binary,     // argument: BinaryOperator
        Call1,      // one argument; mFunctions[argument]
        Call2,      // two arguments; mFunctions[argument]
        ToTruth,    // top becomes 0 or 1
        Jump,       // to instruction `argument`
        JumpIfZero, // pop; to `argument` if it was zero
        ZeroOrNext, // top zero: top becomes 0, jump to `argument`; else pop
        OneOrNext,  // top not zero: top becomes 1, jump to `argument`; else pop
    };

    struct Instruction {
        Operation operation;
        std::size_t argument;
    };

    class Machine;

    std::vector<Instruction> mCode;
    std::vector<Number> mConstants;
    std::vector<const FormulaFunction*> mFunctions;
};

} // namespace gige::genapi

#endif
