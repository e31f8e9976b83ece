#include "NodeFeatures.h"

#include <algorithm>
#include <utility>

namespace gige::ui
{

namespace
{

using genapi::AccessMode;
using genapi::BooleanNode;
using genapi::CategoryNode;
using genapi::CommandNode;
using genapi::EnumerationNode;
using genapi::FloatNode;
using genapi::IntegerNode;
using genapi::Node;
using genapi::NodeKind;
using genapi::NumberNode;
using genapi::Result;
using genapi::Status;
using genapi::StringNode;

/// Levels of categories.
constexpr std::size_t kDepthLimit = 16;
/// A feature may be in several categories, and so may a category: their number is bounded.
constexpr std::size_t kShownLimit = 50'000;

FeatureKind kindOf(NodeKind kind)
{
    switch (kind) {
    case NodeKind::Integer:
        return FeatureKind::Integer;
    case NodeKind::Float:
        return FeatureKind::Float;
    case NodeKind::Boolean:
        return FeatureKind::Boolean;
    case NodeKind::String:
        return FeatureKind::String;
    case NodeKind::Command:
        return FeatureKind::Command;
    case NodeKind::Enumeration:
        return FeatureKind::Enumeration;
    default:
        return FeatureKind::Other;
    }
}

std::string descriptionOf(const Node& node)
{
    return node.info().description.empty() ? node.info().toolTip : node.info().description;
}

FeatureInfo infoOf(const Node& node)
{
    FeatureInfo info{.name = node.info().name,
                     .label = node.info().displayName,
                     .description = descriptionOf(node),
                     .kind = kindOf(node.kind()),
                     .visibility = node.info().visibility};
    if (const auto* const number = dynamic_cast<const NumberNode*>(&node)) {
        info.unit = number->unit();
        info.representation = number->representation();
    }
    return info;
}

bool isReadable(AccessMode access)
{
    return access >= AccessMode::ReadOnly;
}

/// @return the limits as far as the device tells them
template <typename Limits, typename NodeType>
Limits numberLimits(NodeType& node)
{
    Limits limits;
    if (const auto minimum = node.minimum()) {
        limits.minimum = *minimum;
    }
    if (const auto maximum = node.maximum()) {
        limits.maximum = *maximum;
    }
    return limits;
}

FeatureLimits limitsOf(IntegerNode& node)
{
    auto limits = numberLimits<IntegerLimits>(node);
    if (const auto increment = node.increment()) {
        limits.increment = *increment;
    }
    return limits;
}

FeatureLimits limitsOf(FloatNode& node)
{
    return numberLimits<FloatLimits>(node);
}

FeatureLimits limitsOf(StringNode& node)
{
    const auto longest = node.maximumLength();
    return longest ? FeatureLimits(TextLimits{*longest}) : FeatureLimits();
}

std::vector<std::string> offeredEntries(EnumerationNode& node)
{
    std::vector<std::string> offered;
    for (const auto& entry : node.entries()) {
        const Result<AccessMode> access = entry->accessMode();
        if (access && *access >= AccessMode::WriteOnly) {
            offered.push_back(entry->symbolic());
        }
    }
    return offered;
}

/// Value of one kind of node into the state, or the reason why there is none.
template <typename T>
void readInto(FeatureState& state, Result<T> value)
{
    if (!isReadable(state.access)) {
        return;
    }
    if (value) {
        state.value = *std::move(value);
    } else {
        state.error = name(value.status());
    }
}

template <typename T>
Status writeFrom(const FeatureValue& value, const auto& write)
{
    const T* const typed = std::get_if<T>(&value);
    return typed == nullptr ? Status::WrongKind : write(*typed);
}

class NodeFeature final : public Feature
{
  public:
    explicit NodeFeature(Node& node) : mNode(node), mInfo(infoOf(node)) {}

    const FeatureInfo& info() const override { return mInfo; }

