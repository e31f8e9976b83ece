#ifndef TELVO_GIGE_GENAPI_REGISTER_H
#define TELVO_GIGE_GENAPI_REGISTER_H

#include "Evaluation.h"
#include "GenApiStatus.h"
#include "NodeInfo.h"
#include "RegisterByteOrder.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace gige::genapi
{

/// Cachable: what happens to the cache on a write; NoCache reads the device each time.
enum class Caching : std::uint8_t { NoCache, WriteThrough, WriteAround };

/// An address term: value of the index node times the step.
struct RegisterIndex {
    Node* index = nullptr;
    std::optional<std::int64_t> step; // bytes
    Node* stepNode = nullptr;         // gives the step instead; neither: the register's length
};

struct RegisterDefinition {
    std::uint64_t address = 0;       // sum of the constant terms
    std::vector<Node*> addressNodes; // nodes whose values are added
    std::vector<RegisterIndex> indexes;
    std::int64_t length = 0;    // bytes
    Node* lengthNode = nullptr; // gives the length instead
    AccessMode access = AccessMode::ReadOnly;
    Node* port = nullptr;
    Caching caching = Caching::WriteThrough;
    CacheId cacheId = 0; // registers with the same one share their cache
};

/// A range of the device's register space, found anew at each access: address and length may depend
/// on other nodes.
class Register
{
  public:
    explicit Register(RegisterDefinition definition);

    struct Place {
        std::uint64_t address;
        std::size_t length; // 1..kRegisterSizeLimit
    };

    Result<AccessMode> access(Evaluation& evaluation) const;
    Result<Place> place(Evaluation& evaluation) const;

    /// From the cache, if it may and can.
    Result<std::vector<std::uint8_t>> read(Evaluation& evaluation, const Place& place) const;
    /// From the device in any case: before a part of the register is changed.
    Result<std::vector<std::uint8_t>> readDevice(Evaluation& evaluation, const Place& place) const;
    /// What the cache knows; zeros otherwise. For registers that cannot be read.
    std::vector<std::uint8_t> lastKnown(Evaluation& evaluation, const Place& place) const;
    /// @param bytes  as many as the place has, or fewer: the register's first bytes
    Status write(Evaluation& evaluation, const Place& place,
                 std::span<const std::uint8_t> bytes) const;

    CacheId cacheId() const { return mDefinition.cacheId; }
    Caching caching() const { return mDefinition.caching; }
    AccessMode ownAccess() const { return mDefinition.access; }

  private:
    Result<std::uint64_t> address(Evaluation& evaluation, std::size_t length) const;
    Result<std::size_t> length(Evaluation& evaluation) const;

    RegisterDefinition mDefinition;
};

} // namespace gige::genapi

#endif
