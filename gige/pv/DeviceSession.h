#ifndef TELVO_GIGE_PV_DEVICESESSION_H
#define TELVO_GIGE_PV_DEVICESESSION_H

#include "DeviceConnection.h"
#include "DevicePort.h"
#include "GenParameters.h"
#include "NodeMap.h"
#include "PvDevice.h"
#include "PvResult.h"
#include "StreamChannel.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <string_view>

/// One connection of a device with the feature tree that came over it. When the connection has
/// ended the features stay and answer NOT_CONNECTED. Threads: any.
class DeviceSession : private CommandObserver
{
  public:
    /// @param session   out: set with OK only
    /// @param linkLost  see DeviceConnection
    static PvResult open(const gige::control::DeviceAddress& address, PvAccessType access,
                         const gige::control::LinkSettings& settings,
                         std::function<void()> linkLost, std::shared_ptr<DeviceSession>& session);

    void disconnect() { mConnection->disconnect(); }
    bool isConnected() const { return mConnection->isConnected(); }

    PvGenParameterArray& features() { return *mFeatures; }
    const gige::genapi::NodeMap& nodes() const { return *mNodes; }
    gige::control::DeviceRegisters& registers() { return mConnection->registers(); }

    PvResult negotiatePacketSize(std::uint32_t channel, std::uint32_t defaultSize);
    PvResult setStreamDestination(const gige::net::Endpoint& destination, std::uint32_t channel);
    PvResult resetStreamDestination(std::uint32_t channel);

  private:
    explicit DeviceSession(std::unique_ptr<gige::control::DeviceConnection> connection);

    bool loadFeatures();
    void beforeCommand(std::string_view name) override;
    void afterFailedCommand(std::string_view name) override;
    void setAcquiring(bool acquiring);
    gige::control::StreamChannel streamChannel(std::uint32_t channel)
    {
        return {mConnection->registers(), channel};
    }

    std::unique_ptr<gige::control::DeviceConnection> mConnection;
    std::mutex mDestinationLock;
    gige::net::Endpoint mDestination{}; // of the stream that was set last; guarded by the lock
    DevicePort mPort{mConnection->registers()};
    std::unique_ptr<gige::genapi::NodeMap> mNodes;
    std::unique_ptr<GenParameterArray> mFeatures;
};

#endif
