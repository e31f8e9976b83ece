#include "FeatureText.h"
#include "ParameterBrowser.h"
#include "ReportList.h"
#include "WideText.h"
#include "WindowsDialog.h"

#include <algorithm>
#include <array>

namespace gige::ui
{

namespace
{

/// Controls; IDOK is the button that sets a value, IDCANCEL the one that closes.
enum Control {
    kTree = 100,
    kList,
    kName,
    kValueLabel,
    kEdit,
    kChoice,
    kDescription,
    kMessage,
    kLevelLabel,
    kLevel,
    kRefresh
};

constexpr DialogSize kSmallest{420, 290};
constexpr int kMargin = 7;
constexpr int kGap = 4;
constexpr int kButtonWidth = 50;
constexpr int kButtonHeight = 14;
constexpr int kLineHeight = 9;
constexpr int kLabelWidth = 26;
constexpr int kLevelWidth = 60;
constexpr int kDescriptionHeight = 36;
constexpr int kTreeShare = 3; // of 10 parts of the width
constexpr int kDroppedHeight = 120;

struct Column {
    const char* heading;
    int width;
};
constexpr std::array kColumns{Column{"Feature", 112}, Column{"Value", 74}, Column{"Type", 78}};

class BrowserDialog final : public WindowsDialog
{
  public:
    explicit BrowserDialog(FeatureSource& source) : mSource(source) {}

    bool browse() { return run(L"Parameters", kSmallest).has_value(); }

  private:
    void create() override
    {
        add(WC_TREEVIEWW, L"",
            WS_TABSTOP | TVS_HASBUTTONS | TVS_LINESATROOT | TVS_HASLINES | TVS_SHOWSELALWAYS, kTree,
            WS_EX_CLIENTEDGE);
        addList();
        addEditor();
        add(L"STATIC", L"&Level:", SS_LEFT, kLevelLabel);
        add(L"COMBOBOX", L"", WS_TABSTOP | WS_VSCROLL | CBS_DROPDOWNLIST, kLevel);
        for (const VisibilityLevel& level : kVisibilityLevels) {
            addChoice(kLevel, level.name);
        }
        SendMessageW(control(kLevel), CB_SETCURSEL, kFirstVisibilityLevel, 0);
        add(L"BUTTON", L"&Refresh", WS_TABSTOP | BS_PUSHBUTTON, kRefresh);
        add(L"BUTTON", L"Close", WS_TABSTOP | BS_PUSHBUTTON, IDCANCEL);
        mBrowser.emplace(mSource, [this] { postNews(); });
        fillTree();
        SetFocus(control(kTree));
    }

    void addList()
    {
        mRows = ReportList(add(WC_LISTVIEWW, L"", ReportList::kStyle, kList, WS_EX_CLIENTEDGE));
        for (std::size_t i = 0; i < kColumns.size(); ++i) {
            mRows.addColumn(static_cast<int>(i), kColumns[i].heading, across(kColumns[i].width));
        }
    }

    void addEditor()
    {
        add(L"STATIC", L"", SS_LEFT | SS_NOPREFIX | SS_ENDELLIPSIS, kName);
        add(L"STATIC", L"&Value:", SS_LEFT, kValueLabel);
        add(L"EDIT", L"", WS_TABSTOP | ES_AUTOHSCROLL, kEdit, WS_EX_CLIENTEDGE);
        add(L"COMBOBOX", L"", WS_TABSTOP | WS_VSCROLL | CBS_DROPDOWNLIST, kChoice);
        add(L"BUTTON", L"&Set", WS_TABSTOP | BS_DEFPUSHBUTTON, IDOK);
        add(L"EDIT", L"", WS_TABSTOP | WS_VSCROLL | ES_MULTILINE | ES_READONLY | ES_AUTOVSCROLL,
            kDescription, WS_EX_CLIENTEDGE);
        add(L"STATIC", L"", SS_LEFT | SS_NOPREFIX | SS_ENDELLIPSIS, kMessage);
    }

