// The plain types and numbers that windows are talked to with: the system's own on Windows, the same few by
// the same names elsewhere.
#pragma once

#ifdef _WIN32

// clang-format off
#include <paramdb/platform/core/windows_api.h> // first, the next one needs it
#include <commctrl.h>
// clang-format on

#else

#include <cstdint>

using UINT = unsigned int;
using WPARAM = std::uintptr_t;
using LPARAM = std::intptr_t;
using LRESULT = std::intptr_t;
using COLORREF = std::uint32_t;    // 0x00BBGGRR
using HWND = struct WindowHandle*; // a number in the clothes of a pointer; null is no window

struct POINT {
    std::int32_t x, y;
};
struct SIZE {
    std::int32_t cx, cy;
};
struct RECT {
    std::int32_t left, top, right, bottom;
};

// An item on its way into a list; `mask` tells which fields count.
struct LVITEMW {
    UINT mask;
    int iItem;
    int iSubItem;
    wchar_t* pszText;
    LPARAM lParam;
};
inline constexpr UINT LVIF_TEXT = 0x1;
inline constexpr UINT LVIF_PARAM = 0x4;

// A point of a list and what is there.
struct LVHITTESTINFO {
    POINT pt;
    UINT flags;
    int iItem;
    int iSubItem;
};
inline constexpr UINT LVHT_NOWHERE = 0x1;
inline constexpr UINT LVHT_ONITEMICON = 0x2;
inline constexpr UINT LVHT_ONITEMLABEL = 0x4;
inline constexpr UINT LVHT_ONITEMSTATEICON = 0x8;
inline constexpr UINT LVHT_ONITEM = LVHT_ONITEMICON | LVHT_ONITEMLABEL | LVHT_ONITEMSTATEICON;
inline constexpr UINT LVHT_ABOVE = 0x8;
inline constexpr UINT LVHT_BELOW = 0x10;
inline constexpr UINT LVHT_TORIGHT = 0x20;
inline constexpr UINT LVHT_TOLEFT = 0x40;

// How the text of a column stands.
inline constexpr int LVCFMT_LEFT = 0;
inline constexpr int LVCFMT_RIGHT = 1;
inline constexpr int LVCFMT_CENTER = 2;

inline constexpr UINT LVS_EX_FULLROWSELECT = 0x20;
inline constexpr UINT LVS_EX_ONECLICKACTIVATE = 0x40;
inline constexpr UINT LVS_EX_BORDERSELECT = 0x8000;

inline constexpr UINT WM_SETFOCUS = 0x7;
inline constexpr UINT WM_KILLFOCUS = 0x8;
inline constexpr UINT WM_CLOSE = 0x10;
inline constexpr UINT WM_KEYDOWN = 0x100;
inline constexpr UINT WM_COMMAND = 0x111;
inline constexpr UINT WM_USER = 0x400;

inline constexpr UINT CB_ADDSTRING = 0x143;
inline constexpr UINT CB_GETCOUNT = 0x146;
inline constexpr UINT CB_GETCURSEL = 0x147;
inline constexpr UINT CB_GETLBTEXT = 0x148;
inline constexpr UINT CB_GETLBTEXTLEN = 0x149;
inline constexpr UINT CB_RESETCONTENT = 0x14B;
inline constexpr UINT CB_SETCURSEL = 0x14E;
inline constexpr UINT CB_GETITEMDATA = 0x150;
inline constexpr UINT CB_SETITEMDATA = 0x151;
inline constexpr UINT CB_FINDSTRINGEXACT = 0x158;
inline constexpr int CB_ERR = -1;

inline constexpr UINT LVM_GETITEMCOUNT = 0x1004;
inline constexpr UINT LVM_DELETEALLITEMS = 0x1009;
inline constexpr UINT LVM_HITTEST = 0x1012;
inline constexpr UINT LVM_SETEXTENDEDLISTVIEWSTYLE = 0x1036;
inline constexpr UINT LVM_GETEXTENDEDLISTVIEWSTYLE = 0x1037;
inline constexpr UINT LVM_INSERTITEMW = 0x104D;

// Keys held while the mouse is used.
inline constexpr UINT MK_LBUTTON = 0x1;
inline constexpr UINT MK_SHIFT = 0x4;
inline constexpr UINT MK_CONTROL = 0x8;

inline constexpr UINT VK_SPACE = 0x20;
inline constexpr UINT VK_PRIOR = 0x21; // page up
inline constexpr UINT VK_NEXT = 0x22;  // page down
inline constexpr UINT VK_END = 0x23;
inline constexpr UINT VK_HOME = 0x24;
inline constexpr UINT VK_UP = 0x26;
inline constexpr UINT VK_DOWN = 0x28;

inline constexpr int IDOK = 1;
inline constexpr int IDCANCEL = 2;

#endif

#include <bit>

// What a parameter of a message points to.
template <class T>
T* PointerIn(LPARAM parameter) noexcept {
    return std::bit_cast<T*>(parameter);
}
