#ifndef TELVO_GIGE_GENAPI_INTEGERNODE_H
#define TELVO_GIGE_GENAPI_INTEGERNODE_H

#include "NumberNode.h"

namespace gige::genapi
{

/// A 64-bit integer: Integer, IntReg, MaskedIntReg, StructEntry, IntSwissKnife, IntConverter.
class IntegerNode : public NumberNode
{
  public:
    IntegerNode(NodeMapState& state, std::string name);

    /// @param readFrom  Device: past the cache, for registers that change by themselves
    Result<std::int64_t> value(ReadFrom readFrom = ReadFrom::Cache);
    /// OutOfRange outside the limits or off the increment; nothing is sent then.
    Status setValue(std::int64_t value);

    /// The lowest 64-bit integer when nothing limits the value.
    Result<std::int64_t> minimum();
    /// The highest 64-bit integer when nothing limits the value.
    Result<std::int64_t> maximum();
    /// At least 1: valid are the minimum plus multiples of it.
    Result<std::int64_t> increment();

  protected:
    Status writeNumber(Evaluation& evaluation, const Number& value) override;

  private:
    struct Limits {
        std::int64_t minimum;
        std::int64_t maximum;
        std::int64_t increment;
    };

    static Limits limits(const NumberRange& range);
    /// Counts for the wanted limits only.
    Result<Limits> limitsForHost(const LimitChoice& wanted);
};

} // namespace gige::genapi

#endif
