#ifndef TELVO_GIGE_GENAPI_FLOATNODE_H
#define TELVO_GIGE_GENAPI_FLOATNODE_H

#include "NumberNode.h"

namespace gige::genapi
{

/// A floating-point value: Float, FloatReg, SwissKnife, Converter.
class FloatNode : public NumberNode
{
  public:
    FloatNode(NodeMapState& state, std::string name);

    /// @param readFrom  Device: past the cache, for registers that change by themselves
    Result<double> value(ReadFrom readFrom = ReadFrom::Cache);
    /// OutOfRange outside the limits, off the increment, or not a number; nothing is sent then.
    Status setValue(double value);

    /// The lowest finite double when nothing limits the value.
    Result<double> minimum();
    /// The highest finite double when nothing limits the value.
    Result<double> maximum();
    /// None: every value between the limits.
    Result<std::optional<double>> increment();

  protected:
    Status writeNumber(Evaluation& evaluation, const Number& value) override;
};

} // namespace gige::genapi

#endif
