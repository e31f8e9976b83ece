#include "WindowWatch.h"

#include <array>
#include <chrono>
#include <cstdio>
#include <string>
#include <vector>

#include <windows.h>

#include <commctrl.h>

namespace
{

constexpr UINT kPatience = 2000; // milliseconds, of a window that is busy or just going

LRESULT ask(HWND window, UINT message, WPARAM first, LPARAM second)
{
    DWORD_PTR result = 0;
    SendMessageTimeoutW(window, message, first, second, SMTO_NORMAL, kPatience, &result);
    return static_cast<LRESULT>(result);
}

std::string utf8(const wchar_t* text)
{
    std::array<char, 2048> bytes{};
    WideCharToMultiByte(CP_UTF8, 0, text, -1, bytes.data(), static_cast<int>(bytes.size()) - 1,
                        nullptr, nullptr);
    return bytes.data();
}

std::string textOf(HWND window)
{
    std::array<wchar_t, 512> text{};
    ask(window, WM_GETTEXT, text.size(), reinterpret_cast<LPARAM>(text.data()));
    return utf8(text.data());
}

std::string classOf(HWND window)
{
    std::array<wchar_t, 64> name{};
    GetClassNameW(window, name.data(), static_cast<int>(name.size()));
    return utf8(name.data());
}

std::string cellOf(HWND list, int row, int column)
{
    std::array<wchar_t, 256> text{};
    LVITEMW item{};
    item.iSubItem = column;
    item.pszText = text.data();
    item.cchTextMax = static_cast<int>(text.size());
    ask(list, LVM_GETITEMTEXTW, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&item));
    return utf8(text.data());
}

std::string rowsOf(HWND list)
{
    std::string rows;
    const auto header = reinterpret_cast<HWND>(ask(list, LVM_GETHEADER, 0, 0));
    const auto columns = static_cast<int>(ask(header, HDM_GETITEMCOUNT, 0, 0));
    const auto count = static_cast<int>(ask(list, LVM_GETITEMCOUNT, 0, 0));
    for (int row = 0; row < count; ++row) {
        RECT place{.left = LVIR_LABEL, .top = 0, .right = 0, .bottom = 0};
        ask(list, LVM_GETITEMRECT, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&place));
        POINT middle{(place.left + place.right) / 2, (place.top + place.bottom) / 2};
        ClientToScreen(list, &middle);
        rows += "row " + std::to_string(middle.x) + "," + std::to_string(middle.y) + " ";
        for (int column = 0; column < columns; ++column) {
            rows += (column == 0 ? "" : " | ") + cellOf(list, row, column);
        }
        const bool isSelected =
            ask(list, LVM_GETITEMSTATE, static_cast<WPARAM>(row), LVIS_SELECTED) != 0;
        rows += isSelected ? " *\n" : "\n";
    }
    return rows;
}

/// On the screen: left, top, right, bottom.
std::string placeOf(HWND window)
{
    RECT place{};
    GetWindowRect(window, &place);
    return std::to_string(place.left) + "," + std::to_string(place.top) + "," +
           std::to_string(place.right) + "," + std::to_string(place.bottom);
}

/// What describe() adds to.
struct Description {
    HWND focus;
    std::string text;
};

BOOL CALLBACK describeControl(HWND window, LPARAM description)
{
    auto& result = *reinterpret_cast<Description*>(description);
    if (IsWindowVisible(window) == 0) {
        return TRUE;
    }
    if (classOf(window) == "SysListView32") {
        result.text += rowsOf(window);
    }
    result.text += "control " + std::to_string(GetDlgCtrlID(window)) + " at " + placeOf(window) +
                   (IsWindowEnabled(window) != 0 ? " enabled" : " disabled") +
                   (window == result.focus ? " focus: " : ": ") + textOf(window) + "\n";
    return TRUE;
}

std::string describe(HWND dialog)
{
    GUITHREADINFO thread{};
    thread.cbSize = sizeof thread;
    GetGUIThreadInfo(GetWindowThreadProcessId(dialog, nullptr), &thread);
    Description result{.focus = thread.hwndFocus,
                       .text = "window at " + placeOf(dialog) + ": " + textOf(dialog) + "\n"};
    EnumChildWindows(dialog, &describeControl, reinterpret_cast<LPARAM>(&result));
    return result.text;
}

BOOL CALLBACK takeDialog(HWND window, LPARAM found)
{
    DWORD process = 0;
    GetWindowThreadProcessId(window, &process);
    const bool isOurs = process == GetCurrentProcessId() && IsWindowVisible(window) != 0 &&
                        classOf(window) == "#32770"; // the class of all dialogs
    if (isOurs) {
        *reinterpret_cast<HWND*>(found) = window;
    }
    return isOurs ? FALSE : TRUE;
}

} // namespace

WindowWatch::WindowWatch() : mThread(&WindowWatch::watch) {}

void WindowWatch::watch(const std::stop_token& stop)
{
    std::string shown;
    while (!stop.stop_requested()) {
        HWND dialog = nullptr;
        EnumWindows(&takeDialog, reinterpret_cast<LPARAM>(&dialog));
        const std::string now = dialog == nullptr ? "no window\n" : describe(dialog);
        if (now != shown) {
            std::fputs(now.c_str(), stdout);
            std::fflush(stdout);
            shown = now;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
    }
}
