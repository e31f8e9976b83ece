#include "DisplayText.h"
#include "FeatureText.h"
#include "ParameterBrowser.h"
#include "TerminalScreen.h"

#include <algorithm>

namespace gige::ui
{

namespace
{

constexpr std::size_t kDescriptionLines = 2;
/// Title, what is known of the selected one, its description, message, keys, and blanks between.
constexpr std::size_t kLinesAroundTree = 7 + kDescriptionLines;
constexpr std::size_t kLabelWidth = 40;
constexpr std::size_t kValueWidth = 24;

enum class Mode : std::uint8_t { Browse, Type, Choose };

class BrowserDialog
{
  public:
    BrowserDialog(TerminalScreen& terminal, FeatureSource& source)
        : mTerminal(terminal), mBrowser(source, [&terminal] { terminal.wake(); })
    {
    }

    void run()
    {
        while (!mIsDone) {
            show();
            if (const auto key = mTerminal.readKey()) {
                handle(*key);
            }
        }
    }

  private:
    // What the user sees.

    void show()
    {
        mVisible = mBrowser.tree().visibleItems(kVisibilityLevels[mLevel].visibility);
        mRow = std::min(mRow, mVisible.empty() ? 0 : mVisible.size() - 1);
        mRoom =
            std::max<std::size_t>(mTerminal.size().height, kLinesAroundTree + 1) - kLinesAroundTree;
        mFirst = std::clamp(mFirst, mRow < mRoom ? 0 : mRow - mRoom + 1, mRow);

        std::vector<ScreenLine> lines{
            {.text = std::string("Parameters, level ") + kVisibilityLevels[mLevel].name,
             .isBold = true},
            {}};
        for (std::size_t row = mFirst; row < std::min(mVisible.size(), mFirst + mRoom); ++row) {
            lines.push_back(rowLine(row));
        }
        lines.emplace_back();
        addDetails(lines);
        lines.push_back({.text = mBrowser.message(), .isBold = true});
        lines.push_back({.text = promptText()});
        mTerminal.show(lines);
    }

    ScreenLine rowLine(std::size_t row) const
    {
        const FeatureItem& item = mBrowser.tree().items()[mVisible[row]];
        const std::string label = std::string(2 * item.depth, ' ') + item.label;
        const bool isSelected = row == mRow;
        if (item.feature == nullptr) {
            return {.text = label, .isHighlighted = isSelected, .isBold = true};
        }
        const auto state = mBrowser.state(mVisible[row]);
        const FeatureInfo& info = item.feature->info();
        return {.text = fitted(label, kLabelWidth) + "  " +
                        fitted(state ? shownValue(info, *state) : "...", kValueWidth) + "  " +
                        (state ? accessText(info, *state) : ""),
                .isHighlighted = isSelected};
    }

    void addDetails(std::vector<ScreenLine>& lines) const
    {
        std::string title = "There are no parameters.";
        std::vector<std::string> description;
        if (!mVisible.empty()) {
            const FeatureItem& item = mBrowser.tree().items()[mVisible[mRow]];
            const auto state = mBrowser.state(mVisible[mRow]);
            const std::string limits =
                state && item.feature != nullptr ? limitsText(item.feature->info(), *state) : "";
            title = item.label + (limits.empty() ? "" : ": " + limits);
            description = wrapped(item.description, mTerminal.size().width);
        }
        description.resize(kDescriptionLines);
        lines.push_back({.text = title});
        for (std::string& line : description) {
            lines.push_back({.text = std::move(line)});
        }
    }

    std::string promptText() const
    {
        switch (mMode) {
        case Mode::Type:
            return "New value: " + mTyped + "_   (Enter: set   Esc: leave as it is)";
        case Mode::Choose:
            return "New value: < " + mChoices[mChoice] +
                   " >   (Up, Down: choose   Enter: set   Esc: leave as it is)";
        case Mode::Browse:
            break;
        }
        return "Up, Down: select   Enter: change or execute   l: level   r: refresh   q: close";
    }

    // What the user does.

