#ifndef TELVO_GIGE_GENAPI_STRINGNODE_H
#define TELVO_GIGE_GENAPI_STRINGNODE_H

#include "Node.h"

#include <string>
#include <string_view>
#include <variant>

namespace gige::genapi
{

/// Text: String, StringReg.
class StringNode : public Node
{
  public:
    StringNode(NodeMapState& state, std::string name);

    /// Up to the first NUL or the register's end.
    Result<std::string> value(ReadFrom readFrom = ReadFrom::Cache);
    /// OutOfRange for text longer than the register; nothing is sent then.
    Status setValue(std::string_view value);
    /// Longest text that can be written. A value on the host's side: kRegisterSizeLimit.
    Result<std::size_t> maximumLength();

    // For the loader.
    using InRegister = std::monostate; // in the node's own register
    using Source = std::variant<std::string, StringNode*, InRegister>;
    void define(Source source) { mSource = std::move(source); }

  protected:
    Result<AccessMode> baseAccess(Evaluation& evaluation) override;

  private:
    Result<std::string> readText(Evaluation& evaluation);
    Status writeText(Evaluation& evaluation, std::string_view text);
    Result<std::size_t> longest(Evaluation& evaluation);
    Result<std::string> readRegister(Evaluation& evaluation);
    Status writeRegister(Evaluation& evaluation, std::string_view text);

    Source mSource;
};

} // namespace gige::genapi

#endif
