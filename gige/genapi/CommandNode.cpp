#include "CommandNode.h"

#include "AccessMode.h"

#include <utility>

namespace gige::genapi
{

CommandNode::CommandNode(NodeMapState& state, std::string name)
    : Node(state, NodeKind::Command, std::move(name))
{
}

void CommandNode::define(std::unique_ptr<NumberSource> source, Operand commandValue)
{
    mSource = std::move(source);
    mCommandValue = commandValue;
}

Status CommandNode::execute()
{
    Evaluation evaluation(state());
    const Result<Number> value = mCommandValue.read(evaluation);
    const Status status = value ? writeChecked(evaluation, *value) : value.status();
    evaluation.invalidateTouched();
    return status;
}

Result<bool> CommandNode::isDone()
{
    // The device clears the register itself, which the cache cannot know.
    Evaluation evaluation(state(), ReadFrom::Device);
    const Result<AccessMode> mode = access(evaluation);
    if (!mode) {
        return mode.status();
    }
    // A command that can only be written was done when its write was acknowledged.
    if (readability(*mode) != Status::Ok) {
        return true;
    }
    const Result<Number> current = mSource->read(evaluation);
    const Result<Number> value = mCommandValue.read(evaluation);
    if (!current || !value) {
        return current ? value.status() : current.status();
    }
    const bool isDone = !isEqual(*current, *value);
    if (isDone) {
        // What the command changed was perhaps read again while it still ran.
        evaluation.touch(*this);
        evaluation.invalidateTouched();
    }
    return isDone;
}

Result<AccessMode> CommandNode::baseAccess(Evaluation& evaluation)
{
    return mSource->access(evaluation);
}

Result<Number> CommandNode::readNumber(Evaluation& evaluation)
{
    return mSource->read(evaluation);
}

Status CommandNode::writeNumber(Evaluation& evaluation, const Number& value)
{
    return mSource->write(evaluation, value);
}

} // namespace gige::genapi
