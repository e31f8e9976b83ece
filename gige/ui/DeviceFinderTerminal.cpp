#include "DeviceFinder.h"
#include "DisplayText.h"
#include "TerminalScreen.h"

#include <algorithm>

namespace gige::ui
{

namespace
{

constexpr std::size_t kLinesAround = 6; // title, headings, hint, keys, and blanks between
constexpr std::size_t kColumnGap = 2;

/// Lines of a table; the first is that of the headings.
std::vector<std::string> tableLines(const std::vector<ListedDevice>& devices)
{
    std::vector<DeviceTexts> rows{deviceHeadings()};
    std::ranges::transform(devices, std::back_inserter(rows), &deviceTexts);
    std::vector<std::string> lines(rows.size());
    for (std::size_t column = 0; column < kDeviceColumns; ++column) {
        std::size_t width = 0;
        for (const DeviceTexts& row : rows) {
            width = std::max(width, characterCount(row[column]));
        }
        for (std::size_t row = 0; row < rows.size(); ++row) {
            lines[row] += fitted(rows[row][column], width + kColumnGap);
        }
    }
    return lines;
}

class FinderDialog
{
  public:
    explicit FinderDialog(TerminalScreen& terminal)
        : mTerminal(terminal), mFinder([&terminal] { terminal.wake(); })
    {
    }

    std::optional<ListedDevice> choose()
    {
        while (!mIsDone) {
            show();
            if (const auto key = mTerminal.readKey()) {
                handle(*key);
            }
        }
        return mChosen;
    }

  private:
    void show()
    {
        mShown = mFinder.snapshot();
        const std::vector<std::string> table = tableLines(mShown.devices);
        std::vector<ScreenLine> lines{{.text = "Choose a camera", .isBold = true},
                                      {},
                                      {.text = table.front(), .isBold = true}};
        const std::size_t height = mTerminal.size().height;
        const std::size_t room = std::max<std::size_t>(height, kLinesAround + 1) - kLinesAround;
        const std::size_t selected = mShown.selectedRow.value_or(0);
        const std::size_t first = selected < room ? 0 : selected - room + 1;
        for (std::size_t row = first; row < std::min(mShown.devices.size(), first + room); ++row) {
            lines.push_back({.text = table[row + 1], .isHighlighted = mShown.selectedRow == row});
        }
        lines.emplace_back();
        lines.push_back({.text = finderHint(mShown)});
        lines.push_back({.text = "Up, Down: select   Enter: connect   r: refresh   q: cancel"});
        mTerminal.show(lines);
    }

    void handle(const Key& key)
    {
        if (key.code == KeyCode::Up) {
            move(-1);
        } else if (key.code == KeyCode::Down) {
            move(1);
        } else if (key.code == KeyCode::Enter) {
            accept();
        } else if (key.is('r')) {
            mFinder.refresh();
        } else if (key.is('q') || key.code == KeyCode::Escape || key.code == KeyCode::Interrupt) {
            mIsDone = true;
        }
    }

    /// The first step selects the first or the last camera.
    void move(int step)
    {
        if (mShown.devices.empty()) {
            return;
        }
        const auto last = static_cast<std::ptrdiff_t>(mShown.devices.size()) - 1;
        const std::ptrdiff_t from = mShown.selectedRow
                                        ? static_cast<std::ptrdiff_t>(*mShown.selectedRow)
                                        : (step > 0 ? -1 : last + 1);
        const auto to = std::clamp<std::ptrdiff_t>(from + step, 0, last);
        mFinder.select(mShown.devices[static_cast<std::size_t>(to)].mac);
    }

    void accept()
    {
        const auto device = mFinder.selected();
        if (device && device->isReachable()) {
            mChosen = device;
            mIsDone = true;
        }
    }

    TerminalScreen& mTerminal;
    DeviceFinder mFinder;
    DeviceFinder::Snapshot mShown;
    std::optional<ListedDevice> mChosen;
    bool mIsDone = false;
};

} // namespace

std::optional<ListedDevice> chooseDevice()
{
    const auto terminal = TerminalScreen::open();
    return terminal == nullptr ? std::nullopt : FinderDialog(*terminal).choose();
}

} // namespace gige::ui
