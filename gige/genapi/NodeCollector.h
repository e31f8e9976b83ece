#ifndef TELVO_GIGE_GENAPI_NODECOLLECTOR_H
#define TELVO_GIGE_GENAPI_NODECOLLECTOR_H

#include "NodeReader.h"

#include <vector>

namespace gige::genapi
{

/// A node that exists, but has not read its element yet.
struct UnreadNode {
    Node* node;
    const NodeRecipe* recipe;
    pugi::xml_node element;
    pugi::xml_node structure; // the StructReg of an entry
};

/// Creates the nodes of a description, through groups and structures.
class NodeCollector
{
  public:
    explicit NodeCollector(NodeStore& store) : mStore(store) {}

    /// @param parent  the description, or a group
    /// @return TooManyNodes
    Status collect(const pugi::xml_node& parent);

    /// Without the entries of structures that are too large: these nodes stay defective.
    const std::vector<UnreadNode>& unread() const { return mUnread; }

  private:
    Status collectOne(const pugi::xml_node& element);
    Status collectStructure(const pugi::xml_node& structure);
    Status create(const NodeRecipe& recipe, const pugi::xml_node& element,
                  const pugi::xml_node& structure, Status defect);

    NodeStore& mStore;
    std::vector<UnreadNode> mUnread;
    std::size_t mCount = 0;
};

} // namespace gige::genapi

#endif