    // Where things are.

    void arrange(int width, int height) override
    {
        const int left = across(kMargin);
        const int inner = width - 2 * left;
        const int buttons = height - down(kMargin + kButtonHeight);
        const int editor =
            buttons - down(kGap + 3 * kGap + 2 * kLineHeight + kButtonHeight + kDescriptionHeight);
        const int top = down(kMargin);
        const int tree = inner * kTreeShare / 10;
        const int list = left + tree + across(kGap);
        place(kTree, {left, top, tree, editor - down(kGap) - top});
        place(kList, {list, top, width - left - list, editor - down(kGap) - top});
        arrangeEditor({left, editor, inner, 0});
        arrangeButtons({left, buttons, inner, down(kButtonHeight)});
    }

    void arrangeEditor(Place where)
    {
        const int button = across(kButtonWidth);
        const int label = across(kLabelWidth);
        const int line = down(kLineHeight);
        place(kName, {where.left, where.top, where.width, line});
        where.top += line + down(kGap);
        place(kValueLabel, {where.left, where.top + down(3), label, line});
        const Place value{where.left + label, where.top,
                          where.width - label - button - across(kGap), down(kButtonHeight)};
        place(kEdit, value);
        place(kChoice, {value.left, value.top, value.width, down(kDroppedHeight)});
        place(IDOK, {where.left + where.width - button, where.top, button, down(kButtonHeight)});
        where.top += down(kButtonHeight + kGap);
        place(kDescription, {where.left, where.top, where.width, down(kDescriptionHeight)});
        where.top += down(kDescriptionHeight + kGap);
        place(kMessage, {where.left, where.top, where.width, line});
    }

    void arrangeButtons(const Place& row)
    {
        const int label = across(kLabelWidth);
        const int button = across(kButtonWidth);
        place(kLevelLabel, {row.left, row.top + down(3), label, down(kLineHeight)});
        place(kLevel, {row.left + label, row.top, across(kLevelWidth), down(kDroppedHeight)});
        place(kRefresh,
              {row.left + label + across(kLevelWidth + kGap), row.top, button, row.height});
        place(IDCANCEL, {row.left + row.width - button, row.top, button, row.height});
    }

    // What the user does.

    void command(int id, int notification) override
    {
        if (id == IDCANCEL) {
            end(IDCANCEL);
        } else if (id == IDOK) {
            confirm();
        } else if (id == kRefresh) {
            mBrowser->refresh();
            setText(kMessage, {});
        } else if (id == kLevel && notification == CBN_SELCHANGE) {
            fillTree();
        }
    }

    /// Enter leads from the tree to the list, from the list to the value, and there sets it.
    void confirm()
    {
        auto* const focus = GetFocus();
        if (focus == control(kTree)) {
            SetFocus(control(kList));
        } else if (focus == control(kList)) {
            enterEditor();
        } else if (focus != control(kLevel) && focus != control(kDescription)) {
            setValue();
        }
    }

    void enterEditor()
    {
        for (const int id : {int{kEdit}, int{kChoice}, int{IDOK}}) {
            auto* const window = control(id);
            if (IsWindowVisible(window) != 0 && IsWindowEnabled(window) != 0) {
                SetFocus(window);
                SendMessageW(window, EM_SETSEL, 0, -1); // of use to the edit control alone
                return;
            }
        }
    }

    void setValue()
    {
        if (mSelected && mLoaded && mBrowser->edit(*mSelected, enteredText())) {
            mLoaded->entered = enteredText(); // the user is done: what is read may replace it
        }
        setText(kMessage, mBrowser->message());
    }

