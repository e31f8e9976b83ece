#ifndef TELVO_GIGE_PV_GENPARAMETERS_H
#define TELVO_GIGE_PV_GENPARAMETERS_H

#include "Feature.h"
#include "NodeMap.h"
#include "PvGenParameterArray.h"

#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>

/// Hears of a device's commands, on the thread that executes them.
class CommandObserver
{
  public:
    virtual ~CommandObserver() = default;
    virtual void beforeCommand(std::string_view name) = 0;
    virtual void afterFailedCommand(std::string_view name) = 0;
};

/// The features of a device by name. Integers, enumerations, booleans, strings and commands come as
/// the class of their kind, all other nodes as a plain PvGenParameter.
///
/// Once the link is gone, every access answers NOT_CONNECTED without asking the device, and no
/// feature is available: what the cache still knows is not the camera any more.
///
/// Any thread may call Get and the parameters; mLock guards mParameters.
class GenParameterArray final : public PvGenParameterArray, public gige::ui::FeatureSource
{
  public:
    using IsConnected = std::function<bool()>;

    /// @param map          must outlive this object
    /// @param isConnected  called from any thread, at each access
    /// @param observer     must outlive this object; may be null
    GenParameterArray(gige::genapi::NodeMap& map, IsConnected isConnected,
                      CommandObserver* observer = nullptr);

    PvGenParameter* Get(const PvString& name) override;

    gige::ui::FeatureNode features() override;
    void forgetValues() override { mMap.invalidate(); }

  private:
    std::unique_ptr<PvGenParameter> create(gige::genapi::Node& node) const;

    gige::genapi::NodeMap& mMap;
    IsConnected mIsConnected;
    CommandObserver* mObserver;
    std::mutex mLock;
    std::map<std::string, std::unique_ptr<PvGenParameter>, std::less<>> mParameters;
};

#endif
