#include "Evaluation.h"

#include "GenApiLimits.h"
#include "Node.h"
#include "Register.h"

#include <span>
#include <unordered_set>

namespace gige::genapi
{

namespace
{

/// Nodes to visit, each once: references may form cycles.
class WorkList
{
  public:
    void add(std::span<Node* const> nodes)
    {
        for (Node* const node : nodes) {
            if (mSeen.insert(node).second) {
                mWaiting.push_back(node);
            }
        }
    }

    Node* next()
    {
        if (mWaiting.empty()) {
            return nullptr;
        }
        Node* const node = mWaiting.back();
        mWaiting.pop_back();
        return node;
    }

  private:
    std::unordered_set<const Node*> mSeen;
    std::vector<Node*> mWaiting;
};

void dropBelow(WorkList& stale, RegisterCache& cache)
{
    while (const Node* const node = stale.next()) {
        if (node->registers() != nullptr) {
            cache.drop(node->registers()->cacheId());
        }
        stale.add(node->links().below);
    }
}

/// Drops what a write has made stale: the registers below every node that names a changed node in
/// its pInvalidator list, and below every feature that a changed selector selects. Changed are the
/// nodes written, the nodes whose value they are part of, and in turn the nodes dropped.
/// @param written  nodes on the way of the write, from the feature to its registers and their port
void invalidateAfterWrite(std::span<Node* const> written, RegisterCache& cache)
{
    WorkList changed;
    WorkList stale;
    changed.add(written);
    // What a write changes may select or invalidate, in turn, what others are made of.
    while (const Node* const node = changed.next()) {
        const NodeLinks& links = node->links();
        for (const auto* const nodes : {&links.invalidates, &links.selected}) {
            stale.add(*nodes);
            changed.add(*nodes);
        }
        // A feature changes with the register that it is made of.
        changed.add(links.above);
    }
    dropBelow(stale, cache);
}

} // namespace

Evaluation::Evaluation(NodeMapState& state, ReadFrom readFrom)
    : mState(state), mLock(state.mutex), mReadFrom(readFrom)
{
}

Status Evaluation::spend(std::size_t steps)
{
    // Never given back, other than the depth: a tree may be shallow and yet branch without end.
    mSteps += steps;
    return mSteps > kEvaluationStepLimit ? Status::TooComplex : Status::Ok;
}

void Evaluation::invalidateTouched()
{
    invalidateAfterWrite(mTouched, mState.cache);
    mTouched.clear();
}

Evaluation::Visit::Visit(Evaluation& evaluation)
    : mEvaluation(evaluation), mStatus(evaluation.spend(kNodeVisitSteps))
{
    if (++evaluation.mDepth > kReferenceDepthLimit) {
        mStatus = Status::CircularReference;
    }
}

} // namespace gige::genapi
