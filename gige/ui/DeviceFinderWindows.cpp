#include "DeviceFinder.h"
#include "ReportList.h"
#include "WindowsDialog.h"

namespace gige::ui
{

namespace
{

/// Controls; OK and Cancel have the system's ids.
enum Control { kLabel = 100, kList, kHint, kRefresh };

constexpr DialogSize kSmallest{400, 170};
constexpr int kMargin = 7;
constexpr int kGap = 4;
constexpr int kButtonWidth = 50;
constexpr int kButtonHeight = 14;
constexpr int kLineHeight = 9;
/// Of the columns that deviceHeadings() names, in dialog units.
constexpr std::array<int, kDeviceColumns> kColumnWidths{74, 62, 62, 60, 70, 50};

class FinderDialog final : public WindowsDialog
{
  public:
    std::optional<ListedDevice> choose()
    {
        const auto result = run(L"Choose a camera", kSmallest);
        return result == IDOK ? mChosen : std::nullopt;
    }

  private:
    void create() override
    {
        add(L"STATIC", L"&Cameras on the network:", SS_LEFT, kLabel);
        addList();
        add(L"STATIC", L"", SS_LEFT | SS_NOPREFIX | SS_ENDELLIPSIS, kHint);
        add(L"BUTTON", L"&Refresh", WS_TABSTOP | BS_PUSHBUTTON, kRefresh);
        add(L"BUTTON", L"OK", WS_TABSTOP | BS_DEFPUSHBUTTON, IDOK);
        add(L"BUTTON", L"Cancel", WS_TABSTOP | BS_PUSHBUTTON, IDCANCEL);
        mFinder.emplace([this] { postNews(); });
        showNews();
        SetFocus(control(kList));
    }

    void addList()
    {
        mRows = ReportList(add(WC_LISTVIEWW, L"", ReportList::kStyle, kList, WS_EX_CLIENTEDGE));
        const DeviceTexts headings = deviceHeadings();
        for (std::size_t i = 0; i < headings.size(); ++i) {
            mRows.addColumn(static_cast<int>(i), headings[i], across(kColumnWidths[i]));
        }
    }

    void arrange(int width, int height) override
    {
        const int left = across(kMargin);
        const int inner = width - 2 * left;
        const int buttons = height - down(kMargin + kButtonHeight);
        const int hint = buttons - down(kGap + kLineHeight);
        const int list = down(kMargin + kLineHeight + 2);
        place(kLabel, {left, down(kMargin), inner, down(kLineHeight)});
        place(kList, {left, list, inner, hint - down(kGap) - list});
        place(kHint, {left, hint, inner, down(kLineHeight)});

        Place button{left, buttons, across(kButtonWidth), down(kButtonHeight)};
        place(kRefresh, button);
        button.left = width - left - button.width;
        place(IDCANCEL, button);
        button.left -= across(kGap) + button.width;
        place(IDOK, button);
    }

    void command(int id, int /*notification*/) override
    {
        if (id == kRefresh) {
            mFinder->refresh();
        } else if (id == IDCANCEL) {
            end(IDCANCEL);
        } else if (id == IDOK) {
            accept();
        }
    }

    LRESULT notify(NMHDR& header) override
    {
        if (header.idFrom != kList || mIsUpdating) {
            return 0;
        }
        if (const auto row = ReportList::newlySelected(header)) {
            mFinder->select(mDevices.at(*row).mac);
            postNews(); // not now: the list is in the middle of its change
        } else if (header.code == NM_DBLCLK) {
            accept();
        }
        return 0;
    }

    void accept()
    {
        const auto device = mFinder->selected();
        if (device && device->isReachable()) {
            mChosen = device;
            end(IDOK);
        }
    }

    void showNews() override
    {
        const DeviceFinder::Snapshot now = mFinder->snapshot();
        mDevices = now.devices;
        std::vector<std::vector<std::string>> rows;
        for (const ListedDevice& device : mDevices) {
            const DeviceTexts texts = deviceTexts(device);
            rows.emplace_back(texts.begin(), texts.end());
        }
        mIsUpdating = true; // what changes now is not the user's doing
        mRows.setRows(rows);
        mRows.select(now.selectedRow);
        mIsUpdating = false;
        const ListedDevice* const selected =
            now.selectedRow ? &mDevices[*now.selectedRow] : nullptr;
        setText(kHint, finderHint(now));
        enable(IDOK, selected != nullptr && selected->isReachable());
    }

    void close() override { mFinder.reset(); }

    ReportList mRows;
    std::vector<ListedDevice> mDevices; // as the rows show them
    bool mIsUpdating = false;
    std::optional<ListedDevice> mChosen;
    std::optional<DeviceFinder> mFinder;
};

} // namespace

std::optional<ListedDevice> chooseDevice()
{
    return FinderDialog().choose();
}

} // namespace gige::ui
