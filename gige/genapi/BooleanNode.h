#ifndef TELVO_GIGE_GENAPI_BOOLEANNODE_H
#define TELVO_GIGE_GENAPI_BOOLEANNODE_H

#include "NumberSource.h"

#include <memory>

namespace gige::genapi
{

/// As an operand it counts as 1 or 0, whatever numbers stand for on and off below.
class BooleanNode : public Node
{
  public:
    BooleanNode(NodeMapState& state, std::string name);

    /// True if the number below is the one for "on", false for any other.
    Result<bool> value(ReadFrom readFrom = ReadFrom::Cache);
    Status setValue(bool value);

    // For the loader.
    void define(std::unique_ptr<NumberSource> source, std::int64_t on, std::int64_t off);

  protected:
    Result<AccessMode> baseAccess(Evaluation& evaluation) override;
    Result<Number> readNumber(Evaluation& evaluation) override;
    Status writeNumber(Evaluation& evaluation, const Number& value) override;
    Result<NumberRange> numberRange(Evaluation& evaluation, const LimitChoice& wanted) override;

  private:
    std::unique_ptr<NumberSource> mSource;
    std::int64_t mOn = 1;
    std::int64_t mOff = 0;
};

} // namespace gige::genapi

#endif
