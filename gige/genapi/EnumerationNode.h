#ifndef TELVO_GIGE_GENAPI_ENUMERATIONNODE_H
#define TELVO_GIGE_GENAPI_ENUMERATIONNODE_H

#include "NumberSource.h"

#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace gige::genapi
{

/// One entry of an enumeration. Its access mode says whether it is offered now.
class EnumEntryNode : public Node
{
  public:
    EnumEntryNode(NodeMapState& state, std::string name);

    std::int64_t value() const { return mValue; }
    /// The name that users see and write: `Symbolic`, or else the entry's name.
    const std::string& symbolic() const { return mSymbolic; }

    // For the loader.
    void define(std::int64_t value, std::optional<std::string> symbolic);

  private:
    std::int64_t mValue = 0;
    std::string mSymbolic;
};

/// As an operand it counts as its integer.
class EnumerationNode : public Node
{
  public:
    EnumerationNode(NodeMapState& state, std::string name);
    ~EnumerationNode() override;

    Result<std::int64_t> value(ReadFrom readFrom = ReadFrom::Cache);
    /// The current entry's symbolic name; the integer in decimal if it belongs to no entry.
    Result<std::string> text(ReadFrom readFrom = ReadFrom::Cache);

    /// NoSuchEntry, or EntryNotOffered in the device's present state; nothing is sent then.
    Status setValue(std::int64_t value);
    /// @param entry  an entry's symbolic name, or its name
    Status setText(std::string_view entry);

    /// In the description's order.
    std::span<const std::unique_ptr<EnumEntryNode>> entries() const { return mEntries; }
    /// @return null when there is none
    EnumEntryNode* findEntry(std::string_view name) const;
    EnumEntryNode* findEntry(std::int64_t value) const;

    // For the loader.
    void define(std::unique_ptr<NumberSource> source,
                std::vector<std::unique_ptr<EnumEntryNode>> entries);

  protected:
    Result<AccessMode> baseAccess(Evaluation& evaluation) override;
    Result<Number> readNumber(Evaluation& evaluation) override;
    Status writeNumber(Evaluation& evaluation, const Number& value) override;
    Result<NumberRange> numberRange(Evaluation& evaluation, const LimitChoice& wanted) override;

  private:
    std::unique_ptr<NumberSource> mSource;
    std::vector<std::unique_ptr<EnumEntryNode>> mEntries;
};

} // namespace gige::genapi

#endif
