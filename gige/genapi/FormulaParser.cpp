#include "Formula.h"

#include "GenApiLimits.h"
#include "Number.h"

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <system_error>

namespace gige::genapi
{

namespace
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

// Longest first, so that "<<" is not read as two "<".
constexpr std::string_view kSymbols[] = {"**", "<<", ">>", "<=", ">=", "<>", "!=", "==", "&&",
                                         "||", "+",  "-",  "*",  "/",  "%",  "&",  "|",  "^",
                                         "~",  "<",  ">",  "=",  "?",  ":",  "(",  ")",  ","};

constexpr int kHexBase = 16;

bool isDigit(char character)
{
    return character >= '0' && character <= '9';
}

bool startsName(char character)
{
    return (character >= 'A' && character <= 'Z') || (character >= 'a' && character <= 'z') ||
           character == '_';
}

bool continuesName(char character)
{
    return startsName(character) || isDigit(character) || character == '.';
}

bool isBlank(char character)
{
    return character == ' ' || (character >= '\t' && character <= '\r');
}

FormulaLexer::FormulaLexer(std::string_view formula) : mRest(formula)
{
    advance();
}

void FormulaLexer::advance()
{
    mCurrent = scan();
}

FormulaToken FormulaLexer::scan()
{
    mRest.remove_prefix(
        static_cast<std::size_t>(std::ranges::find_if_not(mRest, isBlank) - mRest.begin()));
    if (mRest.empty()) {
        return {};
    }
    const char first = mRest.front();
    if (isDigit(first) || (first == '.' && mRest.size() > 1 && isDigit(mRest[1]))) {
        return scanNumber();
    }
    if (startsName(first)) {
        const auto end = std::ranges::find_if_not(mRest, continuesName);
        return take(FormulaToken::Kind::Name, static_cast<std::size_t>(end - mRest.begin()));
    }
    return scanSymbol();
}

FormulaToken FormulaLexer::scanNumber()
{
    const char* const begin = mRest.data();
    const char* const end = begin + mRest.size();
    const bool isHexadecimal = mRest.starts_with("0x") || mRest.starts_with("0X");
    if (isHexadecimal) {
        std::uint64_t value = 0; // a pattern of 64 bits: the highest one makes it negative
        const auto [stop, error] = std::from_chars(begin + 2, end, value, kHexBase);
        FormulaToken token =
            take(error == std::errc{} ? FormulaToken::Kind::Number : FormulaToken::Kind::Invalid,
                 static_cast<std::size_t>(stop - begin));
        token.number = static_cast<std::int64_t>(value);
        return token;
    }
    // First as a decimal, to find the end; what is also a whole integer there stays exact.
    double decimal = 0;
    const auto [stop, error] = std::from_chars(begin, end, decimal);
    FormulaToken token =
        take(error == std::errc{} ? FormulaToken::Kind::Number : FormulaToken::Kind::Invalid,
             static_cast<std::size_t>(stop - begin));
    token.number = decimal;
    std::int64_t integer = 0;
    if (const auto whole = std::from_chars(begin, stop, integer);
        whole.ec == std::errc{} && whole.ptr == stop) {
        token.number = integer;
    }
    return token;
}

FormulaToken FormulaLexer::scanSymbol()
{
    const auto* const symbol = std::ranges::find_if(
        kSymbols, [this](std::string_view candidate) { return mRest.starts_with(candidate); });
    return symbol == std::end(kSymbols) ? take(FormulaToken::Kind::Invalid, 1)
                                        : take(FormulaToken::Kind::Symbol, symbol->size());
}

FormulaToken FormulaLexer::take(FormulaToken::Kind kind, std::size_t length)
{
    FormulaToken token;
    token.kind = kind;
    token.text = mRest.substr(0, length);
    mRest.remove_prefix(length);
    return token;
}

using Kind = FormulaToken::Kind;

constexpr int kOrPrecedence = 2;
constexpr int kAndPrecedence = 3;
constexpr int kPowerPrecedence = 12;

struct BinaryRow {
    std::string_view symbol;
    int precedence; // 2 lowest; 1 is `?:`, which is lower still
    BinaryOperator operation;
};

// `||` and `&&` stand here for their precedence only: they compile to jumps.
constexpr BinaryRow kBinaryRows[] = {
    {"||", kOrPrecedence, BinaryOperator::BitOr},
    {"&&", kAndPrecedence, BinaryOperator::BitAnd},
    {"|", 4, BinaryOperator::BitOr},
    {"^", 5, BinaryOperator::BitXor},
    {"&", 6, BinaryOperator::BitAnd},
    {"=", 7, BinaryOperator::Equal},
    {"==", 7, BinaryOperator::Equal},
    {"<>", 7, BinaryOperator::NotEqual},
    {"!=", 7, BinaryOperator::NotEqual},
    {"<", 8, BinaryOperator::Less},
    {">", 8, BinaryOperator::Greater},
    {"<=", 8, BinaryOperator::LessOrEqual},
    {">=", 8, BinaryOperator::GreaterOrEqual},
    {"<<", 9, BinaryOperator::ShiftLeft},
    {">>", 9, BinaryOperator::ShiftRight},
    {"+", 10, BinaryOperator::Add},
    {"-", 10, BinaryOperator::Subtract},
    {"*", 11, BinaryOperator::Multiply},
    {"/", 11, BinaryOperator::Divide},
    {"%", 11, BinaryOperator::Modulo},
    {"**", kPowerPrecedence, BinaryOperator::Power},
};

const BinaryRow* findBinary(const FormulaToken& token)
{
    const auto* const row = std::ranges::find(kBinaryRows, token.text, &BinaryRow::symbol);
    return token.kind != Kind::Symbol || row == std::end(kBinaryRows) ? nullptr : row;
}

} // namespace

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

