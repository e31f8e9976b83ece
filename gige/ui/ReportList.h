#ifndef TELVO_GIGE_UI_REPORTLIST_H
#define TELVO_GIGE_UI_REPORTLIST_H

#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>

#include <commctrl.h>

#include <optional>
#include <string>
#include <vector>

namespace gige::ui
{

/// A list control in report view, with one row selected at most.
class ReportList
{
  public:
    /// To make the control with, besides those of every control.
    static constexpr DWORD kStyle = WS_TABSTOP | LVS_REPORT | LVS_SINGLESEL | LVS_SHOWSELALWAYS;

    ReportList() = default;
    explicit ReportList(HWND list);

    void addColumn(int index, const std::string& heading, int width);
    /// Makes the rows show these texts; touches only what differs, so that nothing flickers.
    void setRows(const std::vector<std::vector<std::string>>& rows);
    void select(std::optional<std::size_t> row);
    /// The row whose selection a list's notification reports. None: it reports something else.
    static std::optional<std::size_t> newlySelected(const NMHDR& header);

  private:
    std::optional<std::size_t> selected() const;

    HWND mList = nullptr;
    std::vector<std::vector<std::string>> mShown;
};

} // namespace gige::ui

#endif
