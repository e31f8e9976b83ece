#ifndef TELVO_GIGE_PV_HOSTPARAMETERS_H
#define TELVO_GIGE_PV_HOSTPARAMETERS_H

#include "Feature.h"
#include "PvGenParameterArray.h"

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string>

/// Parameters of the link or the stream: they live in the host, not in the camera. Added by their
/// owner before anyone else sees the array; afterwards any thread may read and write them.
class HostParameters final : public PvGenParameterArray, public gige::ui::FeatureSource
{
  public:
    using Reader = std::function<std::int64_t()>;
    using Writer = std::function<void(std::int64_t)>;

    struct Limits {
        std::int64_t minimum;
        std::int64_t maximum;
    };

    HostParameters();
    ~HostParameters() override;

    /// A setting: read and write act on the owner's value; a value outside the limits is refused.
    void addSetting(const std::string& name, Limits limits, Reader read, Writer write);
    /// A number that only the owner changes.
    void addReading(const std::string& name, Reader read);

    PvGenParameter* Get(const PvString& name) override;

    /// The settings in one category, the readings in another.
    gige::ui::FeatureNode features() override;
    void forgetValues() override {} // every read asks the owner

  private:
    class Parameter;
    class ShownParameter;

    /// @param writable  which of the parameters are in it
    gige::ui::FeatureNode category(const char* label, bool writable);

    std::map<std::string, std::unique_ptr<Parameter>> mParameters;
};

#endif
