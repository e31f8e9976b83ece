#include "HostParameters.h"

#include <limits>
#include <utility>

class HostParameters::Parameter final : public PvGenInteger
{
  public:
    Parameter(Limits limits, Reader read, Writer write)
        : mLimits(limits), mRead(std::move(read)), mWrite(std::move(write))
    {
    }

    bool isWritable() const { return static_cast<bool>(mWrite); }
    const Limits& limits() const { return mLimits; }

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
    const Limits mLimits;
    const Reader mRead;
    const Writer mWrite; // empty: read-only
};

/// A parameter as the parameter browser shows and edits it.
class HostParameters::ShownParameter final : public gige::ui::Feature
{
  public:
    ShownParameter(const std::string& name, Parameter& parameter) : mParameter(parameter)
    {
        mInfo.name = name;
        mInfo.label = name;
        mInfo.kind = gige::ui::FeatureKind::Integer;
    }

    const gige::ui::FeatureInfo& info() const override { return mInfo; }

    gige::ui::FeatureState read() override
    {
        using gige::genapi::AccessMode;
        gige::ui::FeatureState state;
        std::int64_t value = 0;
        (void)mParameter.GetValue(value); // never fails
        state.value = value;
        if (mParameter.isWritable()) {
            state.access = AccessMode::ReadWrite;
            state.limits = gige::ui::IntegerLimits{.minimum = mParameter.limits().minimum,
                                                   .maximum = mParameter.limits().maximum};
        } else {
            state.access = AccessMode::ReadOnly;
        }
        return state;
    }

    std::string write(const gige::ui::FeatureValue& value) override
    {
        const auto* const number = std::get_if<std::int64_t>(&value);
        const PvResult result = number == nullptr ? PvResult(PvResult::Code::InvalidParameter)
                                                  : mParameter.SetValue(*number);
        return result.IsOK() ? std::string() : result.GetCodeString().GetAscii();
    }

  private:
    Parameter& mParameter;
    gige::ui::FeatureInfo mInfo;
};

HostParameters::HostParameters() = default;
HostParameters::~HostParameters() = default;

void HostParameters::addSetting(const std::string& name, Limits limits, Reader read, Writer write)
{
    mParameters[name] = std::make_unique<Parameter>(limits, std::move(read), std::move(write));
}

void HostParameters::addReading(const std::string& name, Reader read)
{
    constexpr Limits kAny{0, std::numeric_limits<std::int64_t>::max()};
    mParameters[name] = std::make_unique<Parameter>(kAny, std::move(read), Writer());
}

PvGenParameter* HostParameters::Get(const PvString& name)
{
    const auto found = mParameters.find(name.GetAscii());
    return found == mParameters.end() ? nullptr : found->second.get();
}

gige::ui::FeatureNode HostParameters::features()
{
    gige::ui::FeatureNode root;
    root.children.push_back(category("Settings", true));
    root.children.push_back(category("Statistics", false));
    return root;
}

gige::ui::FeatureNode HostParameters::category(const char* label, bool writable)
{
    gige::ui::FeatureNode category{.label = label};
    for (const auto& [name, parameter] : mParameters) {
        if (parameter->isWritable() == writable) {
            category.children.push_back(
                {.label = name, .feature = std::make_unique<ShownParameter>(name, *parameter)});
        }
    }
    return category;
}
