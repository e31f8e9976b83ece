#ifndef TELVO_TESTS_GIGE_UI_FAKEFEATURES_H
#define TELVO_TESTS_GIGE_UI_FAKEFEATURES_H

#include "Feature.h"

#include <atomic>
#include <mutex>
#include <utility>

namespace gige::ui
{

/// An integer from 1 to 100 that is kept in memory. Threads: any.
class FakeFeature final : public Feature
{
  public:
    explicit FakeFeature(const std::string& name,
                         genapi::Visibility visibility = genapi::Visibility::Beginner)
    {
        mInfo.name = name;
        mInfo.label = name;
        mInfo.kind = FeatureKind::Integer;
        mInfo.visibility = visibility;
    }

    const FeatureInfo& info() const override { return mInfo; }

    FeatureState read() override
    {
        FeatureState state;
        state.access = genapi::AccessMode::ReadWrite;
        state.value = std::int64_t{number};
        state.limits = IntegerLimits{.minimum = 1, .maximum = 100};
        return state;
    }

    std::string write(const FeatureValue& value) override
    {
        if (refuses) {
            return "BUSY";
        }
        number = std::get<std::int64_t>(value);
        return {};
    }

    std::atomic<std::int64_t> number{10};
    std::atomic<bool> refuses{false};

  private:
    FeatureInfo mInfo;
};

inline FeatureNode category(const std::string& label)
{
    FeatureNode node;
    node.label = label;
    return node;
}

inline FeatureNode feature(const std::string& name,
                           genapi::Visibility visibility = genapi::Visibility::Beginner)
{
    FeatureNode node;
    node.label = name;
    node.feature = std::make_unique<FakeFeature>(name, visibility);
    return node;
}

/// Root with Image (Width, Height) and Device (Name; Memory (Size, expert)).
inline FeatureNode fakeTree()
{
    FeatureNode image = category("Image");
    image.children.push_back(feature("Width"));
    image.children.push_back(feature("Height"));
    FeatureNode memory = category("Memory");
    memory.children.push_back(feature("Size", genapi::Visibility::Expert));
    FeatureNode device = category("Device");
    device.children.push_back(feature("Name"));
    device.children.push_back(std::move(memory));
    FeatureNode root = category("Root");
    root.children.push_back(std::move(image));
    root.children.push_back(std::move(device));
    return root;
}

} // namespace gige::ui

#endif
