#ifndef TELVO_GIGE_GENAPI_NUMBERSOURCE_H
#define TELVO_GIGE_GENAPI_NUMBERSOURCE_H

#include "Node.h"

namespace gige::genapi
{

/// Where a node's number comes from: a constant, another node, a register, a formula.
class NumberSource
{
  public:
    NumberSource() = default;
    virtual ~NumberSource() = default;
    NumberSource(const NumberSource&) = delete;
    NumberSource& operator=(const NumberSource&) = delete;

    virtual Result<AccessMode> access(Evaluation& evaluation) = 0;
    virtual Result<Number> read(Evaluation& evaluation) = 0;
    virtual Status write(Evaluation& evaluation, const Number& value) = 0;
    /// Limits that come with the source; see Node::range.
    virtual Result<NumberRange> range(Evaluation& evaluation, const LimitChoice& wanted) = 0;
    /// The node that the number is taken over from unchanged; null for every other source.
    virtual const Node* target() const { return nullptr; }
};

} // namespace gige::genapi

#endif
