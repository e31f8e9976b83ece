#include "Invalidation.h"

#include "Node.h"
#include "Register.h"

#include <unordered_set>
#include <vector>

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

} // namespace

void invalidateAfterWrite(std::span<Node* const> written, RegisterCache& cache)
{
    WorkList changed;
    WorkList stale;
    changed.add(written);
    while (const Node* const node = changed.next()) {
        const NodeLinks& links = node->links();
        for (const auto* const nodes : {&links.invalidates, &links.selected}) {
            stale.add(*nodes);
            changed.add(*nodes);
        }
        changed.add(links.above);
    }
    dropBelow(stale, cache);
}

} // namespace gige::genapi
