#ifndef TELVO_GIGE_UI_PARAMETERBROWSER_H
#define TELVO_GIGE_UI_PARAMETERBROWSER_H

#include "FeatureTree.h"

#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>
#include <optional>
#include <stop_token>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

namespace gige::ui
{

/// Reads and writes the features of a source on a thread of its own, so that what shows them never
/// waits for the device. The thread ends with the object, once the access under way has ended.
/// Threads: any; mLock guards the members behind it, the tree never changes.
class ParameterBrowser
{
  public:
    /// @param source   must outlive this object
    /// @param changed  called on the browser's thread when there is something new to show; must not
    /// wait for the thread that destroys the browser
    ParameterBrowser(FeatureSource& source, std::function<void()> changed);

    const FeatureTree& tree() const { return mTree; }
    /// The feature as it was last read; none: it has not been read yet.
    std::optional<FeatureState> state(std::size_t item) const;
    /// Outcome of the last edit, one sentence; empty: there is none.
    std::string message() const;

    /// Reads all features anew.
    void refresh();
    /// Writes what the user has entered, or executes the command, and reads all anew, because one
    /// feature changes others. A text that cannot be a value is refused with a message at once.
    /// @return false: refused
    bool edit(std::size_t item, std::string_view text);

  private:
    struct Edit {
        std::size_t item;
        FeatureValue value;
    };

    void work(const std::stop_token& stop);
    /// Waits for something to do. @return null: the thread is to end
    std::function<void()> nextStep(const std::stop_token& stop);
    void write(const Edit& edit);
    void readNext();

    const std::function<void()> mChanged;
    FeatureSource& mSource;
    const FeatureTree mTree;
    mutable std::mutex mLock;
    std::condition_variable_any mWake;
    std::vector<std::optional<FeatureState>> mStates; // one for each item
    std::string mMessage;
    std::deque<Edit> mEdits;   // to be written, in order
    std::size_t mNext = 0;     // the item to be read next
    bool mForgetWanted = true; // before that
    std::jthread mThread;      // last: it uses all of the above
};

/// Shows the source's features in a window, or a dialog on the terminal, until the user closes it.
/// @return false: there is nothing to show them on
bool browseParameters(FeatureSource& source);

} // namespace gige::ui

#endif
