#include "WindowsDialog.h"

#include "WideText.h"

#include <algorithm>
#include <array>
#include <exception>

namespace gige::ui
{

namespace
{

constexpr UINT kNews = WM_APP;
/// Windows of standard classes only; end() never has this result.
constexpr INT_PTR kNoWindow = -1;

/// ISOLATIONAWARE_MANIFEST_RESOURCE_ID of WindowsControls.rc, as a number.
constexpr WORD kManifest = 2;

/// A template without controls, menu, class and title: three empty words follow it.
struct EmptyTemplate {
    DLGTEMPLATE header;
    std::array<WORD, 3> nothing;
};

HINSTANCE ownModule()
{
    HMODULE module = nullptr;
    GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS |
                           GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                       reinterpret_cast<LPCWSTR>(&ownModule), &module);
    return module;
}

/// The common controls of the system's present look, as long as this lives; a host that has not
/// asked for them gets them in our windows all the same. Without them there are the older ones.
class PresentLook
{
  public:
    PresentLook()
    {
        ACTCTXW source{};
        source.cbSize = sizeof source;
        source.dwFlags = ACTCTX_FLAG_HMODULE_VALID | ACTCTX_FLAG_RESOURCE_NAME_VALID;
        source.hModule = ownModule();
        source.lpResourceName = MAKEINTRESOURCEW(kManifest);
        mContext = CreateActCtxW(&source);
        mIsActive = mContext != INVALID_HANDLE_VALUE && ActivateActCtx(mContext, &mCookie) != 0;
    }
    ~PresentLook()
    {
        if (mIsActive) {
            DeactivateActCtx(0, mCookie);
        }
        if (mContext != INVALID_HANDLE_VALUE) {
            ReleaseActCtx(mContext);
        }
    }
    PresentLook(const PresentLook&) = delete;
    PresentLook& operator=(const PresentLook&) = delete;

  private:
    HANDLE mContext = INVALID_HANDLE_VALUE;
    ULONG_PTR mCookie = 0;
    bool mIsActive = false;
};

} // namespace

WindowsDialog::~WindowsDialog()
{
    if (mFont != nullptr) {
        DeleteObject(mFont);
    }
}

std::optional<int> WindowsDialog::run(const wchar_t* title, DialogSize smallest)
{
    const PresentLook look;
    const INITCOMMONCONTROLSEX classes{sizeof classes, ICC_LISTVIEW_CLASSES | ICC_TREEVIEW_CLASSES};
    InitCommonControlsEx(&classes);
    mTitle = title;
    mSmallest = smallest;
    const EmptyTemplate contents{
        .header = {.style = WS_POPUP | WS_CAPTION | WS_SYSMENU | WS_THICKFRAME | WS_MAXIMIZEBOX,
                   .dwExtendedStyle = WS_EX_CONTROLPARENT,
                   .cdit = 0,
                   .x = 0,
                   .y = 0,
                   .cx = 0,
                   .cy = 0},
        .nothing = {}};
    const INT_PTR result =
        DialogBoxIndirectParamW(ownModule(), &contents.header, GetActiveWindow(),
                                &WindowsDialog::procedure, reinterpret_cast<LPARAM>(this));
    return result == kNoWindow ? std::nullopt : std::optional(static_cast<int>(result));
}

INT_PTR CALLBACK WindowsDialog::procedure(HWND window, UINT message, WPARAM first, LPARAM second)
{
    if (message == WM_INITDIALOG) {
        SetWindowLongPtrW(window, DWLP_USER, second);
        reinterpret_cast<WindowsDialog*>(second)->mWindow = window;
    }
    auto* const self = reinterpret_cast<WindowsDialog*>(GetWindowLongPtrW(window, DWLP_USER));
    if (self == nullptr) {
        return FALSE;
    }
    try {
        return self->handle(message, first, second);
    } catch (const std::exception&) { // must not unwind through the system's code
        EndDialog(window, kNoWindow);
        return FALSE;
    }
}

INT_PTR WindowsDialog::handle(UINT message, WPARAM first, LPARAM second)
{
    switch (message) {
    case WM_INITDIALOG:
        open();
        return FALSE; // open() has chosen the focus
    case WM_SIZE:
        arrange(LOWORD(second), HIWORD(second));
        InvalidateRect(mWindow, nullptr, TRUE);
        return TRUE;
    case WM_GETMINMAXINFO:
        limitSize(*reinterpret_cast<MINMAXINFO*>(second));
        return TRUE;
    case WM_COMMAND:
        command(LOWORD(first), HIWORD(first));
        return TRUE;
    case WM_NOTIFY:
        SetWindowLongPtrW(mWindow, DWLP_MSGRESULT, notify(*reinterpret_cast<NMHDR*>(second)));
        return TRUE;
    case WM_DESTROY:
        close();
        return TRUE;
    case kNews:
        showNews();
        return TRUE;
    default:
        return FALSE;
    }
}

