#ifndef TELVO_PLATFORM_EBUS_PVGENPARAMETER_H
#define TELVO_PLATFORM_EBUS_PVGENPARAMETER_H

#include "PvResult.h"

#include <cstdint>

/// A feature of a camera, or a parameter of a link or stream. Objects belong to the array that they
/// were got from and live as long as it does. Calls from several threads are serialised inside.
class PvGenParameter
{
  public:
    PvGenParameter() = default;
    virtual ~PvGenParameter() = default;
    PvGenParameter(const PvGenParameter&) = delete;
    PvGenParameter& operator=(const PvGenParameter&) = delete;

    /// False while the camera does not offer the feature in its present state.
    virtual bool IsAvailable() = 0;
};

/// A 64-bit integer with limits.
class PvGenInteger : public PvGenParameter
{
  public:
    virtual PvResult GetValue(std::int64_t& value) = 0;
    /// OUT_OF_RANGE outside the limits or off the increment; nothing is sent then.
    virtual PvResult SetValue(std::int64_t value) = 0;
    virtual PvResult GetMin(std::int64_t& minimum) = 0;
    virtual PvResult GetMax(std::int64_t& maximum) = 0;
};

/// One of several named entries.
class PvGenEnum : public PvGenParameter
{
  public:
    virtual PvResult GetValue(PvString& entryName) = 0;
    /// INVALID_PARAMETER for a name that is no entry, NOT_AVAILABLE for an entry not offered now.
    virtual PvResult SetValue(const PvString& entryName) = 0;
};

class PvGenBoolean : public PvGenParameter
{
  public:
    virtual PvResult GetValue(bool& value) = 0;
    virtual PvResult SetValue(bool value) = 0;
};

class PvGenString : public PvGenParameter
{
  public:
    virtual PvResult GetValue(PvString& value) = 0;
    virtual PvResult SetValue(const PvString& value) = 0;
};

class PvGenCommand : public PvGenParameter
{
  public:
    /// Starts the command; does not wait for its end.
    virtual PvResult Execute() = 0;
};

#endif
