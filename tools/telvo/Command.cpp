#include "Command.h"

#include "Utf8Path.h"

#include <CLI/CLI.hpp>
#include <cstdint>
#include <filesystem>
#include <iomanip>
#include <limits>
#include <optional>
#include <sstream>
#include <utility>

namespace telvo
{

namespace
{

/// 31536000 rather than 3.1536e+07.
template <typename Number>
std::string numberText(Number number)
{
    std::ostringstream text;
    text << std::setprecision(std::numeric_limits<Number>::digits10) << number;
    return text.str();
}

} // namespace

Option& Option::type(const char* name)
{
    mOption->type_name(name);
    return *this;
}

Option& Option::showDefault()
{
    mOption->capture_default_str();
    return *this;
}

Option& Option::required()
{
    mOption->required();
    return *this;
}

template <typename Number>
Option& Option::within(Number minimum, Number maximum)
{
    mOption->check([minimum, maximum](const std::string& word) {
        Number number{};
        const bool isOne = CLI::detail::lexical_cast(word, number) && number >= minimum &&
                           number <= maximum; // what "nan" is not
        return isOne ? ""
                     : "'" + word + "' is no number from " + numberText(minimum) + " to " +
                           numberText(maximum);
    });
    return *this;
}

template Option& Option::within(std::uint32_t, std::uint32_t);
template Option& Option::within(double, double);

Option& Option::oneOf(const std::vector<std::string>& values)
{
    mOption->check(CLI::IsMember(values).description(""));
    return *this;
}

Option& Option::repeated()
{
    mOption->take_all()->allow_extra_args(false);
    return *this;
}

Option& Option::excludes(const Option& other)
{
    mOption->excludes(other.mOption);
    return *this;
}

Option& Option::needs(const Option& other)
{
    mOption->needs(other.mOption);
    return *this;
}

Command Command::add(const char* name, const char* text) const
{
    return Command(*mApp->add_subcommand(name, text));
}

void Command::needsCommand() const
{
    mApp->require_subcommand(0, 1); // none is reported in our words
}

template <typename Value>
Option Command::option(const std::string& name, Value& value, const std::string& text) const
{
    return Option(*mApp->add_option(name, value, text));
}

template <>
Option Command::option(const std::string& name, std::filesystem::path& value,
                       const std::string& text) const
{
    const auto take = [&value](const std::string& word) { value = utf8Path(word); };
    return Option(*mApp->add_option_function<std::string>(name, take, text));
}

template Option Command::option(const std::string&, std::string&, const std::string&) const;
template Option Command::option(const std::string&, std::vector<std::string>&,
                                const std::string&) const;
template Option Command::option(const std::string&, std::uint32_t&, const std::string&) const;
template Option Command::option(const std::string&, std::optional<std::uint32_t>&,
                                const std::string&) const;
template Option Command::option(const std::string&, std::optional<double>&,
                                const std::string&) const;

Option Command::flag(const char* name, bool& value, const char* text) const
{
    return Option(*mApp->add_flag(name, value, text));
}

void Command::footer(const std::string& text) const
{
    mApp->footer(text);
}

void Command::onRun(std::function<void()> run) const
{
    mApp->callback(std::move(run));
}

} // namespace telvo
