#include "ReportList.h"

#include "WideText.h"

namespace gige::ui
{

namespace
{

LPARAM pointer(const void* object)
{
    return reinterpret_cast<LPARAM>(object);
}

} // namespace

ReportList::ReportList(HWND list) : mList(list)
{
    constexpr DWORD kExtendedStyle = LVS_EX_FULLROWSELECT | LVS_EX_DOUBLEBUFFER;
    SendMessageW(list, LVM_SETEXTENDEDLISTVIEWSTYLE, kExtendedStyle, kExtendedStyle);
}

void ReportList::addColumn(int index, const std::string& heading, int width)
{
    std::wstring text = wideText(heading);
    LVCOLUMNW column{};
    column.mask = LVCF_TEXT | LVCF_WIDTH | LVCF_SUBITEM;
    column.cx = width;
    column.pszText = text.data();
    column.iSubItem = index;
    SendMessageW(mList, LVM_INSERTCOLUMNW, static_cast<WPARAM>(index), pointer(&column));
}

void ReportList::setRows(const std::vector<std::vector<std::string>>& rows)
{
    for (; mShown.size() > rows.size(); mShown.pop_back()) {
        SendMessageW(mList, LVM_DELETEITEM, mShown.size() - 1, 0);
    }
    for (; mShown.size() < rows.size(); mShown.emplace_back(rows.front().size())) {
        LVITEMW item{};
        item.iItem = static_cast<int>(mShown.size());
        SendMessageW(mList, LVM_INSERTITEMW, 0, pointer(&item));
    }
    for (std::size_t row = 0; row < rows.size(); ++row) {
        for (std::size_t column = 0; column < rows[row].size(); ++column) {
            if (mShown[row][column] == rows[row][column]) {
                continue;
            }
            std::wstring text = wideText(rows[row][column]);
            LVITEMW item{};
            item.iSubItem = static_cast<int>(column);
            item.pszText = text.data();
            SendMessageW(mList, LVM_SETITEMTEXTW, row, pointer(&item));
        }
        mShown[row] = rows[row];
    }
}

void ReportList::select(std::optional<std::size_t> row)
{
    if (row == selected()) {
        return;
    }
    LVITEMW item{};
    item.stateMask = LVIS_SELECTED | LVIS_FOCUSED;
    item.state = row ? item.stateMask : 0;
    const WPARAM which = row ? *row : static_cast<WPARAM>(-1); // -1: every one
    SendMessageW(mList, LVM_SETITEMSTATE, which, pointer(&item));
    if (row) {
        SendMessageW(mList, LVM_ENSUREVISIBLE, *row, FALSE);
    }
}

std::optional<std::size_t> ReportList::selected() const
{
    const LRESULT row =
        SendMessageW(mList, LVM_GETNEXTITEM, static_cast<WPARAM>(-1), LVNI_SELECTED);
    return row < 0 ? std::nullopt : std::optional(static_cast<std::size_t>(row));
}

std::optional<std::size_t> ReportList::newlySelected(const NMHDR& header)
{
    if (header.code != LVN_ITEMCHANGED) {
        return std::nullopt;
    }
    const auto& change = reinterpret_cast<const NMLISTVIEW&>(header);
    const bool isSelection =
        change.iItem >= 0 && (change.uNewState & ~change.uOldState & LVIS_SELECTED) != 0;
    return isSelection ? std::optional(static_cast<std::size_t>(change.iItem)) : std::nullopt;
}

} // namespace gige::ui