    LRESULT notify(NMHDR& header) override
    {
        if (header.idFrom == kTree && header.code == TVN_SELCHANGEDW && !mIsUpdating) {
            mCategory =
                static_cast<std::size_t>(reinterpret_cast<NMTREEVIEWW&>(header).itemNew.lParam);
            mSelected.reset();
            showNews();
        } else if (const auto row = ReportList::newlySelected(header); row && !mIsUpdating) {
            selectItem(mShown.at(*row));
        } else if (header.idFrom == kList && header.code == NM_DBLCLK) {
            enterEditor();
        } else if (header.idFrom == kList && header.code == NM_CUSTOMDRAW) {
            return paint(reinterpret_cast<NMLVCUSTOMDRAW&>(header));
        }
        return 0;
    }

    void selectItem(std::size_t item)
    {
        if (mSelected != item) {
            mSelected = item;
            mLoaded.reset();
            showEditor();
        }
    }

    /// What cannot be changed now is grey.
    LRESULT paint(NMLVCUSTOMDRAW& draw)
    {
        if (draw.nmcd.dwDrawStage == CDDS_PREPAINT) {
            return CDRF_NOTIFYITEMDRAW;
        }
        if (draw.nmcd.dwDrawStage == CDDS_ITEMPREPAINT && draw.nmcd.dwItemSpec < mShown.size()) {
            const auto state = mBrowser->state(mShown[draw.nmcd.dwItemSpec]);
            if (!state || !state->isWritable()) {
                draw.clrText = GetSysColor(COLOR_GRAYTEXT);
            }
        }
        return CDRF_DODEFAULT;
    }

    // What the user sees.

    /// The categories, under one item for all of them.
    void fillTree()
    {
        mIsUpdating = true;
        const FeatureTree& tree = mBrowser->tree();
        const LRESULT level = SendMessageW(control(kLevel), CB_GETCURSEL, 0, 0);
        mVisible =
            tree.visibleItems(kVisibilityLevels.at(static_cast<std::size_t>(level)).visibility);
        SendMessageW(control(kTree), TVM_DELETEITEM, 0, reinterpret_cast<LPARAM>(TVI_ROOT));
        auto* const all = addToTree(TVI_ROOT, "All features", kAll);
        std::vector<HTREEITEM> handles(tree.items().size(), all);
        HTREEITEM chosen = all;
        for (const std::size_t index : mVisible) {
            const FeatureItem& item = tree.items()[index];
            if (item.feature == nullptr) {
                handles[index] =
                    addToTree(item.parent ? handles[*item.parent] : all, item.label, index);
                chosen = index == mCategory ? handles[index] : chosen;
            }
        }
        SendMessageW(control(kTree), TVM_EXPAND, TVE_EXPAND, reinterpret_cast<LPARAM>(all));
        mIsUpdating = false;
        // Reports the selection, which shows what is in it.
        SendMessageW(control(kTree), TVM_SELECTITEM, TVGN_CARET, reinterpret_cast<LPARAM>(chosen));
    }

    HTREEITEM addToTree(HTREEITEM parent, const std::string& label, std::size_t item)
    {
        std::wstring text = wideText(label);
        TVINSERTSTRUCTW insert{};
        insert.hParent = parent;
        insert.hInsertAfter = TVI_LAST;
        insert.item.mask = TVIF_TEXT | TVIF_PARAM;
        insert.item.pszText = text.data();
        insert.item.lParam = static_cast<LPARAM>(item);
        return reinterpret_cast<HTREEITEM>(
            SendMessageW(control(kTree), TVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&insert)));
    }

    void showNews() override
    {
        const FeatureTree& tree = mBrowser->tree();
        mShown.clear();
        std::vector<std::vector<std::string>> rows;
        for (const std::size_t index : mVisible) {
            const FeatureItem& item = tree.items()[index];
            if (item.feature != nullptr && (mCategory == kAll || tree.isWithin(index, mCategory))) {
                mShown.push_back(index);
                rows.push_back(rowOf(item, mBrowser->state(index)));
            }
        }
        mIsUpdating = true; // what changes now is not the user's doing
        mRows.setRows(rows);
        const auto selected = std::ranges::find(mShown, mSelected);
        mRows.select(selected == mShown.end()
                         ? std::nullopt
                         : std::optional(static_cast<std::size_t>(selected - mShown.begin())));
        mIsUpdating = false;
        InvalidateRect(control(kList), nullptr, FALSE); // colours follow the access
        setText(kMessage, mBrowser->message());
        showEditor();
    }

