#ifndef TELVO_TOOLS_TELVO_CANCELFLAG_H
#define TELVO_TOOLS_TELVO_CANCELFLAG_H

namespace telvo
{

/**
 * Turns Ctrl-C and a request to terminate (SIGINT, SIGTERM) into a flag that a command polls, while
 * an object of this class lives. A second Ctrl-C ends the program at once, should the first go
 * unheard. One object at a time; isSet() may be asked on any thread.
 */
class CancelFlag
{
  public:
    CancelFlag();
    ~CancelFlag();
    CancelFlag(const CancelFlag&) = delete;
    CancelFlag& operator=(const CancelFlag&) = delete;

    bool isSet() const;

  private:
    using Handler = void (*)(int);
    Handler mOldInterrupt = nullptr;
    Handler mOldTerminate = nullptr;
};

} // namespace telvo

#endif
