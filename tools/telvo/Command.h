/// The command line as the tool's commands see it. Behind it is CLI11, which no other header
/// includes: that takes a compiler longer than most of the commands.
#ifndef TELVO_TOOLS_TELVO_COMMAND_H
#define TELVO_TOOLS_TELVO_COMMAND_H

#include <functional>
#include <string>
#include <vector>

namespace CLI
{
class App;
class Option;
} // namespace CLI

namespace telvo
{

/// An option or an argument of a command. A copy is the same option.
class Option
{
  public:
    explicit Option(CLI::Option& option) : mOption(&option) {}

    /// What the help shows for its value: "N", "FILE".
    Option& type(const char* name);
    /// The help shows the variable's present value.
    Option& showDefault();
    Option& required();
    /// A number from minimum to maximum. The help leaves the limits to the option's own text.
    /// @tparam Number  std::uint32_t or double
    template <typename Number>
    Option& within(Number minimum, Number maximum);
    /// Only one of these.
    Option& oneOf(const std::vector<std::string>& values);
    /// Given several times, each adds one value; one value each time.
    Option& repeated();
    /// Not together with the other one.
    Option& excludes(const Option& other);
    /// Only together with the other one.
    Option& needs(const Option& other);

  private:
    CLI::Option* mOption;
};

/// The tool, or one of its commands. Variables that options write to outlive it. A copy is the same
/// command.
class Command
{
  public:
    explicit Command(CLI::App& app) : mApp(&app) {}

    /// A command below this one.
    Command add(const char* name, const char* text) const;
    /// It is nothing without one of those below it.
    void needsCommand() const;

    /**
     * An option ("--frames") or, without dashes in front, an argument.
     * @tparam Value  a text, a path, a std::uint32_t, an optional number, or texts; each type that
     *                some command uses is named in the source
     */
    template <typename Value>
    Option option(const std::string& name, Value& value, const std::string& text) const;
    Option flag(const char* name, bool& value, const char* text) const;

    /// What the help says at its end.
    void footer(const std::string& text) const;
    /// What it does, once the whole line is understood. Throws Failure or UsageError.
    void onRun(std::function<void()> run) const;

    CLI::App& app() const { return *mApp; }

  private:
    CLI::App* mApp;
};

} // namespace telvo

#endif
