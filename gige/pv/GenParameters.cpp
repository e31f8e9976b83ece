#include "GenParameters.h"

#include "NodeFeatures.h"
#include "StatusTranslations.h"

#include <string_view>
#include <utility>

using gige::genapi::AccessMode;
using gige::genapi::BooleanNode;
using gige::genapi::CommandNode;
using gige::genapi::EnumerationNode;
using gige::genapi::IntegerNode;
using gige::genapi::Node;
using gige::genapi::NodeKind;
using gige::genapi::NodeMap;
using gige::genapi::Result;
using gige::genapi::Status;
using gige::genapi::StringNode;

namespace
{

using IsConnected = GenParameterArray::IsConnected;

/// What the parameters of all kinds share: the node, and whether its device is still there.
template <typename Parameter, typename NodeType>
class Adapter : public Parameter
{
  public:
    Adapter(Node& node, const IsConnected& isConnected)
        : mNode(static_cast<NodeType&>(node)), mIsConnected(isConnected)
    {
    }

    bool IsAvailable() override
    {
        const Result<AccessMode> mode =
            mIsConnected() ? mNode.accessMode() : Result<AccessMode>(Status::PortNotConnected);
        return mode && *mode >= AccessMode::WriteOnly;
    }

  protected:
    /// `value` is changed on success only.
    template <typename Value, typename Read>
    PvResult read(Value& value, Read operation)
    {
        if (!mIsConnected()) {
            return PvResult::Code::NotConnected;
        }
        auto result = operation(mNode);
        const auto status = result.status();
        if (result) {
            value = *std::move(result);
        }
        return toPvResult(status);
    }

    template <typename Write>
    PvResult write(Write operation)
    {
        return mIsConnected() ? toPvResult(operation(mNode)) : PvResult::Code::NotConnected;
    }

  private:
    NodeType& mNode;
    const IsConnected& mIsConnected;
};

using PlainParameter = Adapter<PvGenParameter, Node>;

class IntegerParameter final : public Adapter<PvGenInteger, IntegerNode>
{
  public:
    using Adapter::Adapter;

    PvResult GetValue(std::int64_t& value) override
    {
        return read(value, [](IntegerNode& node) { return node.value(); });
    }
    PvResult SetValue(std::int64_t value) override
    {
        return write([value](IntegerNode& node) { return node.setValue(value); });
    }
    PvResult GetMin(std::int64_t& minimum) override
    {
        return read(minimum, [](IntegerNode& node) { return node.minimum(); });
    }
    PvResult GetMax(std::int64_t& maximum) override
    {
        return read(maximum, [](IntegerNode& node) { return node.maximum(); });
    }
};

class EnumParameter final : public Adapter<PvGenEnum, EnumerationNode>
{
  public:
    using Adapter::Adapter;

    PvResult GetValue(PvString& entryName) override
    {
        return read(entryName, [](EnumerationNode& node) { return node.text(); });
    }
    PvResult SetValue(const PvString& entryName) override
    {
        return write([&](EnumerationNode& node) { return node.setText(entryName.GetAscii()); });
    }
};

class BooleanParameter final : public Adapter<PvGenBoolean, BooleanNode>
{
  public:
    using Adapter::Adapter;

    PvResult GetValue(bool& value) override
    {
        return read(value, [](BooleanNode& node) { return node.value(); });
    }
    PvResult SetValue(bool value) override
    {
        return write([value](BooleanNode& node) { return node.setValue(value); });
    }
};

class StringParameter final : public Adapter<PvGenString, StringNode>
{
  public:
    using Adapter::Adapter;

    PvResult GetValue(PvString& value) override
    {
        return read(value, [](StringNode& node) { return node.value(); });
    }
    PvResult SetValue(const PvString& value) override
    {
        return write([&](StringNode& node) { return node.setValue(value.GetAscii()); });
    }
};

class CommandParameter final : public Adapter<PvGenCommand, CommandNode>
{
  public:
    CommandParameter(Node& node, const IsConnected& isConnected, CommandObserver* observer)
        : Adapter(node, isConnected), mObserver(observer)
    {
    }

    PvResult Execute() override
    {
        return write([this](CommandNode& node) {
            return mObserver == nullptr ? node.execute() : executeObserved(node);
        });
    }

  private:
    Status executeObserved(CommandNode& node)
    {
        mObserver->beforeCommand(node.name());
        const Status status = node.execute();
        if (status != Status::Ok) {
            mObserver->afterFailedCommand(node.name());
        }
        return status;
    }

    CommandObserver* mObserver;
};

} // namespace

GenParameterArray::GenParameterArray(NodeMap& map, IsConnected isConnected,
                                     CommandObserver* observer)
    : mMap(map), mIsConnected(std::move(isConnected)), mObserver(observer)
{
}

PvGenParameter* GenParameterArray::Get(const PvString& name)
{
    const std::string_view key = name.GetAscii();
    Node* const node = mMap.find(key);
    if (node == nullptr) {
        return nullptr;
    }
    const std::lock_guard lock(mLock);
    auto found = mParameters.find(key);
    if (found == mParameters.end()) {
        found = mParameters.emplace(key, create(*node)).first;
    }
    return found->second.get();
}

gige::ui::FeatureNode GenParameterArray::features()
{
    return gige::ui::featuresOf(mMap);
}

std::unique_ptr<PvGenParameter> GenParameterArray::create(Node& node) const
{
    switch (node.kind()) {
    case NodeKind::Integer:
        return std::make_unique<IntegerParameter>(node, mIsConnected);
    case NodeKind::Enumeration:
        return std::make_unique<EnumParameter>(node, mIsConnected);
    case NodeKind::Boolean:
        return std::make_unique<BooleanParameter>(node, mIsConnected);
    case NodeKind::String:
        return std::make_unique<StringParameter>(node, mIsConnected);
    case NodeKind::Command:
        return std::make_unique<CommandParameter>(node, mIsConnected, mObserver);
    default:
        return std::make_unique<PlainParameter>(node, mIsConnected);
    }
}
