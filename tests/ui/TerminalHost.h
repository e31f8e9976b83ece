#ifndef TELVO_TESTS_UI_TERMINALHOST_H
#define TELVO_TESTS_UI_TERMINALHOST_H

#include <string>
#include <sys/types.h>
#include <vector>

inline constexpr const char* kUp = "\x1B[A";
inline constexpr const char* kDown = "\x1B[B";
inline constexpr const char* kEnter = "\r";
inline constexpr const char* kEscape = "\x1B";
inline constexpr const char* kBackspace = "\x7F";
inline constexpr const char* kCtrlC = "\x03";

/// The program dialog_host on a terminal of its own, of 100 columns and 30 lines, with the test as
/// its user. Ends with the object.
class TerminalHost
{
  public:
    enum class Place { Foreground, Background, NoTerminal };

    explicit TerminalHost(std::vector<std::string> arguments, Place place = Place::Foreground);
    ~TerminalHost();
    TerminalHost(const TerminalHost&) = delete;
    TerminalHost& operator=(const TerminalHost&) = delete;

    /// Presses keys. What was on the screen before does not count for shows() any more.
    void press(const std::string& keys);
    /// Waits until the text appears on the screen, or is written by the program. @return false: it
    /// did not within 60 seconds
    bool shows(const std::string& text);
    /// The same for the text at the beginning of the highlighted line, blanks before it left out.
    bool highlights(const std::string& text);
    /// Presses Down until the line with this text is highlighted, and waits until its value is
    /// read.
    bool goDownTo(const std::string& text);
    /// Waits for the program's end. @return its exit code; -1: it does not end within 60 seconds
    int exitCode();
    /// Whether the terminal shows what is typed and takes whole lines, as before the dialog.
    bool isTerminalRestored() const;
    /// All that was written since the last key, for messages.
    const std::string& output() const { return mOutput; }

  private:
    void readSome();
    std::string highlighted() const;

    pid_t mProcess = -1;
    int mTerminal = -1; // the user's end
    std::string mOutput;
    int mStatus = -1;
    bool mHasEnded = false;
};

#endif
