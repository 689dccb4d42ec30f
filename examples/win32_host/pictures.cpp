#include "pictures.h"

#include <paramdb/platform/core/lib_mgr.h>
#include <paramdb/query/param_instance.h>

#include <cstdint>

namespace {

// Lets everything that is under way come to rest.
void Settle() {
    constexpr ULONGLONG milliseconds = 400;
    ULONGLONG const start = ::GetTickCount64();
    while (::GetTickCount64() - start < milliseconds) {
        MSG message;
        while (::PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE) != FALSE) {
            ::TranslateMessage(&message);
            ::DispatchMessageW(&message);
        }
        ::Sleep(5);
    }
}

// A key of things that are there.
CClavis SomeKey() {
    CQtParamInstance const parameters;
    CClavis key;
    auto const& [id, row] = *parameters.InstrumentParam().begin();
    key[Clavis::qInstrument] = row.get<"instrument">();
    key[Clavis::qInstrParam] = id[0];
    for (int const element : {Clavis::qMode, Clavis::qLocation, Clavis::qSignal}) {
        constexpr int which = 3;
        int place = 0;
        for (auto const& [value, name] : parameters.IdNameMap(static_cast<unsigned int>(element))) {
            if (place++ == which)
                key[element] = value[0];
        }
    }
    return key;
}

// What is on the screen within a window.
bool Save(HWND window, std::wstring const& file) {
    Settle();
    RECT place{};
    ::GetWindowRect(window, &place);
    int const width = static_cast<int>(place.right - place.left);
    int const height = static_cast<int>(place.bottom - place.top);
    BITMAPINFO info{};
    info.bmiHeader.biSize = sizeof info.bmiHeader;
    info.bmiHeader.biWidth = width;
    info.bmiHeader.biHeight = height;
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    HDC const screen = ::GetDC(nullptr);
    HDC const memory = ::CreateCompatibleDC(screen);
    void* pixels = nullptr;
    HBITMAP const picture = ::CreateDIBSection(screen, &info, DIB_RGB_COLORS, &pixels, nullptr, 0);
    HGDIOBJ const before = ::SelectObject(memory, picture);
    ::BitBlt(memory, 0, 0, width, height, screen, static_cast<int>(place.left), static_cast<int>(place.top),
             SRCCOPY);
    ::GdiFlush();
    auto const bytes = static_cast<std::uint32_t>(width) * static_cast<std::uint32_t>(height) * 4;
    BITMAPFILEHEADER header{};
    header.bfType = 0x4D42; // "BM"
    header.bfOffBits = sizeof header + sizeof info.bmiHeader;
    header.bfSize = header.bfOffBits + bytes;
    HANDLE const out = ::CreateFileW(file.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr);
    bool written = out != INVALID_HANDLE_VALUE;
    auto const write = [&](void const* data, std::size_t size) {
        DWORD done = 0;
        written = written && ::WriteFile(out, data, static_cast<DWORD>(size), &done, nullptr) != FALSE;
    };
    write(&header, sizeof header);
    write(&info.bmiHeader, sizeof info.bmiHeader);
    write(pixels, bytes);
    if (out != INVALID_HANDLE_VALUE)
        ::CloseHandle(out);
    ::SelectObject(memory, before);
    ::DeleteObject(picture);
    ::DeleteDC(memory);
    ::ReleaseDC(nullptr, screen);
    return written;
}

// A click on a cell, as the mouse makes it.
void Click(paramdb::win32::ListView const& view, int row, int column, UINT flags) {
    CRect cell;
    if (!view.GetList()->GetSubItemRect(row, column, cell))
        return;
    auto const x = static_cast<LPARAM>(cell.left) + 10;
    auto const y = static_cast<LPARAM>(cell.top) + cell.Height() / 2;
    ::SendMessageW(view.GetWindow(), WM_LBUTTONDOWN, flags | MK_LBUTTON, y << 16 | x);
    ::SendMessageW(view.GetWindow(), WM_LBUTTONUP, flags, y << 16 | x);
    Settle();
}

bool KeyDialog(HostWindow& host, std::wstring const& file, CLibMgr::Language language, bool open) {
    CLibMgr::SetLanguage(language);
    auto* const view = host.EditKey(SomeKey());
    Settle();
    HWND const list = ::GetDlgItem(view->GetWindow(), CPentadDialog::ControlId);
    if (open) {
        // Larger than at first, with room for what hangs below the combo.
        constexpr int more = 70;
        RECT frame{};
        ::GetWindowRect(view->GetWindow(), &frame);
        ::SetWindowPos(view->GetWindow(), nullptr, 0, 0, static_cast<int>(frame.right - frame.left) + more,
                       static_cast<int>(frame.bottom - frame.top) + more, SWP_NOMOVE | SWP_NOZORDER);
        host.Dialog().control().SetFocusItem(Clavis::qInstrParam);
        Settle();
        ::SendMessageW(list, WM_KEYDOWN, VK_F4, 0);
    }
    bool const saved = Save(view->GetWindow(), file);
    host.Dialog().OnBnClickedCancel();
    Settle();
    return saved;
}

} // namespace

bool TakePictures(HostWindow& host, std::wstring const& folder) {
    CLibMgr::SetLanguage(CLibMgr::Language::english);
    ::SetCursorPos(0, 0);
    ::ShowWindow(host.Window(), SW_SHOW);
    ::SetForegroundWindow(host.Window());
    Settle();
    host.Editor().fill(SomeKey());
    for (int const row : {0, 1, 4})
        host.Parameters().ToggleCheckbox(row, 0);
    ::SetFocus(host.GridView().GetWindow());
    Settle();
    paramdb::win32::ListView const& grid = host.GridView();
    Click(grid, 1, 0, 0);
    Click(grid, 5, 0, MK_SHIFT);
    Click(grid, 2, 1, 0);
    Click(grid, 4, 1, MK_CONTROL);
    Click(grid, 3, 2, 0);
    Click(grid, 8, 2, MK_SHIFT);
    // A choice in the editor, which tells the host.
    host.Editor().ChooseInCombo(2, 1, CQtParamInstance().IdNameMap(Clavis::qChannel).begin()->first[0]);
    bool saved = Save(host.Window(), folder + L"/win32_host.bmp");
    saved &= KeyDialog(host, folder + L"/win32_key_dialog.bmp", CLibMgr::Language::english, true);
    saved &= KeyDialog(host, folder + L"/win32_key_dialog_german.bmp", CLibMgr::Language::german, false);
    CLibMgr::ResetLanguage();
    return saved;
}
