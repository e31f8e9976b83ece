/// What the parameter browser shows and edits, whatever stands behind it: a camera's feature tree
/// or settings of the host's own.
#ifndef TELVO_GIGE_UI_FEATURE_H
#define TELVO_GIGE_UI_FEATURE_H

#include "NodeInfo.h"
#include "NumberNode.h"

#include <cstdint>
#include <limits>
#include <memory>
#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace gige::ui
{

enum class FeatureKind : std::uint8_t {
    Integer,
    Float,
    Enumeration,
    Boolean,
    String,
    Command,
    Other, ///< shown, but neither read nor edited
};

/// What never changes of a feature.
struct FeatureInfo {
    std::string name{};
    std::string label{};
    std::string description{};
    std::string unit{};
    FeatureKind kind = FeatureKind::Other;
    genapi::Visibility visibility = genapi::Visibility::Beginner;
    genapi::Representation representation = genapi::Representation::Linear; ///< of an integer
};

struct ExecuteCommand {
    bool operator==(const ExecuteCommand&) const = default;
};
/// Of an enumeration and of a string: std::string.
using FeatureValue = std::variant<ExecuteCommand, std::int64_t, double, bool, std::string>;

struct IntegerLimits {
    std::int64_t minimum = std::numeric_limits<std::int64_t>::min();
    std::int64_t maximum = std::numeric_limits<std::int64_t>::max();
    std::int64_t increment = 1;
};

struct FloatLimits {
    double minimum = std::numeric_limits<double>::lowest();
    double maximum = std::numeric_limits<double>::max();
};

struct TextLimits {
    std::size_t maximumLength = std::numeric_limits<std::size_t>::max(); ///< bytes
};

using FeatureLimits = std::variant<std::monostate, IntegerLimits, FloatLimits, TextLimits>;

/// A feature as it was when it was read.
struct FeatureState {
    genapi::AccessMode access = genapi::AccessMode::NotAvailable;
    std::optional<FeatureValue> value{}; ///< none for commands, and where it cannot be read
    std::string error{};                 ///< why it cannot be read: "TIMEOUT"
    FeatureLimits limits{};
    std::vector<std::string> choices{}; ///< an enumeration's entries that are offered now

    bool isAvailable() const { return access >= genapi::AccessMode::WriteOnly; }
    bool isWritable() const
    {
        return access == genapi::AccessMode::WriteOnly || access == genapi::AccessMode::ReadWrite;
    }
};

/// Calls may wait for the device.
class Feature
{
  public:
    Feature() = default;
    virtual ~Feature() = default;
    Feature(const Feature&) = delete;
    Feature& operator=(const Feature&) = delete;

    virtual const FeatureInfo& info() const = 0;
    virtual FeatureState read() = 0;
    /// @return empty: done; else the reason's name: "OUT_OF_RANGE"
    [[nodiscard]] virtual std::string write(const FeatureValue& value) = 0;
};

/// A category with what is in it, or a feature.
struct FeatureNode {
    std::string label{};
    std::string description{};
    std::unique_ptr<Feature> feature{}; ///< null: a category
    std::vector<FeatureNode> children{};
};

/// Where features come from.
class FeatureSource
{
  public:
    FeatureSource() = default;
    virtual ~FeatureSource() = default;
    FeatureSource(const FeatureSource&) = delete;
    FeatureSource& operator=(const FeatureSource&) = delete;

    /// The outermost category. The features in it borrow from the source.
    virtual FeatureNode features() = 0;
    /// Makes the next reads ask the device again.
    virtual void forgetValues() = 0;
};

} // namespace gige::ui

#endif
