#ifndef TELVO_PLATFORM_EBUS_PVGENPARAMETERARRAY_H
#define TELVO_PLATFORM_EBUS_PVGENPARAMETERARRAY_H

#include "PvGenParameter.h"

/// Features or parameters by name.
class PvGenParameterArray
{
  public:
    PvGenParameterArray() = default;
    virtual ~PvGenParameterArray() = default;
    PvGenParameterArray(const PvGenParameterArray&) = delete;
    PvGenParameterArray& operator=(const PvGenParameterArray&) = delete;

    /// @return null when there is no such feature; else the object for it, whose dynamic type is
    /// the feature's. The same name always gives the same object.
    virtual PvGenParameter* Get(const PvString& name) = 0;
};

#endif
