#ifndef TELVO_GIGE_GENAPI_NODEMAP_H
#define TELVO_GIGE_GENAPI_NODEMAP_H

#include "BooleanNode.h"
#include "CategoryNode.h"
#include "CommandNode.h"
#include "EnumerationNode.h"
#include "FloatNode.h"
#include "GenApiStatus.h"
#include "IntegerNode.h"
#include "NodeStore.h"
#include "RegisterNode.h"
#include "RegisterPort.h"
#include "StringNode.h"

#include <chrono>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace gige::genapi
{

/// How the device wants to be accessed; see PortPolicy.
struct PortOptions {
    /// Overrides what the description's schema version says (1.0: yes, later: no).
    std::optional<bool> fourBytesAsRegister;
    bool hasWriteMemory = true;
    bool isBigEndian = true;
};

/// A device's features: the tree of nodes that its description makes. Nodes that are defective are
/// in the map like all others and answer every access with their defect.
///
/// Any thread may call the map and its nodes; one mutex inside serialises all accesses, so a slow
/// device holds up the other callers.
class NodeMap
{
  public:
    /// @param xml   the description as plain XML; a byte order mark, leading blanks and NULs at the
    ///              end do not matter. Not needed after the call.
    /// @param port  must outlive the map; nothing is read from it here
    /// @return DescriptionTooLarge, DescriptionTooDeep, TooManyNodes, DescriptionMalformed
    static Result<std::unique_ptr<NodeMap>> load(std::string_view xml, RegisterPort& port,
                                                 const PortOptions& options = {});

    /// @return null when there is none
    Node* find(std::string_view name) const { return mStore.find(name); }

    /// @return null when there is none, or one of another kind
    template <typename NodeType>
    NodeType* find(std::string_view name) const
    {
        return dynamic_cast<NodeType*>(mStore.find(name));
    }

    /// The category from which users see the tree; null if the description has none.
    const CategoryNode* root() const { return find<CategoryNode>("Root"); }

    /// All nodes with a name, in alphabetical order.
    std::vector<Node*> nodes() const { return mStore.named(); }

    /// Forgets all that was read: after the device was connected anew.
    void invalidate();

    /// Forgets the registers whose PollingTime has elapsed.
    /// @param elapsed  time since the last call
    void poll(std::chrono::milliseconds elapsed);

  private:
    NodeMap(RegisterPort& port, PortPolicy policy);

    NodeStore mStore;
    std::map<const Node*, std::chrono::milliseconds> mUnpolled; // time since a node's last poll
};

} // namespace gige::genapi

#endif
