#ifndef TELVO_GIGE_GENAPI_OPERAND_H
#define TELVO_GIGE_GENAPI_OPERAND_H

#include "Node.h"

#include <variant>

namespace gige::genapi
{

/// A number that is only read: a constant, or the value of another node.
class Operand
{
  public:
    explicit Operand(Number constant) : mOrigin(constant) {}
    explicit Operand(Node& node) : mOrigin(&node) {}

    Result<Number> read(Evaluation& evaluation) const
    {
        Node* const* const node = std::get_if<Node*>(&mOrigin);
        return node == nullptr ? Result(std::get<Number>(mOrigin))
                               : (*node)->readChecked(evaluation);
    }

  private:
    std::variant<Number, Node*> mOrigin;
};

} // namespace gige::genapi

#endif
