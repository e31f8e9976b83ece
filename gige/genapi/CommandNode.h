#ifndef TELVO_GIGE_GENAPI_COMMANDNODE_H
#define TELVO_GIGE_GENAPI_COMMANDNODE_H

#include "NumberSource.h"

#include <memory>

namespace gige::genapi
{

class CommandNode : public Node
{
  public:
    CommandNode(NodeMapState& state, std::string name);

    /// Starts the command; does not wait for its end.
    Status execute();

    /// True when the device has taken the command's value back, or does not show it. To be asked
    /// every info().pollingTime; some registers never clear, so a caller gives up after a while and
    /// takes the command for done.
    Result<bool> isDone();

    // For the loader.
    void define(std::unique_ptr<NumberSource> source, Operand commandValue);

  protected:
    Result<AccessMode> baseAccess(Evaluation& evaluation) override;
    Result<Number> readNumber(Evaluation& evaluation) override;
    Status writeNumber(Evaluation& evaluation, const Number& value) override;

  private:
    std::unique_ptr<NumberSource> mSource;
    Operand mCommandValue{Number(std::int64_t{1})};
};

} // namespace gige::genapi

#endif
