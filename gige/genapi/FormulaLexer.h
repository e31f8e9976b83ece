#ifndef TELVO_GIGE_GENAPI_FORMULALEXER_H
#define TELVO_GIGE_GENAPI_FORMULALEXER_H

#include "Number.h"

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace gige::genapi
{

struct FormulaToken {
    enum class Kind : std::uint8_t { Number, Name, Symbol, End, Invalid };

    Kind kind = Kind::End;
    std::string_view text;           // as in the formula
    Number number = std::int64_t{0}; // of a Number
};

/// Cuts a formula into numbers, names (letters, digits, `_` and dots) and symbols.
class FormulaLexer
{
  public:
    /// @param formula must outlive this object and its tokens
    explicit FormulaLexer(std::string_view formula);

    const FormulaToken& current() const { return mCurrent; }
    void advance();

  private:
    FormulaToken scan();
    FormulaToken scanNumber();
    FormulaToken scanSymbol();
    FormulaToken take(FormulaToken::Kind kind, std::size_t length);

    std::string_view mRest;
    FormulaToken mCurrent;
};

} // namespace gige::genapi

#endif
