#ifndef TELVO_GIGE_GENAPI_REGISTERNODE_H
#define TELVO_GIGE_GENAPI_REGISTERNODE_H

#include "Node.h"

#include <cstddef>
#include <span>
#include <vector>

namespace gige::genapi
{

/// Bytes as they are.
class RegisterNode : public Node
{
  public:
    RegisterNode(NodeMapState& state, std::string name);

    /// In bytes.
    Result<std::size_t> length();
    /// All of the register.
    Result<std::vector<std::uint8_t>> read(ReadFrom readFrom = ReadFrom::Cache);
    /// The register's first bytes; OutOfRange if it has fewer, or for none at all. A size that is
    /// no multiple of 4 makes the port read the last word first, to keep its other bytes.
    Status write(std::span<const std::uint8_t> bytes);
};

} // namespace gige::genapi

#endif
