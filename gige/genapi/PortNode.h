#ifndef TELVO_GIGE_GENAPI_PORTNODE_H
#define TELVO_GIGE_GENAPI_PORTNODE_H

#include "Node.h"

#include <utility>

namespace gige::genapi
{

/// A register space. Only the device's own can be reached; registers in the chunks of a buffer or
/// in the data of an event are not available.
class PortNode : public Node
{
  public:
    PortNode(NodeMapState& state, std::string name) : Node(state, NodeKind::Port, std::move(name))
    {
    }

    // For the loader.
    void define(bool isDevice) { mIsDevice = isDevice; }

  protected:
    Result<AccessMode> baseAccess(Evaluation& /*evaluation*/) override
    {
        return mIsDevice ? AccessMode::ReadWrite : AccessMode::NotAvailable;
    }

  private:
    bool mIsDevice = true;
};

} // namespace gige::genapi

#endif
