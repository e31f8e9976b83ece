#include "BooleanNode.h"

#include <utility>

namespace gige::genapi
{

BooleanNode::BooleanNode(NodeMapState& state, std::string name)
    : Node(state, NodeKind::Boolean, std::move(name))
{
}

void BooleanNode::define(std::unique_ptr<NumberSource> source, std::int64_t on, std::int64_t off)
{
    mSource = std::move(source);
    mOn = on;
    mOff = off;
}

Result<bool> BooleanNode::value(ReadFrom readFrom)
{
    Evaluation evaluation(state(), readFrom);
    return readChecked(evaluation).transform([](const Number& number) { return !number.isZero(); });
}

Status BooleanNode::setValue(bool value)
{
    return writeFromHost(Number(std::int64_t{value}));
}

Result<AccessMode> BooleanNode::baseAccess(Evaluation& evaluation)
{
    return mSource->access(evaluation);
}

Result<Number> BooleanNode::readNumber(Evaluation& evaluation)
{
    return mSource->read(evaluation).transform([this](const Number& number) {
        // A value that is neither OnValue nor OffValue counts as off.
        return Number(std::int64_t{isEqual(number, mOn)});
    });
}

Status BooleanNode::writeNumber(Evaluation& evaluation, const Number& value)
{
    // Other nodes write numbers through it: any but 0 means on.
    return mSource->write(evaluation, value.isZero() ? mOff : mOn);
}

Result<NumberRange> BooleanNode::numberRange(Evaluation& /*evaluation*/,
                                             const LimitChoice& /*wanted*/)
{
    return NumberRange{Number(std::int64_t{0}), Number(std::int64_t{1}), Number(std::int64_t{1})};
}

} // namespace gige::genapi
