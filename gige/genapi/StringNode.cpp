#include "StringNode.h"

#include "GenApiLimits.h"
#include "Register.h"

#include <algorithm>
#include <utility>

namespace gige::genapi
{

StringNode::StringNode(NodeMapState& state, std::string name)
    : Node(state, NodeKind::String, std::move(name))
{
}

Result<std::string> StringNode::value(ReadFrom readFrom)
{
    Evaluation evaluation(state(), readFrom);
    const Status status = checkReadable(evaluation);
    return status == Status::Ok ? readText(evaluation) : status;
}

Status StringNode::setValue(std::string_view value)
{
    Evaluation evaluation(state());
    const Status access = checkWritable(evaluation);
    const Status status = access == Status::Ok ? writeText(evaluation, value) : access;
    evaluation.invalidateTouched();
    return status;
}

Result<std::size_t> StringNode::maximumLength()
{
    Evaluation evaluation(state());
    const Result<AccessMode> mode = access(evaluation);
    return mode ? longest(evaluation) : mode.status();
}

Result<AccessMode> StringNode::baseAccess(Evaluation& evaluation)
{
    if (StringNode* const* const target = std::get_if<StringNode*>(&mSource)) {
        return (*target)->access(evaluation);
    }
    return registers() == nullptr ? AccessMode::ReadWrite : registers()->access(evaluation);
}

Result<std::string> StringNode::readText(Evaluation& evaluation)
{
    const Evaluation::Visit visit(evaluation);
    if (const Status status = usable(visit); status != Status::Ok) {
        return status;
    }
    if (StringNode* const* const target = std::get_if<StringNode*>(&mSource)) {
        return (*target)->readText(evaluation);
    }
    const std::string* const text = std::get_if<std::string>(&mSource);
    return text == nullptr ? readRegister(evaluation) : *text;
}

Status StringNode::writeText(Evaluation& evaluation, std::string_view text)
{
    const Evaluation::Visit visit(evaluation);
    if (const Status status = usable(visit); status != Status::Ok) {
        return status;
    }
    evaluation.touch(*this);
    if (StringNode* const* const target = std::get_if<StringNode*>(&mSource)) {
        return (*target)->writeText(evaluation, text);
    }
    if (registers() != nullptr) {
        return writeRegister(evaluation, text);
    }
    // Kept on the host's side; bounded as if it were in a register.
    if (text.size() > kRegisterSizeLimit) {
        return Status::OutOfRange;
    }
    mSource = std::string(text);
    return Status::Ok;
}

Result<std::size_t> StringNode::longest(Evaluation& evaluation)
{
    const Evaluation::Visit visit(evaluation);
    if (const Status status = usable(visit); status != Status::Ok) {
        return status;
    }
    if (StringNode* const* const target = std::get_if<StringNode*>(&mSource)) {
        return (*target)->longest(evaluation);
    }
    if (registers() == nullptr) {
        return std::size_t{kRegisterSizeLimit};
    }
    return registers()->place(evaluation).transform(&Register::Place::length);
}

Result<std::string> StringNode::readRegister(Evaluation& evaluation)
{
    const Result<Register::Place> place = registers()->place(evaluation);
    const auto content = place ? registers()->read(evaluation, *place) : place.status();
    if (!content) {
        return content.status();
    }
    // A text that fills its register has no NUL at its end.
    return std::string(content->begin(), std::ranges::find(*content, std::uint8_t{0}));
}

Status StringNode::writeRegister(Evaluation& evaluation, std::string_view text)
{
    const Result<Register::Place> place = registers()->place(evaluation);
    if (!place) {
        return place.status();
    }
    if (text.size() > place->length) {
        return Status::OutOfRange;
    }
    // The whole register: no end of a longer text may remain behind the new one.
    std::vector<std::uint8_t> padded(place->length);
    std::ranges::copy(text, padded.begin());
    return registers()->write(evaluation, *place, padded);
}

} // namespace gige::genapi
