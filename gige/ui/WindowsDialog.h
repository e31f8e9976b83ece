#ifndef TELVO_GIGE_UI_WINDOWSDIALOG_H
#define TELVO_GIGE_UI_WINDOWSDIALOG_H

#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>

#include <commctrl.h>

#include <optional>
#include <string>

namespace gige::ui
{

/// In dialog units, which grow with the system's font.
struct DialogSize {
    int width;
    int height;
};

/// Where a control is, in pixels.
struct Place {
    int left = 0;
    int top = 0;
    int width = 0;
    int height = 0;
};

/// A modal window of the system's own look: its font, its dialog keys, resizable. Subclasses create
/// the controls and say where they are. All on the thread that calls run(), but for postNews().
class WindowsDialog
{
  public:
    WindowsDialog() = default;
    virtual ~WindowsDialog();
    WindowsDialog(const WindowsDialog&) = delete;
    WindowsDialog& operator=(const WindowsDialog&) = delete;

    /// Shows the window until it ends. The window that is active on this thread is its owner.
    /// @param smallest  the size that the window opens with, and below which it does not shrink
    /// @return what end() was called with; none: no window can be shown
    std::optional<int> run(const wchar_t* title, DialogSize smallest);

  protected:
    virtual void create() = 0;
    virtual void arrange(int width, int height) = 0;
    /// A button, menu or edit control reports; IDOK and IDCANCEL come from Enter and Escape, too.
    virtual void command(int id, int notification) = 0;
    virtual LRESULT notify(NMHDR& /*header*/) { return 0; }
    /// After postNews().
    virtual void showNews() {}
    /// The window goes: whoever calls postNews() must end here.
    virtual void close() {}

    void end(int result);
    /// Has showNews() called on the window's thread, soon. Any thread, while the window is there.
    void postNews();

    /// Controls are reached by Tab in the order in which they are made.
    HWND add(const wchar_t* windowClass, const wchar_t* text, DWORD style, int id,
             DWORD extendedStyle = 0);
    HWND control(int id) const { return GetDlgItem(mWindow, id); }
    void place(int id, const Place& where);
    void setText(int id, const std::string& utf8);
    std::string text(int id) const;
    void show(int id, bool isShown);
    void enable(int id, bool isEnabled);

    /// Dialog units in pixels.
    int across(int units) const { return MulDiv(units, mBaseWidth, 4); }
    int down(int units) const { return MulDiv(units, mBaseHeight, 8); }

  private:
    static INT_PTR CALLBACK procedure(HWND window, UINT message, WPARAM first, LPARAM second);
    INT_PTR handle(UINT message, WPARAM first, LPARAM second);
    void open();
    void measureFont();
    void limitSize(MINMAXINFO& info) const;
    SIZE outerSize() const;

    HWND mWindow = nullptr;
    HFONT mFont = nullptr;
    int mBaseWidth = 0; // of the font, in pixels, as dialog units count
    int mBaseHeight = 0;
    std::wstring mTitle;
    DialogSize mSmallest{};
};

} // namespace gige::ui

#endif
