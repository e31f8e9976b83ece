// Any text as a formula, in both arithmetics.
#include "Formula.h"

namespace
{

using namespace gige::genapi;

/// Small numbers of both types.
class SlotNumbers : public FormulaOperands
{
  public:
    Result<Number> operand(std::size_t slot) override
    {
        if (slot == 0) {
            return Number(std::int64_t{-3});
        }
        return slot == 1 ? Number(2.5) : Result<Number>(Status::NotAvailable);
    }
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string text(data, data + size);
    const Result<Formula> formula =
        Formula::compile(text, {{"A", 0}, {"B.Max", 1}, {"MISSING", 2}});
    if (formula) {
        SlotNumbers operands;
        (void)formula->evaluate(Arithmetic::Integer, operands);
        (void)formula->evaluate(Arithmetic::Float, operands);
    }
    return 0;
}
