#ifndef TELVO_GIGE_GENAPI_NODE_H
#define TELVO_GIGE_GENAPI_NODE_H

#include "Evaluation.h"
#include "GenApiStatus.h"
#include "NodeInfo.h"
#include "Number.h"

#include <memory>
#include <optional>
#include <string>

namespace gige::genapi
{

/// Limits of a number; a missing one does not limit.
struct NumberRange {
    std::optional<Number> minimum;
    std::optional<Number> maximum;
    std::optional<Number> increment;
};

/// Which limits somebody asks for. Each may cost a round trip to the device, and may fail.
struct LimitChoice {
    bool minimum = false;
    bool maximum = false;
    bool increment = false;

    bool any() const { return minimum || maximum || increment; }
};

inline constexpr LimitChoice kAllLimits{.minimum = true, .maximum = true, .increment = true};

/// A node of the feature tree. Nodes belong to their NodeMap and live as long as it does. Functions
/// without an Evaluation are for users of the tree; they may be called from any thread. Those with
/// one are for the nodes among each other.
class Node
{
  public:
    Node(NodeMapState& state, NodeKind kind, std::string name);
    virtual ~Node();
    Node(const Node&) = delete;
    Node& operator=(const Node&) = delete;

    NodeKind kind() const { return mKind; }
    const std::string& name() const { return mInfo.name; }
    const NodeInfo& info() const { return mInfo; }
    const NodeLinks& links() const { return mLinks; }

    /// Ok, or what makes the node unusable: each access then fails with it.
    Status defect() const { return mDefect; }

    /// The access in the device's present state; asking may read registers.
    Result<AccessMode> accessMode();

    // For the loader.
    NodeInfo& info() { return mInfo; }
    NodeLinks& links() { return mLinks; }
    NodeConditions& conditions() { return mConditions; }
    void setDefect(Status defect) { mDefect = defect; }
    void setRegister(std::shared_ptr<Register> shared) { mRegister = std::move(shared); }

    // For the nodes.
    /// Conditions, base access, imposed mode and lock combined.
    Result<AccessMode> access(Evaluation& evaluation);
    /// Refuses what the access mode forbids. A chain of references checks at its upper end, which
    /// sees the access modes of all below it.
    Result<Number> readChecked(Evaluation& evaluation);
    Status writeChecked(Evaluation& evaluation, const Number& value);
    Result<Number> read(Evaluation& evaluation);
    Status write(Evaluation& evaluation, const Number& value);
    /// Reads what the wanted limits need, and nothing else. The others may be missing or not.
    Result<NumberRange> range(Evaluation& evaluation, const LimitChoice& wanted);
    /// Null for nodes whose value is not in a register of their own.
    Register* registers() const { return mRegister.get(); }

  protected:
    virtual Result<AccessMode> baseAccess(Evaluation& evaluation);
    virtual Result<Number> readNumber(Evaluation& evaluation);
    virtual Status writeNumber(Evaluation& evaluation, const Number& value);
    virtual Result<NumberRange> numberRange(Evaluation& evaluation, const LimitChoice& wanted);

    NodeMapState& state() const { return mState; }
    Status checkReadable(Evaluation& evaluation);
    Status checkWritable(Evaluation& evaluation);
    /// A whole write by the host, with the invalidation after it.
    Status writeFromHost(const Number& value);

    Status usable(const Evaluation::Visit& visit) const;

  private:
    /// @param otherwise  what no condition counts as; one that is itself not offered does not hold
    static Result<bool> holds(Evaluation& evaluation, Node* condition, bool otherwise);

    NodeMapState& mState;
    NodeKind mKind;
    NodeInfo mInfo;
    NodeConditions mConditions;
    NodeLinks mLinks;
    Status mDefect = Status::Ok;
    std::shared_ptr<Register> mRegister;
};

} // namespace gige::genapi

#endif
