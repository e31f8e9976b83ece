#ifndef TELVO_GIGE_GENAPI_NODESTORE_H
#define TELVO_GIGE_GENAPI_NODESTORE_H

#include "Node.h"

#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace gige::genapi
{

/// All nodes of a map, with what they share.
class NodeStore
{
  public:
    NodeStore(RegisterPort& port, PortPolicy policy) : mState(port, policy) {}

    NodeMapState& state() { return mState; }

    /// @return null when there is none
    Node* find(std::string_view name) const
    {
        const auto found = mIndex.find(name);
        return found == mIndex.end() ? nullptr : found->second;
    }

    /// Takes the node in. The first of several with one name is the one that is found; a node
    /// without a name is found by none.
    void add(std::unique_ptr<Node> node)
    {
        if (!node->name().empty()) {
            mIndex.try_emplace(node->name(), node.get());
        }
        mNodes.push_back(std::move(node));
    }

    /// In alphabetical order.
    std::vector<Node*> named() const
    {
        std::vector<Node*> nodes;
        nodes.reserve(mIndex.size());
        for (const auto& [name, node] : mIndex) {
            nodes.push_back(node);
        }
        return nodes;
    }

    const std::vector<std::unique_ptr<Node>>& nodes() const { return mNodes; }

  private:
    NodeMapState mState;
    std::vector<std::unique_ptr<Node>> mNodes;
    std::map<std::string, Node*, std::less<>> mIndex;
};

} // namespace gige::genapi

#endif
