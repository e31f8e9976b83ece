#ifndef TELVO_GIGE_GENAPI_NUMBERNODE_H
#define TELVO_GIGE_GENAPI_NUMBERNODE_H

#include "NumberSource.h"

#include <memory>
#include <string>

namespace gige::genapi
{

enum class Representation : std::uint8_t {
    Linear,
    Logarithmic,
    Boolean,
    PureNumber,
    HexNumber,
    Ipv4Address,
    MacAddress,
};

/// How a user interface shows a number. What is missing here may stand at the node below.
struct Presentation {
    std::optional<Representation> representation;
    std::optional<std::string> unit;
};

/// Limits given by the node itself; what is missing comes from the source.
struct OwnLimits {
    std::optional<Operand> minimum;
    std::optional<Operand> maximum;
    std::optional<Operand> increment;
};

/// What integers and floats have in common.
class NumberNode : public Node
{
  public:
    using Node::Node;

    Representation representation() const;
    /// Empty when the description names none.
    std::string unit() const;

    // For the loader.
    void define(std::unique_ptr<NumberSource> source, OwnLimits limits, Presentation presentation);

  protected:
    Result<AccessMode> baseAccess(Evaluation& evaluation) override;
    Result<Number> readNumber(Evaluation& evaluation) override;
    Result<NumberRange> numberRange(Evaluation& evaluation, const LimitChoice& wanted) override;

    NumberSource& source() { return *mSource; }
    Result<Number> valueFor(ReadFrom readFrom);
    Result<NumberRange> rangeForHost(const LimitChoice& wanted);

  private:
    template <typename T>
    std::optional<T> shown(std::optional<T> Presentation::*item) const;

    std::unique_ptr<NumberSource> mSource;
    OwnLimits mLimits;
    Presentation mPresentation;
};

} // namespace gige::genapi

#endif
