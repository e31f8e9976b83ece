#include "HostParameters.h"

#include <limits>
#include <utility>

namespace
{

class HostInteger final : public PvGenInteger
{
  public:
    HostInteger(HostParameters::Limits limits, HostParameters::Reader read,
                HostParameters::Writer write)
        : mLimits(limits), mRead(std::move(read)), mWrite(std::move(write))
    {
    }

    bool IsAvailable() override { return true; }

    PvResult GetValue(std::int64_t& value) override
    {
        value = mRead();
        return PvResult::Code::Ok;
    }

    PvResult SetValue(std::int64_t value) override
    {
        if (!mWrite) {
            return PvResult::Code::AccessDenied;
        }
        if (value < mLimits.minimum || value > mLimits.maximum) {
            return PvResult::Code::OutOfRange;
        }
        mWrite(value);
        return PvResult::Code::Ok;
    }

    PvResult GetMin(std::int64_t& minimum) override
    {
        minimum = mLimits.minimum;
        return PvResult::Code::Ok;
    }

    PvResult GetMax(std::int64_t& maximum) override
    {
        maximum = mLimits.maximum;
        return PvResult::Code::Ok;
    }

  private:
    const HostParameters::Limits mLimits;
    const HostParameters::Reader mRead;
    const HostParameters::Writer mWrite; // empty: read-only
};

} // namespace

void HostParameters::addSetting(const std::string& name, Limits limits, Reader read, Writer write)
{
    mParameters[name] = std::make_unique<HostInteger>(limits, std::move(read), std::move(write));
}

void HostParameters::addReading(const std::string& name, Reader read)
{
    constexpr Limits kAny{0, std::numeric_limits<std::int64_t>::max()};
    mParameters[name] = std::make_unique<HostInteger>(kAny, std::move(read), Writer());
}

PvGenParameter* HostParameters::Get(const PvString& name)
{
    const auto found = mParameters.find(name.GetAscii());
    return found == mParameters.end() ? nullptr : found->second.get();
}