FormulaParser::FormulaParser(std::string_view text, const FormulaNames& names)
    : mLexer(text), mNames(names)
{
}

Result<Formula> FormulaParser::parse()
{
    if (parseConditional() && mLexer.current().kind != Kind::End) {
        fail(Status::FormulaMalformed);
    }
    if (mStatus != Status::Ok) {
        return mStatus;
    }
    return std::move(mFormula);
}

// One level deeper: the only way in which the parser recurses without bound.
bool FormulaParser::nested(Rule rule)
{
    if (mDepth == kFormulaDepthLimit) {
        return fail(Status::FormulaTooDeep);
    }
    ++mDepth;
    const bool isComplete = (this->*rule)();
    --mDepth;
    return isComplete;
}

bool FormulaParser::parseConditional()
{
    std::vector<std::size_t> branchEnds;
    bool isComplete = parseBinary(kOrPrecedence);
    while (isComplete && accept("?")) {
        const std::size_t toElse = emit(Operation::JumpIfZero);
        isComplete = nested(&FormulaParser::parseConditional) && expect(":");
        branchEnds.push_back(emit(Operation::Jump));
        jumpHere(toElse);
        isComplete = isComplete && parseBinary(kOrPrecedence);
    }
    // One target for all of a chain, `c ? x : d ? y : z`: what follows it.
    std::ranges::for_each(branchEnds, [this](std::size_t jump) { jumpHere(jump); });
    return isComplete;
}

bool FormulaParser::parseBinary(int leastPrecedence)
{
    if (!parseUnary()) {
        return false;
    }
    for (const BinaryRow* row = findBinary(mLexer.current());
         row != nullptr && row->precedence >= leastPrecedence; row = findBinary(mLexer.current())) {
        mLexer.advance();
        const bool isLogical = row->precedence <= kAndPrecedence;
        const bool isOr = row->precedence == kOrPrecedence;
        const std::size_t shortcut =
            isLogical ? emit(isOr ? Operation::OneOrNext : Operation::ZeroOrNext) : 0;
        if (!parseRight(row->precedence)) {
            return false;
        }
        if (isLogical) {
            // `&&` and `||` give 1 or 0, whatever their operands are.
            emit(Operation::ToTruth);
            jumpHere(shortcut);
        } else {
            emit(Operation::Binary, static_cast<std::size_t>(row->operation));
        }
    }
    return true;
}

