#include "EnumerationNode.h"

#include <algorithm>
#include <utility>

namespace gige::genapi
{

EnumEntryNode::EnumEntryNode(NodeMapState& state, std::string name)
    : Node(state, NodeKind::EnumEntry, std::move(name))
{
}

void EnumEntryNode::define(std::int64_t value, std::optional<std::string> symbolic)
{
    mValue = value;
    mSymbolic = std::move(symbolic).value_or(name());
}

EnumerationNode::EnumerationNode(NodeMapState& state, std::string name)
    : Node(state, NodeKind::Enumeration, std::move(name))
{
}

EnumerationNode::~EnumerationNode() = default;

void EnumerationNode::define(std::unique_ptr<NumberSource> source,
                             std::vector<std::unique_ptr<EnumEntryNode>> entries)
{
    mSource = std::move(source);
    mEntries = std::move(entries);
}

Result<std::int64_t> EnumerationNode::value(ReadFrom readFrom)
{
    Evaluation evaluation(state(), readFrom);
    return readChecked(evaluation).andThen(&Number::rounded);
}

Result<std::string> EnumerationNode::text(ReadFrom readFrom)
{
    const Result<std::int64_t> current = value(readFrom);
    if (!current) {
        return current.status();
    }
    const EnumEntryNode* const entry = findEntry(*current);
    // Devices of later firmware have values that their description does not name.
    return entry == nullptr ? std::to_string(*current) : entry->symbolic();
}

Status EnumerationNode::setValue(std::int64_t value)
{
    return writeFromHost(value);
}

Status EnumerationNode::setText(std::string_view entry)
{
    // Before the entries are searched: a defective enumeration may lack some.
    if (defect() != Status::Ok) {
        return defect();
    }
    const EnumEntryNode* const found = findEntry(entry);
    return found == nullptr ? Status::NoSuchEntry : setValue(found->value());
}

EnumEntryNode* EnumerationNode::findEntry(std::string_view name) const
{
    // What users see wins over what the description calls it.
    auto found = std::ranges::find(mEntries, name, &EnumEntryNode::symbolic);
    if (found == mEntries.end()) {
        found = std::ranges::find(mEntries, name, &EnumEntryNode::name);
    }
    return found == mEntries.end() ? nullptr : found->get();
}

EnumEntryNode* EnumerationNode::findEntry(std::int64_t value) const
{
    const auto found = std::ranges::find(mEntries, value, &EnumEntryNode::value);
    return found == mEntries.end() ? nullptr : found->get();
}

Result<AccessMode> EnumerationNode::baseAccess(Evaluation& evaluation)
{
    return mSource->access(evaluation);
}

Result<Number> EnumerationNode::readNumber(Evaluation& evaluation)
{
    return mSource->read(evaluation);
}

Status EnumerationNode::writeNumber(Evaluation& evaluation, const Number& value)
{
    const Result<std::int64_t> integer = value.rounded();
    EnumEntryNode* const entry = integer ? findEntry(*integer) : nullptr;
    if (entry == nullptr) {
        return Status::NoSuchEntry;
    }
    const Result<AccessMode> offered = entry->access(evaluation);
    if (!offered) {
        return offered.status();
    }
    // An entry holds no value of its own: any mode above "not available" offers it.
    return *offered < AccessMode::WriteOnly ? Status::EntryNotOffered
                                            : mSource->write(evaluation, *integer);
}

Result<NumberRange> EnumerationNode::numberRange(Evaluation& /*evaluation*/,
                                                 const LimitChoice& /*wanted*/)
{
    return NumberRange{};
}

} // namespace gige::genapi