    FeatureState read() override
    {
        FeatureState state;
        const Result<AccessMode> access = mNode.accessMode();
        if (!access) {
            state.error = name(access.status());
            return state;
        }
        state.access = *access;
        if (state.isAvailable()) {
            readContents(state);
        }
        return state;
    }

    std::string write(const FeatureValue& value) override
    {
        const Status status = writeValue(value);
        return status == Status::Ok ? std::string() : name(status);
    }

  private:
    template <typename NodeType>
    NodeType& as()
    {
        return static_cast<NodeType&>(mNode);
    }

    void readContents(FeatureState& state)
    {
        switch (mInfo.kind) {
        case FeatureKind::Integer:
            state.limits = limitsOf(as<IntegerNode>());
            return readInto(state, as<IntegerNode>().value());
        case FeatureKind::Float:
            state.limits = limitsOf(as<FloatNode>());
            return readInto(state, as<FloatNode>().value());
        case FeatureKind::Enumeration:
            state.choices = offeredEntries(as<EnumerationNode>());
            return readInto(state, as<EnumerationNode>().text());
        case FeatureKind::Boolean:
            return readInto(state, as<BooleanNode>().value());
        case FeatureKind::String:
            state.limits = limitsOf(as<StringNode>());
            return readInto(state, as<StringNode>().value());
        case FeatureKind::Command:
        case FeatureKind::Other:
            return;
        }
    }

    Status writeValue(const FeatureValue& value)
    {
        switch (mInfo.kind) {
        case FeatureKind::Integer:
            return writeFrom<std::int64_t>(
                value, [this](std::int64_t one) { return as<IntegerNode>().setValue(one); });
        case FeatureKind::Float:
            return writeFrom<double>(value,
                                     [this](double one) { return as<FloatNode>().setValue(one); });
        case FeatureKind::Enumeration:
            return writeFrom<std::string>(value, [this](const std::string& one) {
                return as<EnumerationNode>().setText(one);
            });
        case FeatureKind::Boolean:
            return writeFrom<bool>(value,
                                   [this](bool one) { return as<BooleanNode>().setValue(one); });
        case FeatureKind::String:
            return writeFrom<std::string>(
                value, [this](const std::string& one) { return as<StringNode>().setValue(one); });
        case FeatureKind::Command:
            return as<CommandNode>().execute();
        case FeatureKind::Other:
            break;
        }
        return Status::WrongKind;
    }

    Node& mNode;
    FeatureInfo mInfo;
};

/// Descends a description that may lead in circles.
class Descent
{
  public:
    FeatureNode enter(const CategoryNode& category)
    {
        FeatureNode shown{.label = category.info().displayName,
                          .description = descriptionOf(category)};
        mAbove.push_back(&category);
        for (Node* const node : category.features()) {
            if (++mShown > kShownLimit) {
                break;
            }
            add(*node, shown.children);
        }
        mAbove.pop_back();
        return shown;
    }

  private:
    void add(Node& node, std::vector<FeatureNode>& siblings)
    {
        const auto* const category = dynamic_cast<const CategoryNode*>(&node);
        if (category == nullptr) {
            siblings.push_back({.label = node.info().displayName,
                                .description = descriptionOf(node),
                                .feature = std::make_unique<NodeFeature>(node)});
        } else if (mAbove.size() < kDepthLimit && !isAbove(category)) {
            siblings.push_back(enter(*category));
        }
    }

    bool isAbove(const CategoryNode* category) const
    {
        return std::ranges::find(mAbove, category) != mAbove.end();
    }

    std::vector<const CategoryNode*> mAbove;
    std::size_t mShown = 0;
};

} // namespace

FeatureNode featuresOf(const genapi::NodeMap& map)
{
    const CategoryNode* const root = map.root();
    return root == nullptr ? FeatureNode() : Descent().enter(*root);
}

std::unique_ptr<Feature> featureOf(Node& node)
{
    return std::make_unique<NodeFeature>(node);
}

} // namespace gige::ui
