#ifndef TELVO_GIGE_GENAPI_NUMBERSOURCE_H
#define TELVO_GIGE_GENAPI_NUMBERSOURCE_H

#include "Node.h"

#include <map>
#include <memory>
#include <variant>
#include <vector>

namespace gige::genapi
{

/// Where a node's number comes from: a constant, another node, a register, a formula.
class NumberSource
{
  public:
    NumberSource() = default;
    virtual ~NumberSource() = default;
    NumberSource(const NumberSource&) = delete;
    NumberSource& operator=(const NumberSource&) = delete;

    virtual Result<AccessMode> access(Evaluation& evaluation) = 0;
    virtual Result<Number> read(Evaluation& evaluation) = 0;
    virtual Status write(Evaluation& evaluation, const Number& value) = 0;
    /// Limits that come with the source; see Node::range.
    virtual Result<NumberRange> range(Evaluation& evaluation, const LimitChoice& wanted) = 0;
    /// The node that the number is taken over from unchanged; null for every other source.
    virtual const Node* target() const { return nullptr; }
};

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

/// A number that is only read: a constant, or the value of another node.
class Operand
{
  public:
    explicit Operand(Number constant) : mOrigin(constant) {}
    explicit Operand(Node& node) : mOrigin(&node) {}

    Result<Number> read(Evaluation& evaluation) const
    {
        Node* const* const node = std::get_if<Node*>(&mOrigin);
        return node == nullptr ? std::get<Number>(mOrigin) : (*node)->readChecked(evaluation);
    }

  private:
    std::variant<Number, Node*> mOrigin;
};

} // namespace gige::genapi

#endif
