#include <paramdb/views/win32/glyphs.h>
#include <paramdb/views/win32/screen.h>

#include <bit>
#include <utility>

namespace paramdb::win32 {

namespace {

// The library of visual styles, which need not be there or in use.
class Styles {
public:
    static Styles& Get() {
        static Styles styles;
        return styles;
    }

    // False if there is no style in force; nothing is drawn then.
    bool DrawBox(HDC context, RECT const& box, BoxState state, bool enabled) {
        constexpr int check_box = 3;
        enum state_t : int {
            off = 1,
            off_disabled = 4,
            on = 5,
            on_disabled = 8,
            some = 9,
            some_disabled = 12
        };
        if (!m_style && m_open && m_in_use() != FALSE)
            m_style = m_open(nullptr, L"BUTTON"); // a window would take it for its own
        if (!m_style)
            return false;
        state_t const drawn = state == BoxState::on     ? (enabled ? on : on_disabled)
                              : state == BoxState::some ? (enabled ? some : some_disabled)
                                                        : (enabled ? off : off_disabled);
        return m_draw(m_style, context, check_box, drawn, &box, nullptr) >= 0;
    }

    void Forget() {
        if (m_style)
            m_close(std::exchange(m_style, nullptr));
    }

private:
    Styles() {
        HMODULE const library = ::LoadLibraryW(L"uxtheme.dll");
        if (!library)
            return;
        m_in_use = std::bit_cast<InUse>(::GetProcAddress(library, "IsAppThemed"));
        m_close = std::bit_cast<Close>(::GetProcAddress(library, "CloseThemeData"));
        m_draw = std::bit_cast<Draw>(::GetProcAddress(library, "DrawThemeBackground"));
        if (m_in_use && m_close && m_draw)
            m_open = std::bit_cast<Open>(::GetProcAddress(library, "OpenThemeData"));
    }

    using InUse = BOOL(WINAPI*)();
    using Open = HANDLE(WINAPI*)(HWND, wchar_t const*);
    using Close = HRESULT(WINAPI*)(HANDLE);
    using Draw = HRESULT(WINAPI*)(HANDLE, HDC, int, int, RECT const*, RECT const*);

    InUse m_in_use = nullptr;
    Open m_open = nullptr; // only with all the others
    Close m_close = nullptr;
    Draw m_draw = nullptr;
    HANDLE m_style = nullptr;
};

} // namespace

int BoxSide(int dpi) {
    constexpr int side = 13;
    return Scaled(side, dpi);
}

void DrawBox(HWND window, HDC context, RECT const& place, BoxState state, bool enabled) {
    int const side = BoxSide(DpiOf(window));
    RECT box = place;
    box.top += (place.bottom - place.top - side) / 2;
    box.bottom = box.top + side;
    box.right = box.left + side;
    if (Styles::Get().DrawBox(context, box, state, enabled))
        return;
    UINT const shape = state == BoxState::some ? DFCS_BUTTON3STATE | DFCS_CHECKED
                       : state == BoxState::on ? DFCS_BUTTONCHECK | DFCS_CHECKED
                                               : DFCS_BUTTONCHECK;
    ::DrawFrameControl(context, &box, DFC_BUTTON, shape | DFCS_FLAT | (enabled ? 0U : DFCS_INACTIVE));
}

void ForgetStyle() {
    Styles::Get().Forget();
}

int ArrowSide(int dpi) {
    constexpr int side = 9;
    return Scaled(side, dpi);
}

void DrawArrow(HDC context, RECT const& place, COLORREF color, int dpi) {
    int const side = ArrowSide(dpi);
    int const half = side / 2;
    int const tip = static_cast<int>(place.right) - side + half;
    int const top = static_cast<int>(place.top + place.bottom) / 2 - half / 2;
    POINT const corners[] = {{tip - half, top}, {tip + half, top}, {tip, top + half}};
    HGDIOBJ const pen = ::SelectObject(context, ::GetStockObject(DC_PEN));
    HGDIOBJ const brush = ::SelectObject(context, ::GetStockObject(DC_BRUSH));
    ::SetDCPenColor(context, color);
    ::SetDCBrushColor(context, color);
    ::Polygon(context, corners, 3);
    ::SelectObject(context, brush);
    ::SelectObject(context, pen);
}

} // namespace paramdb::win32