void WindowsDialog::open()
{
    SetWindowTextW(mWindow, mTitle.c_str());
    measureFont();
    create();
    RECT room{};
    SystemParametersInfoW(SPI_GETWORKAREA, 0, &room, 0);
    const SIZE size = outerSize();
    const int left = room.left + std::max(0L, (room.right - room.left - size.cx) / 2);
    const int top = room.top + std::max(0L, (room.bottom - room.top - size.cy) / 2);
    SetWindowPos(mWindow, nullptr, left, top, size.cx, size.cy, SWP_NOZORDER);
    SetForegroundWindow(mWindow); // a host without a window of its own has none to own this one
}

void WindowsDialog::measureFont()
{
    NONCLIENTMETRICSW metrics{};
    metrics.cbSize = sizeof metrics;
    SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0);
    mFont = CreateFontIndirectW(&metrics.lfMessageFont);

    constexpr std::wstring_view kLetters = L"ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz";
    auto* const context = GetDC(mWindow);
    auto* const before = SelectObject(context, mFont);
    SIZE extent{};
    GetTextExtentPoint32W(context, kLetters.data(), static_cast<int>(kLetters.size()), &extent);
    SelectObject(context, before);
    ReleaseDC(mWindow, context);
    mBaseWidth = (extent.cx / 26 + 1) / 2; // two alphabets, rounded
    mBaseHeight = extent.cy;
}

SIZE WindowsDialog::outerSize() const
{
    RECT frame{0, 0, across(mSmallest.width), down(mSmallest.height)};
    AdjustWindowRectEx(&frame, static_cast<DWORD>(GetWindowLongPtrW(mWindow, GWL_STYLE)), FALSE,
                       static_cast<DWORD>(GetWindowLongPtrW(mWindow, GWL_EXSTYLE)));
    return {frame.right - frame.left, frame.bottom - frame.top};
}

void WindowsDialog::limitSize(MINMAXINFO& info) const
{
    const SIZE size = outerSize();
    info.ptMinTrackSize = {size.cx, size.cy};
}

void WindowsDialog::end(int result)
{
    EndDialog(mWindow, result);
}

void WindowsDialog::postNews()
{
    PostMessageW(mWindow, kNews, 0, 0);
}

HWND WindowsDialog::add(const wchar_t* windowClass, const wchar_t* text, DWORD style, int id,
                        DWORD extendedStyle)
{
    auto* const window = CreateWindowExW(
        extendedStyle, windowClass, text, WS_CHILD | WS_VISIBLE | style, 0, 0, 0, 0, mWindow,
        reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), ownModule(), nullptr);
    SendMessageW(window, WM_SETFONT, reinterpret_cast<WPARAM>(mFont), FALSE);
    return window;
}

void WindowsDialog::place(int id, const Place& where)
{
    MoveWindow(control(id), where.left, where.top, where.width, where.height, TRUE);
}

void WindowsDialog::setText(int id, const std::string& utf8)
{
    if (text(id) != utf8) {
        SetWindowTextW(control(id), wideText(utf8).c_str());
    }
}

std::string WindowsDialog::text(int id) const
{
    auto* const window = control(id);
    std::wstring wide(static_cast<std::size_t>(GetWindowTextLengthW(window)) + 1, L'\0');
    const int length = GetWindowTextW(window, wide.data(), static_cast<int>(wide.size()));
    wide.resize(static_cast<std::size_t>(length));
    return utf8Text(wide);
}

void WindowsDialog::show(int id, bool isShown)
{
    ShowWindow(control(id), isShown ? SW_SHOWNA : SW_HIDE);
}

void WindowsDialog::enable(int id, bool isEnabled)
{
    // A disabled control keeps the focus, and with it every key.
    if (!isEnabled && GetFocus() == control(id)) {
        SendMessageW(mWindow, WM_NEXTDLGCTL, 0, FALSE);
    }
    EnableWindow(control(id), isEnabled ? TRUE : FALSE);
}

} // namespace gige::ui
