/// Sources that hold a value or pass on another node's.
#ifndef TELVO_GIGE_GENAPI_VALUESOURCES_H
#define TELVO_GIGE_GENAPI_VALUESOURCES_H

#include "NumberSource.h"

#include <map>
#include <memory>
#include <vector>

namespace gige::genapi
{

/// `Value`: a variable on the host's side.
class ConstantSource : public NumberSource
{
  public:
    explicit ConstantSource(Number value) : mValue(value) {}

    Result<AccessMode> access(Evaluation& evaluation) override;
    Result<Number> read(Evaluation& evaluation) override;
    Status write(Evaluation& evaluation, const Number& value) override;
    Result<NumberRange> range(Evaluation& evaluation, const LimitChoice& wanted) override;

  private:
    Number mValue;
};

/// `pValue`: another node's value; `pValueCopy` nodes are written along, never read.
class ReferenceSource : public NumberSource
{
  public:
    explicit ReferenceSource(Node& target, std::vector<Node*> copies = {});

    Result<AccessMode> access(Evaluation& evaluation) override;
    Result<Number> read(Evaluation& evaluation) override;
    Status write(Evaluation& evaluation, const Number& value) override;
    Result<NumberRange> range(Evaluation& evaluation, const LimitChoice& wanted) override;
    const Node* target() const override { return &mTarget; }

  private:
    Node& mTarget;
    std::vector<Node*> mCopies;
};

/// `pIndex`: one of several sources, by the value of the index node.
class IndexedSource : public NumberSource
{
  public:
    using Elements = std::map<std::int64_t, std::unique_ptr<NumberSource>>;

    /// @param otherwise  for an index that is not listed; null: such an index is out of range
    IndexedSource(Node& index, Elements elements, std::unique_ptr<NumberSource> otherwise);

    Result<AccessMode> access(Evaluation& evaluation) override;
    Result<Number> read(Evaluation& evaluation) override;
    Status write(Evaluation& evaluation, const Number& value) override;
    Result<NumberRange> range(Evaluation& evaluation, const LimitChoice& wanted) override;

  private:
    Result<NumberSource*> selected(Evaluation& evaluation);

    Node& mIndex;
    Elements mElements;
    std::unique_ptr<NumberSource> mOtherwise;
};

} // namespace gige::genapi

#endif
