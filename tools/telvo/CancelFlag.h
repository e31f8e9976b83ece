#ifndef TELVO_TOOLS_TELVO_CANCELFLAG_H
#define TELVO_TOOLS_TELVO_CANCELFLAG_H

#include <stop_token>
#include <thread>

namespace telvo
{

/**
 * Turns Ctrl-C and the other requests to end (a closed terminal, SIGTERM) into a flag that a
 * command polls, while an object of this class lives. A second one ends the program at once, should
 * the first go unheard. The tool has one for its whole run; further ones share it, and may be asked
 * on any thread.
 */
class CancelFlag
{
  public:
    CancelFlag();
    ~CancelFlag();
    CancelFlag(const CancelFlag&) = delete;
    CancelFlag& operator=(const CancelFlag&) = delete;

    bool isSet() const;
    /// Throws Failure once it is set.
    void check() const;
};

/**
 * Names what cannot be broken off while it lives, such as "the camera to end live mode": that is
 * what a user who has asked for the end is told to wait for. One at a time; one within another
 * takes its place meanwhile.
 */
class Waiting
{
  public:
    /// @param what  static
    explicit Waiting(const char* what);
    ~Waiting();
    Waiting(const Waiting&) = delete;
    Waiting& operator=(const Waiting&) = delete;

  private:
    const char* mOuter;
};

/// A request to end as a stop token, for what takes one.
class CancelToken
{
  public:
    CancelToken();
    std::stop_token token() const { return mSource.get_token(); }

  private:
    CancelFlag mCancel;
    std::stop_source mSource;
    std::jthread mWatcher; // last: it uses the others
};

} // namespace telvo

#endif