    static std::vector<std::string> rowOf(const FeatureItem& item,
                                          const std::optional<FeatureState>& state)
    {
        if (!state) {
            return {item.label, "...", ""};
        }
        return {item.label, shownValue(item.feature->info(), *state),
                accessText(item.feature->info(), *state)};
    }

    void showEditor()
    {
        const auto state = mSelected ? mBrowser->state(*mSelected) : std::nullopt;
        if (!state) {
            showNoEditor();
            return;
        }
        const FeatureItem& item = mBrowser->tree().items()[*mSelected];
        const FeatureInfo& info = item.feature->info();
        const std::string limits = limitsText(info, *state);
        setText(kName, item.label + " (" + accessText(info, *state) +
                           (limits.empty() ? "" : "; " + limits) + ")");
        setText(kDescription, item.description);
        const bool isCommand = info.kind == FeatureKind::Command;
        const std::vector<std::string> choices = choicesOf(info, *state);
        show(kValueLabel, !isCommand);
        show(kEdit, !isCommand && choices.empty());
        show(kChoice, !choices.empty());
        setText(IDOK, isCommand ? "E&xecute" : "&Set");
        enable(kEdit, state->isWritable());
        enable(kChoice, state->isWritable());
        enable(IDOK, state->isWritable());
        load(valueText(info, *state), choices);
    }

    void showNoEditor()
    {
        setText(kName, mSelected ? "..." : "Choose a feature to see and change its value.");
        setText(kDescription, {});
        show(kChoice, false);
        show(kEdit, true);
        show(kValueLabel, true);
        setText(kEdit, {});
        setText(IDOK, "&Set");
        enable(kEdit, false);
        enable(IDOK, false);
    }

    /// Puts the value into its control, unless the user has begun to change it there.
    void load(const std::string& value, const std::vector<std::string>& choices)
    {
        if (mLoaded && (enteredText() != mLoaded->entered ||
                        (value == mLoaded->value && choices == mLoaded->choices))) {
            return;
        }
        if (choices.empty()) {
            setText(kEdit, value);
        } else {
            SendMessageW(control(kChoice), CB_RESETCONTENT, 0, 0);
            for (const std::string& choice : choices) {
                addChoice(kChoice, choice);
            }
            const auto present = std::ranges::find(choices, value);
            const auto index = present == choices.end() ? -1 : present - choices.begin();
            SendMessageW(control(kChoice), CB_SETCURSEL, static_cast<WPARAM>(index), 0);
        }
        mLoaded = Loaded{.value = value, .entered = enteredText(), .choices = choices};
    }

    void addChoice(int id, const std::string& text)
    {
        SendMessageW(control(id), CB_ADDSTRING, 0,
                     reinterpret_cast<LPARAM>(wideText(text).c_str()));
    }

    std::string enteredText() const
    {
        return text(IsWindowVisible(control(kChoice)) != 0 ? kChoice : kEdit);
    }

    void close() override { mBrowser.reset(); }

    static constexpr std::size_t kAll = static_cast<std::size_t>(-1);

    struct Loaded {
        std::string value;
        std::string entered; // as the control then showed it
        std::vector<std::string> choices;
    };

    FeatureSource& mSource;
    std::optional<ParameterBrowser> mBrowser;
    ReportList mRows;
    std::vector<std::size_t> mVisible;    // items of the level
    std::vector<std::size_t> mShown;      // items in the list, row by row
    std::size_t mCategory = kAll;         // selected in the tree
    std::optional<std::size_t> mSelected; // item selected in the list
    std::optional<Loaded> mLoaded;        // what the editor was given last
    bool mIsUpdating = false;
};

} // namespace

bool browseParameters(FeatureSource& source)
{
    return BrowserDialog(source).browse();
}

} // namespace gige::ui
