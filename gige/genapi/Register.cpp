#include "Register.h"

#include "GenApiLimits.h"
#include "Node.h"

#include <utility>

namespace gige::genapi
{

namespace
{

Result<std::int64_t> integerOf(Evaluation& evaluation, Node& node)
{
    return node.readChecked(evaluation).andThen(&Number::rounded);
}

} // namespace

Register::Register(RegisterDefinition definition) : mDefinition(std::move(definition)) {}

Result<AccessMode> Register::access(Evaluation& evaluation) const
{
    if (mDefinition.port == nullptr) {
        return mDefinition.access;
    }
    const Result<AccessMode> port = mDefinition.port->access(evaluation);
    // A port that cannot be reached takes its registers along; otherwise each says for itself.
    return port && *port >= AccessMode::WriteOnly ? mDefinition.access : port;
}

Result<Register::Place> Register::place(Evaluation& evaluation) const
{
    const Result<std::size_t> size = length(evaluation);
    if (!size) {
        return size.status();
    }
    return address(evaluation, *size).transform([&size](std::uint64_t start) {
        return Place{start, *size};
    });
}

Result<std::size_t> Register::length(Evaluation& evaluation) const
{
    const Result<std::int64_t> length = mDefinition.lengthNode == nullptr
                                            ? mDefinition.length
                                            : integerOf(evaluation, *mDefinition.lengthNode);
    if (!length) {
        return length.status();
    }
    if (*length <= 0 || std::cmp_greater(*length, kRegisterSizeLimit)) {
        return Status::RegisterTooLarge;
    }
    return static_cast<std::size_t>(*length);
}

Result<std::uint64_t> Register::address(Evaluation& evaluation, std::size_t length) const
{
    // Unsigned, so that negative terms and indexes count backward without overflow.
    std::uint64_t sum = mDefinition.address;
    for (Node* const node : mDefinition.addressNodes) {
        const Result<std::int64_t> term = integerOf(evaluation, *node);
        if (!term) {
            return term.status();
        }
        sum += static_cast<std::uint64_t>(*term);
    }
    for (const RegisterIndex& term : mDefinition.indexes) {
        const Result<std::int64_t> index = integerOf(evaluation, *term.index);
        const Result<std::int64_t> step =
            term.stepNode == nullptr ? term.step.value_or(static_cast<std::int64_t>(length))
                                     : integerOf(evaluation, *term.stepNode);
        if (!index || !step) {
            return index ? step.status() : index.status();
        }
        // Without a step of their own, elements lie one behind the other, each as long as the
        // register.
        sum += static_cast<std::uint64_t>(*index) * static_cast<std::uint64_t>(*step);
    }
    return sum;
}

Result<std::vector<std::uint8_t>> Register::read(Evaluation& evaluation, const Place& place) const
{
    if (evaluation.mayUseCache() && mDefinition.caching != Caching::NoCache) {
        const auto* const cached =
            evaluation.cache().find(mDefinition.cacheId, place.address, place.length);
        if (cached != nullptr) {
            return *cached;
        }
    }
    return readDevice(evaluation, place);
}

Result<std::vector<std::uint8_t>> Register::readDevice(Evaluation& evaluation,
                                                       const Place& place) const
{
    std::vector<std::uint8_t> bytes(place.length);
    const Status status = evaluation.port().read(place.address, bytes);
    if (status != Status::Ok) {
        return status;
    }
    if (mDefinition.caching != Caching::NoCache) {
        evaluation.cache().store(mDefinition.cacheId, place.address, bytes);
    }
    return bytes;
}

std::vector<std::uint8_t> Register::lastKnown(Evaluation& evaluation, const Place& place) const
{
    // What a write-only register was never written counts as zero.
    const auto* const cached =
        evaluation.cache().find(mDefinition.cacheId, place.address, place.length);
    return cached == nullptr ? std::vector<std::uint8_t>(place.length) : *cached;
}

Status Register::write(Evaluation& evaluation, const Place& place,
                       std::span<const std::uint8_t> bytes) const
{
    const Status status = evaluation.port().write(place.address, bytes);
    // Descriptions may name the port as an invalidator: "after any write".
    if (mDefinition.port != nullptr) {
        evaluation.touch(*mDefinition.port);
    }
    // Also after a failure: the device may have taken the write and lost the answer.
    evaluation.cache().dropOverlapping(place.address, place.length);
    // WriteAround: the device may have changed what it was given, so that the next read asks it.
    if (status == Status::Ok && mDefinition.caching == Caching::WriteThrough &&
        bytes.size() == place.length) {
        evaluation.cache().store(mDefinition.cacheId, place.address, bytes);
    }
    return status;
}

} // namespace gige::genapi