    void handle(const Key& key)
    {
        if (key.code == KeyCode::Interrupt) {
            mIsDone = true;
        } else if (mMode == Mode::Browse) {
            handleBrowsing(key);
        } else if (key.code == KeyCode::Escape) {
            mMode = Mode::Browse;
        } else if (key.code == KeyCode::Enter) {
            set(mMode == Mode::Type ? mTyped : mChoices[mChoice]);
        } else if (mMode == Mode::Type) {
            handleTyping(key);
        } else {
            handleChoosing(key);
        }
    }

    void handleBrowsing(const Key& key)
    {
        if (key.is('q') || key.code == KeyCode::Escape) {
            mIsDone = true;
        } else if (key.is('r')) {
            mBrowser.refresh();
        } else if (key.is('l')) {
            mLevel = (mLevel + 1) % kVisibilityLevels.size();
        } else if (key.code == KeyCode::Enter) {
            beginEdit();
        } else if (!mVisible.empty()) {
            move(key.code);
        }
    }

    void move(KeyCode key)
    {
        const std::size_t last = mVisible.size() - 1;
        switch (key) {
        case KeyCode::Up:
            mRow -= std::min<std::size_t>(mRow, 1);
            break;
        case KeyCode::Down:
            mRow = std::min(mRow + 1, last);
            break;
        case KeyCode::PageUp:
            mRow -= std::min(mRow, mRoom);
            break;
        case KeyCode::PageDown:
            mRow = std::min(mRow + mRoom, last);
            break;
        case KeyCode::Home:
            mRow = 0;
            break;
        case KeyCode::End:
            mRow = last;
            break;
        default:
            break;
        }
    }

    void beginEdit()
    {
        const Feature* const feature =
            mVisible.empty() ? nullptr : mBrowser.tree().items()[mVisible[mRow]].feature;
        const auto state = feature == nullptr ? std::nullopt : mBrowser.state(mVisible[mRow]);
        if (!state) {
            return;
        }
        mEdited = mVisible[mRow];
        const FeatureInfo& info = feature->info();
        mChoices = choicesOf(info, *state);
        if (!state->isWritable() || info.kind == FeatureKind::Command) {
            set({}); // executes, or says why not
        } else if (!mChoices.empty()) {
            const auto present = std::ranges::find(mChoices, valueText(info, *state));
            mChoice = present == mChoices.end()
                          ? 0
                          : static_cast<std::size_t>(present - mChoices.begin());
            mMode = Mode::Choose;
        } else {
            mTyped = valueText(info, *state);
            mMode = Mode::Type;
        }
    }

    /// A refused text stays, to be mended.
    void set(const std::string& text)
    {
        if (mBrowser.edit(mEdited, text)) {
            mMode = Mode::Browse;
        }
    }

    void handleTyping(const Key& key)
    {
        if (key.code == KeyCode::Character) {
            mTyped += key.text;
        } else if (key.code == KeyCode::Backspace && !mTyped.empty()) {
            const std::size_t characters = characterCount(mTyped);
            mTyped = fitted(mTyped, characters - 1);
        }
    }

    void handleChoosing(const Key& key)
    {
        if (key.code == KeyCode::Up) {
            mChoice -= std::min<std::size_t>(mChoice, 1);
        } else if (key.code == KeyCode::Down) {
            mChoice = std::min(mChoice + 1, mChoices.size() - 1);
        }
    }

    TerminalScreen& mTerminal;
    ParameterBrowser mBrowser;
    std::size_t mLevel = kFirstVisibilityLevel;
    std::vector<std::size_t> mVisible; // items of the level, row by row
    std::size_t mRow = 0;              // selected
    std::size_t mFirst = 0;            // on the screen
    std::size_t mRoom = 1;             // rows on the screen
    Mode mMode = Mode::Browse;
    std::size_t mEdited = 0; // item
    std::string mTyped;
    std::vector<std::string> mChoices;
    std::size_t mChoice = 0;
    bool mIsDone = false;
};

} // namespace

bool browseParameters(FeatureSource& source)
{
    const auto terminal = TerminalScreen::open();
    if (terminal == nullptr) {
        return false;
    }
    BrowserDialog(*terminal, source).run();
    return true;
}

} // namespace gige::ui