// `**` alone groups from the right.
bool FormulaParser::parseRight(int precedence)
{
    return precedence == kPowerPrecedence ? nested(&FormulaParser::parsePower)
                                          : parseBinary(precedence + 1);
}

bool FormulaParser::parsePower()
{
    return parseBinary(kPowerPrecedence);
}

bool FormulaParser::parseUnary()
{
    if (accept("+")) {
        return nested(&FormulaParser::parseUnary);
    }
    for (const auto& [symbol, operation] :
         {std::pair{"-", UnaryOperator::Negate}, std::pair{"~", UnaryOperator::Complement}}) {
        if (accept(symbol)) {
            const bool isComplete = nested(&FormulaParser::parseUnary);
            emit(Operation::Unary, static_cast<std::size_t>(operation));
            return isComplete;
        }
    }
    return parsePrimary();
}

bool FormulaParser::parsePrimary()
{
    const FormulaToken token = mLexer.current();
    if (token.kind == Kind::Number) {
        mLexer.advance();
        return emitConstant(token.number);
    }
    if (token.kind == Kind::Name) {
        return parseName();
    }
    return expect("(") && nested(&FormulaParser::parseConditional) && expect(")");
}

bool FormulaParser::parseName()
{
    const std::string_view name = mLexer.current().text;
    mLexer.advance();
    // Declared names win: descriptions call their variables "E" and "SIN", too.
    if (const auto declared = mNames.find(name); declared != mNames.end()) {
        emit(Operation::Operand, declared->second);
        return true;
    }
    if (const double* const constant = findConstant(name); constant != nullptr) {
        return parseConstant(*constant);
    }
    const FormulaFunction* const function = findFunction(name);
    return function != nullptr ? parseCall(*function) : fail(Status::FormulaMalformed);
}

// Some descriptions call their constants: `PI()`.
bool FormulaParser::parseConstant(double value)
{
    return emitConstant(value) && (!accept("(") || expect(")"));
}

bool FormulaParser::parseCall(const FormulaFunction& function)
{
    std::size_t count = 0;
    bool isComplete = expect("(");
    do {
        isComplete = isComplete && nested(&FormulaParser::parseConditional);
        ++count;
    } while (isComplete && accept(","));
    if (!isComplete || !expect(")")) {
        return false;
    }
    if (count < function.leastArguments || count > function.mostArguments) {
        return fail(Status::FormulaMalformed);
    }
    mFormula.mFunctions.push_back(&function);
    emit(count == 1 ? Operation::Call1 : Operation::Call2, mFormula.mFunctions.size() - 1);
    return true;
}

// Always false; the first failure is the one reported.
bool FormulaParser::fail(Status status)
{
    mStatus = mStatus == Status::Ok ? status : mStatus;
    return false;
}

bool FormulaParser::accept(std::string_view symbol)
{
    if (mLexer.current().kind != Kind::Symbol || mLexer.current().text != symbol) {
        return false;
    }
    mLexer.advance();
    return true;
}

bool FormulaParser::expect(std::string_view symbol)
{
    return accept(symbol) || fail(Status::FormulaMalformed);
}

bool FormulaParser::emitConstant(const Number& value)
{
    mFormula.mConstants.push_back(value);
    emit(Operation::Constant, mFormula.mConstants.size() - 1);
    return true;
}

std::size_t FormulaParser::emit(Operation operation, std::size_t argument)
{
    mFormula.mCode.push_back({operation, argument});
    return mFormula.mCode.size() - 1;
}

void FormulaParser::jumpHere(std::size_t instruction)
{
    mFormula.mCode[instruction].argument = mFormula.mCode.size();
}

Result<Formula> Formula::compile(std::string_view text, const FormulaNames& names)
{
    if (text.size() > kFormulaLengthLimit) {
        return Status::FormulaTooLong;
    }
    return FormulaParser(text, names).parse();
}

} // namespace gige::genapi
