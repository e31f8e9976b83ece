#include "RegisterNode.h"

#include "Register.h"

#include <utility>

namespace gige::genapi
{

RegisterNode::RegisterNode(NodeMapState& state, std::string name)
    : Node(state, NodeKind::Register, std::move(name))
{
}

Result<std::size_t> RegisterNode::length()
{
    Evaluation evaluation(state());
    const Result<AccessMode> mode = access(evaluation);
    const Result<Register::Place> place = mode ? registers()->place(evaluation) : mode.status();
    return place.transform(&Register::Place::length);
}

Result<std::vector<std::uint8_t>> RegisterNode::read(ReadFrom readFrom)
{
    Evaluation evaluation(state(), readFrom);
    if (const Status status = checkReadable(evaluation); status != Status::Ok) {
        return status;
    }
    const Result<Register::Place> place = registers()->place(evaluation);
    return place ? registers()->read(evaluation, *place) : place.status();
}

Status RegisterNode::write(std::span<const std::uint8_t> bytes)
{
    Evaluation evaluation(state());
    if (const Status status = checkWritable(evaluation); status != Status::Ok) {
        return status;
    }
    const Result<Register::Place> place = registers()->place(evaluation);
    if (!place) {
        return place.status();
    }
    if (bytes.empty() || bytes.size() > place->length) {
        return Status::OutOfRange;
    }
    evaluation.touch(*this);
    const Status status = registers()->write(evaluation, *place, bytes);
    evaluation.invalidateTouched();
    return status;
}

} // namespace gige::genapi
