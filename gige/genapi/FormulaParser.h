#ifndef TELVO_GIGE_GENAPI_FORMULAPARSER_H
#define TELVO_GIGE_GENAPI_FORMULAPARSER_H

#include "Formula.h"
#include "FormulaLexer.h"

namespace gige::genapi
{

/// Compiles one formula by precedence climbing. Chains (`a + b + …`, `c ? x : d ? y : …`) are
/// loops; only what is nested in parentheses, signs, powers or branches recurses, up to
/// kFormulaDepthLimit.
class FormulaParser
{
  public:
    /// Both must outlive this object.
    FormulaParser(std::string_view text, const FormulaNames& names);

    Result<Formula> parse();

  private:
    using Operation = Formula::Operation;

    using Rule = bool (FormulaParser::*)();

    bool nested(Rule rule);
    bool parseConditional();
    bool parseBinary(int leastPrecedence);
    bool parseRight(int precedence);
    bool parsePower();
    bool parseUnary();
    bool parsePrimary();
    bool parseName();
    bool parseCall(const FormulaFunction& function);
    bool parseConstant(double value);

    bool fail(Status status);
    bool accept(std::string_view symbol);
    bool expect(std::string_view symbol);
    bool emitConstant(const Number& value);
    std::size_t emit(Operation operation, std::size_t argument = 0);
    void jumpHere(std::size_t instruction);

    FormulaLexer mLexer;
    const FormulaNames& mNames;
    Formula mFormula;
    Status mStatus = Status::Ok;
    std::size_t mDepth = 0;
};

} // namespace gige::genapi

#endif
