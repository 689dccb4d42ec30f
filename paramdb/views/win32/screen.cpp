#include <paramdb/views/win32/screen.h>

#include <bit>
#include <map>

namespace paramdb::win32 {

namespace {

// A function that only some versions of the system have; null without it.
template <class Function>
Function SystemFunction(char const* name) {
    HMODULE const library = ::GetModuleHandleW(L"user32.dll");
    return library ? std::bit_cast<Function>(::GetProcAddress(library, name)) : nullptr;
}

int MainScreenDpi() {
    HDC const context = ::GetDC(nullptr);
    int const dpi = ::GetDeviceCaps(context, LOGPIXELSX);
    ::ReleaseDC(nullptr, context);
    return dpi > 0 ? dpi : PlainDpi;
}

HFONT MakeMessageFont(int dpi) {
    using ParametersForDpi = BOOL(WINAPI*)(UINT, UINT, void*, UINT, UINT);
    NONCLIENTMETRICSW metrics{};
    metrics.cbSize = sizeof metrics;
    static auto const for_dpi = SystemFunction<ParametersForDpi>("SystemParametersInfoForDpi");
    if (for_dpi &&
        for_dpi(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0, static_cast<UINT>(dpi)) != FALSE)
        return ::CreateFontIndirectW(&metrics.lfMessageFont);
    ::SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0);
    metrics.lfMessageFont.lfHeight = ::MulDiv(metrics.lfMessageFont.lfHeight, dpi, MainScreenDpi());
    return ::CreateFontIndirectW(&metrics.lfMessageFont);
}

} // namespace

bool EnableHighDpi() {
    using SetContext = BOOL(WINAPI*)(HANDLE);
    using SetAware = BOOL(WINAPI*)();
    auto const per_screen = std::bit_cast<HANDLE>(std::intptr_t{-4}); // each screen, version 2
    if (auto const set_context = SystemFunction<SetContext>("SetProcessDpiAwarenessContext");
        set_context && set_context(per_screen) != FALSE)
        return true;
    auto const set_aware = SystemFunction<SetAware>("SetProcessDPIAware");
    return set_aware && set_aware() != FALSE;
}

int DpiOf(HWND window) {
    using ForWindow = UINT(WINAPI*)(HWND);
    static auto const for_window = SystemFunction<ForWindow>("GetDpiForWindow");
    int const dpi = window && for_window ? static_cast<int>(for_window(window)) : 0;
    return dpi > 0 ? dpi : MainScreenDpi();
}

HFONT MessageFont(int dpi) {
    static auto& fonts = *new std::map<int, HFONT>;
    HFONT& font = fonts[dpi];
    if (!font)
        font = MakeMessageFont(dpi);
    return font;
}

FontContext::FontContext(HWND window, HFONT font)
    : m_window(window), m_context(window ? ::GetDC(window) : ::CreateCompatibleDC(nullptr)) {
    if (!font && window)
        font = reinterpret_cast<HFONT>(::SendMessageW(window, WM_GETFONT, 0, 0));
    m_before = ::SelectObject(m_context, font ? static_cast<HGDIOBJ>(font) : ::GetStockObject(SYSTEM_FONT));
}

FontContext::~FontContext() {
    ::SelectObject(m_context, m_before);
    if (m_window)
        ::ReleaseDC(m_window, m_context);
    else
        ::DeleteDC(m_context);
}

int FontContext::LineHeight() const {
    TEXTMETRICW metrics{};
    ::GetTextMetricsW(m_context, &metrics);
    return static_cast<int>(metrics.tmHeight);
}

SIZE FontContext::SizeOf(CString const& text) const {
    SIZE size{};
    ::GetTextExtentPoint32W(m_context, text.GetString(), text.GetLength(), &size);
    return size;
}

} // namespace paramdb::win32
