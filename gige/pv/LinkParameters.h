#ifndef TELVO_GIGE_PV_LINKPARAMETERS_H
#define TELVO_GIGE_PV_LINKPARAMETERS_H

#include "HostParameters.h"
#include "LinkSettings.h"

/// A device's link settings, as parameters by name. Threads: any; each setting is atomic.
class LinkParameters
{
  public:
    LinkParameters();

    PvGenParameterArray& array() { return mArray; }
    const gige::control::LinkSettings& settings() const { return mSettings; }

  private:
    void addSetting(const char* name, std::int64_t minimum, std::atomic<std::uint32_t>& setting);

    gige::control::LinkSettings mSettings;
    HostParameters mArray;
};

#endif
