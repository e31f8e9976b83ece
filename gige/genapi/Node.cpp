#include "Node.h"

#include "AccessMode.h"
#include "Register.h"

#include <utility>

namespace gige::genapi
{

Node::Node(NodeMapState& state, NodeKind kind, std::string name) : mState(state), mKind(kind)
{
    mInfo.displayName = name;
    mInfo.name = std::move(name);
}

Node::~Node() = default;

Result<AccessMode> Node::accessMode()
{
    Evaluation evaluation(mState);
    return access(evaluation);
}

Result<AccessMode> Node::access(Evaluation& evaluation)
{
    const Evaluation::Visit visit(evaluation);
    if (const Status status = usable(visit); status != Status::Ok) {
        return status;
    }
    // In this order: what a device lacks it need not answer for, and what is not available now has
    // no mode to ask for.
    const Result<bool> isImplemented = holds(evaluation, mConditions.isImplemented, true);
    if (!isImplemented) {
        return isImplemented.status();
    }
    if (!*isImplemented) {
        return AccessMode::NotImplemented;
    }
    const Result<bool> isAvailable = holds(evaluation, mConditions.isAvailable, true);
    if (!isAvailable) {
        return isAvailable.status();
    }
    if (!*isAvailable) {
        return AccessMode::NotAvailable;
    }
    const Result<AccessMode> base = baseAccess(evaluation);
    const Result<bool> isLocked = holds(evaluation, mConditions.isLocked, false);
    if (!base || !isLocked) {
        return base ? isLocked.status() : base.status();
    }
    const AccessMode mode = intersect(*base, mConditions.imposed);
    return *isLocked ? lock(mode) : mode;
}

Status Node::usable(const Evaluation::Visit& visit) const
{
    return mDefect == Status::Ok ? visit.status() : mDefect;
}

Result<bool> Node::holds(Evaluation& evaluation, Node* condition, bool otherwise)
{
    if (condition == nullptr) {
        return otherwise;
    }
    const Result<Number> value = condition->readChecked(evaluation);
    if (value) {
        return !value->isZero();
    }
    // Devices offer some conditions in some states only: else the feature is not offered either, or
    // not locked.
    const Status status = value.status();
    const bool isMissing = status == Status::NotImplemented || status == Status::NotAvailable;
    return isMissing ? Result<bool>(false) : status;
}

Status Node::checkReadable(Evaluation& evaluation)
{
    return access(evaluation).andThen(readability);
}

Status Node::checkWritable(Evaluation& evaluation)
{
    return access(evaluation).andThen(writability);
}

Result<Number> Node::readChecked(Evaluation& evaluation)
{
    const Status status = checkReadable(evaluation);
    return status == Status::Ok ? read(evaluation) : status;
}

Status Node::writeChecked(Evaluation& evaluation, const Number& value)
{
    const Status status = checkWritable(evaluation);
    return status == Status::Ok ? write(evaluation, value) : status;
}

Result<Number> Node::read(Evaluation& evaluation)
{
    const Evaluation::Visit visit(evaluation);
    const Status status = usable(visit);
    return status == Status::Ok ? readNumber(evaluation) : status;
}

Status Node::write(Evaluation& evaluation, const Number& value)
{
    const Evaluation::Visit visit(evaluation);
    if (const Status status = usable(visit); status != Status::Ok) {
        return status;
    }
    evaluation.touch(*this);
    return writeNumber(evaluation, value);
}

Result<NumberRange> Node::range(Evaluation& evaluation, const LimitChoice& wanted)
{
    const Evaluation::Visit visit(evaluation);
    const Status status = usable(visit);
    return status == Status::Ok ? numberRange(evaluation, wanted) : status;
}

Status Node::writeFromHost(const Number& value)
{
    Evaluation evaluation(mState);
    const Status status = writeChecked(evaluation, value);
    // Also after a failure: the device may have taken the write and lost the answer.
    evaluation.invalidateTouched();
    return status;
}

Result<AccessMode> Node::baseAccess(Evaluation& evaluation)
{
    return mRegister == nullptr ? AccessMode::ReadOnly : mRegister->access(evaluation);
}

Result<Number> Node::readNumber(Evaluation& /*evaluation*/)
{
    return Status::WrongKind;
}

Status Node::writeNumber(Evaluation& /*evaluation*/, const Number& /*value*/)
{
    return Status::WrongKind;
}

Result<NumberRange> Node::numberRange(Evaluation& /*evaluation*/, const LimitChoice& /*wanted*/)
{
    return Status::WrongKind;
}

} // namespace gige::genapi
