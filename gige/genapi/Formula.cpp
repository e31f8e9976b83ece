#include "Formula.h"

#include <cmath>
#include <utility>

namespace gige::genapi
{

/// Runs one evaluation. The compiler guarantees that no instruction pops more than there is.
class Formula::Machine
{
  public:
    Machine(const Formula& formula, Arithmetic arithmetic, FormulaOperands& operands)
        : mFormula(formula), mArithmetic(arithmetic), mOperands(operands)
    {
    }

    Result<Number> run()
    {
        while (mNext < mFormula.mCode.size()) { // ends: jumps only lead forward
            const Instruction instruction = mFormula.mCode[mNext++];
            if (const Status status = execute(instruction); status != Status::Ok) {
                return status;
            }
        }
        const Number result = pop();
        // Only here: on the way, a formula may well compare with an infinity or divide by it.
        if (!std::isfinite(result.toDouble())) {
            return Status::ArithmeticError;
        }
        return result;
    }

  private:
    Status execute(Instruction instruction)
    {
        const std::size_t argument = instruction.argument;
        switch (instruction.operation) {
        case Operation::Constant:
            return push(mFormula.mConstants[argument]);
        case Operation::Operand:
            return push(mOperands.operand(argument));
        case Operation::Unary:
            return push(apply(static_cast<UnaryOperator>(argument), pop()));
        case Operation::Binary: {
            const Number right = pop();
            const Number left = pop();
            return push(apply(static_cast<BinaryOperator>(argument), left, right, mArithmetic));
        }
        case Operation::Call1:
            return call(*mFormula.mFunctions[argument], 1);
        case Operation::Call2:
            return call(*mFormula.mFunctions[argument], 2);
        case Operation::ToTruth:
            return push(Number(std::int64_t{!pop().isZero()}));
        default:
            return jump(instruction);
        }
    }

    Status jump(Instruction instruction)
    {
        const Operation operation = instruction.operation;
        const bool isZero = operation != Operation::Jump && pop().isZero();
        const bool isTaken =
            operation == Operation::Jump || isZero == (operation != Operation::OneOrNext);
        if (!isTaken) {
            return Status::Ok;
        }
        mNext = instruction.argument;
        const bool keepsTruth =
            operation == Operation::ZeroOrNext || operation == Operation::OneOrNext;
        return keepsTruth ? push(Number(std::int64_t{!isZero})) : Status::Ok;
    }

    Status call(const FormulaFunction& function, std::size_t count)
    {
        const std::size_t first = mStack.size() - count;
        const Result<Number> result = function.compute(std::span(mStack).subspan(first));
        mStack.erase(mStack.begin() + static_cast<std::ptrdiff_t>(first), mStack.end());
        return push(result);
    }

    // Every value enters as the arithmetic wants it: integer arithmetic sees only integers.
    Status push(const Result<Number>& value)
    {
        if (!value) {
            return value.status();
        }
        const Result<Number> converted = convert(*value, mArithmetic);
        if (converted) {
            mStack.push_back(*converted);
        }
        return converted.status();
    }

    Number pop()
    {
        const Number top = mStack.back();
        mStack.pop_back();
        return top;
    }

    const Formula& mFormula;
    Arithmetic mArithmetic;
    FormulaOperands& mOperands;
    std::vector<Number> mStack;
    std::size_t mNext = 0;
};

Result<Number> Formula::evaluate(Arithmetic arithmetic, FormulaOperands& operands) const
{
    return Machine(*this, arithmetic, operands).run();
}

} // namespace gige::genapi
