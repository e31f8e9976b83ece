#ifndef TELVO_GIGE_GENAPI_CATEGORYNODE_H
#define TELVO_GIGE_GENAPI_CATEGORYNODE_H

#include "Node.h"

#include <utility>
#include <vector>

namespace gige::genapi
{

/// A folder of the tree. Descriptions may be cyclic: whoever descends bounds the depth.
class CategoryNode : public Node
{
  public:
    CategoryNode(NodeMapState& state, std::string name)
        : Node(state, NodeKind::Category, std::move(name))
    {
    }

    /// Features and further categories, in the description's order.
    const std::vector<Node*>& features() const { return mFeatures; }

    // For the loader.
    void define(std::vector<Node*> features) { mFeatures = std::move(features); }

  private:
    std::vector<Node*> mFeatures;
};

} // namespace gige::genapi

#endif
