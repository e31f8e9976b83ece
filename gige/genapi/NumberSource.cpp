#include "NumberSource.h"

#include <utility>

namespace gige::genapi
{

Result<AccessMode> ConstantSource::access(Evaluation& /*evaluation*/)
{
    return AccessMode::ReadWrite;
}

Result<Number> ConstantSource::read(Evaluation& /*evaluation*/)
{
    return mValue;
}

Status ConstantSource::write(Evaluation& /*evaluation*/, const Number& value)
{
    mValue = value;
    return Status::Ok;
}

Result<NumberRange> ConstantSource::range(Evaluation& /*evaluation*/, const LimitChoice& /*wanted*/)
{
    return NumberRange{};
}

ReferenceSource::ReferenceSource(Node& target, std::vector<Node*> copies)
    : mTarget(target), mCopies(std::move(copies))
{
}

Result<AccessMode> ReferenceSource::access(Evaluation& evaluation)
{
    return mTarget.access(evaluation);
}

Result<Number> ReferenceSource::read(Evaluation& evaluation)
{
    // Unchecked: access() went through the target already.
    return mTarget.read(evaluation);
}

Status ReferenceSource::write(Evaluation& evaluation, const Number& value)
{
    Status status = mTarget.write(evaluation, value);
    for (Node* const copy : mCopies) {
        // Checked: access() says nothing of the copies.
        status = status == Status::Ok ? copy->writeChecked(evaluation, value) : status;
    }
    return status;
}

Result<NumberRange> ReferenceSource::range(Evaluation& evaluation, const LimitChoice& wanted)
{
    return mTarget.range(evaluation, wanted);
}

IndexedSource::IndexedSource(Node& index, Elements elements,
                             std::unique_ptr<NumberSource> otherwise)
    : mIndex(index), mElements(std::move(elements)), mOtherwise(std::move(otherwise))
{
}

Result<NumberSource*> IndexedSource::selected(Evaluation& evaluation)
{
    const Result<std::int64_t> index = mIndex.readChecked(evaluation).andThen(&Number::rounded);
    if (!index) {
        return index.status();
    }
    const auto found = mElements.find(*index);
    NumberSource* const source = found == mElements.end() ? mOtherwise.get() : found->second.get();
    return source == nullptr ? Status::OutOfRange : Result<NumberSource*>(source);
}

Result<AccessMode> IndexedSource::access(Evaluation& evaluation)
{
    const Result<NumberSource*> source = selected(evaluation);
    return source ? (*source)->access(evaluation) : source.status();
}

Result<Number> IndexedSource::read(Evaluation& evaluation)
{
    const Result<NumberSource*> source = selected(evaluation);
    return source ? (*source)->read(evaluation) : source.status();
}

Status IndexedSource::write(Evaluation& evaluation, const Number& value)
{
    const Result<NumberSource*> source = selected(evaluation);
    return source ? (*source)->write(evaluation, value) : source.status();
}

Result<NumberRange> IndexedSource::range(Evaluation& evaluation, const LimitChoice& wanted)
{
    const Result<NumberSource*> source = selected(evaluation);
    return source ? (*source)->range(evaluation, wanted) : source.status();
}

} // namespace gige::genapi
