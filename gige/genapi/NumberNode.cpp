#include "NumberNode.h"

#include "GenApiLimits.h"

#include <tuple>
#include <utility>

namespace gige::genapi
{

void NumberNode::define(std::unique_ptr<NumberSource> source, OwnLimits limits,
                        Presentation presentation)
{
    mSource = std::move(source);
    mLimits = limits;
    mPresentation = std::move(presentation);
}

// The first in the chain of nodes that pass the number on says how it is shown.
template <typename T>
std::optional<T> NumberNode::shown(std::optional<T> Presentation::*item) const
{
    // A float in front of a register of ticks shows the unit that only the last of them has.
    const NumberNode* node = this;
    // References may form a cycle.
    for (std::size_t depth = 0; node != nullptr && depth < kReferenceDepthLimit; ++depth) {
        if (node->mPresentation.*item) {
            return node->mPresentation.*item;
        }
        const Node* const target = node->mSource == nullptr ? nullptr : node->mSource->target();
        node = dynamic_cast<const NumberNode*>(target);
    }
    return std::nullopt;
}

Representation NumberNode::representation() const
{
    return shown(&Presentation::representation).value_or(Representation::PureNumber);
}

std::string NumberNode::unit() const
{
    return shown(&Presentation::unit).value_or("");
}

Result<AccessMode> NumberNode::baseAccess(Evaluation& evaluation)
{
    return mSource->access(evaluation);
}

Result<Number> NumberNode::readNumber(Evaluation& evaluation)
{
    return mSource->read(evaluation);
}

Result<NumberRange> NumberNode::numberRange(Evaluation& evaluation, const LimitChoice& wanted)
{
    // A limit of the node's own wins; the source is asked for no other, since that may cost a read.
    const LimitChoice inherited{.minimum = wanted.minimum && !mLimits.minimum,
                                .maximum = wanted.maximum && !mLimits.maximum,
                                .increment = wanted.increment && !mLimits.increment};
    Result<NumberRange> range =
        inherited.any() ? mSource->range(evaluation, inherited) : NumberRange{};
    if (!range) {
        return range;
    }
    const std::tuple<bool, const std::optional<Operand>&, std::optional<Number>&> own[] = {
        {wanted.minimum, mLimits.minimum, range->minimum},
        {wanted.maximum, mLimits.maximum, range->maximum},
        {wanted.increment, mLimits.increment, range->increment},
    };
    for (const auto& [isWanted, limit, value] : own) {
        if (isWanted && limit) {
            const Result<Number> given = limit->read(evaluation);
            if (!given) {
                return given.status();
            }
            value = *given;
        }
    }
    return range;
}

Result<Number> NumberNode::valueFor(ReadFrom readFrom)
{
    Evaluation evaluation(state(), readFrom);
    return readChecked(evaluation);
}

Result<NumberRange> NumberNode::rangeForHost(const LimitChoice& wanted)
{
    Evaluation evaluation(state());
    return range(evaluation, wanted);
}

} // namespace gige::genapi
