/// What a description says about a node besides its value: plain data, fixed once loaded.
#ifndef TELVO_GIGE_GENAPI_NODEINFO_H
#define TELVO_GIGE_GENAPI_NODEINFO_H

#include "AccessMode.h"

#include <chrono>
#include <cstdint>
#include <string>
#include <vector>

namespace gige::genapi
{

class Node;
class Register;

enum class NodeKind : std::uint8_t {
    Plain, ///< no value
    Category,
    Port,
    Integer,
    Float,
    Boolean,
    String,
    Command,
    Enumeration,
    EnumEntry,
    Register,
};

/// In the order of the numbers by which formulas know them: 0 to 3.
enum class Visibility : std::uint8_t { Beginner, Expert, Guru, Invisible };

struct NodeInfo {
    std::string name; ///< unique in the map; of an enumeration's entry: unique in the enumeration
    std::string displayName; ///< label; the name when the description has none
    std::string toolTip;     ///< short help
    std::string description; ///< long help
    Visibility visibility = Visibility::Beginner;
    std::chrono::milliseconds pollingTime{0}; ///< 0: no polling
};

/// Nodes and constants that narrow a node's access. Null: no condition.
struct NodeConditions {
    Node* isImplemented = nullptr;
    Node* isAvailable = nullptr;
    Node* isLocked = nullptr;
    AccessMode imposed = AccessMode::ReadWrite;
};

/// The node's place among the others.
struct NodeLinks {
    std::vector<Node*> below;       ///< nodes that this one's value, limits or access come from
    std::vector<Node*> above;       ///< nodes whose value or limits come from this one
    std::vector<Node*> invalidates; ///< nodes that name this one as pInvalidator
    std::vector<Node*> selected;    ///< pSelected: features that this selector switches
};

} // namespace gige::genapi

#endif
