#include "FormulaLexer.h"

#include <algorithm>
#include <charconv>
#include <system_error>

namespace gige::genapi
{

namespace
{

// Longest first, so that "<<" is not read as two "<".
constexpr std::string_view kSymbols[] = {"**", "<<", ">>", "<=", ">=", "<>", "!=", "==", "&&",
                                         "||", "+",  "-",  "*",  "/",  "%",  "&",  "|",  "^",
                                         "~",  "<",  ">",  "=",  "?",  ":",  "(",  ")",  ","};

constexpr int kHexadecimal = 16;

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

} // namespace

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
        std::uint64_t value = 0;
        const auto [stop, error] = std::from_chars(begin + 2, end, value, kHexadecimal);
        FormulaToken token =
            take(error == std::errc{} ? FormulaToken::Kind::Number : FormulaToken::Kind::Invalid,
                 static_cast<std::size_t>(stop - begin));
        token.number = static_cast<std::int64_t>(value);
        return token;
    }
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

} // namespace gige::genapi
