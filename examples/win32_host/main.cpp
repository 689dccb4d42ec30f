// Loads a parameter file and shows its keys in the selection controls, in a plain Windows program.
//   win32_host FILE [--pictures FOLDER]
#include <paramdb/paramdb.h>
#include <paramdb/views/win32/screen.h>
#include <paramdb/views/win32/views.h>

#include "host_window.h"
#include "pictures.h"

#include <shellapi.h>
#include <string>
#include <vector>

namespace {

int Refuse(wchar_t const* why) {
    ::MessageBoxW(nullptr, why, L"paramdb controls", MB_OK | MB_ICONERROR);
    return 1;
}

} // namespace

int WINAPI wWinMain(HINSTANCE, HINSTANCE, wchar_t*, int show) {
    int count = 0;
    wchar_t** const texts = ::CommandLineToArgvW(::GetCommandLineW(), &count);
    std::vector<std::wstring> const arguments(texts, texts + count);
    ::LocalFree(static_cast<void*>(texts));
    bool const pictures = arguments.size() == 4 && arguments[2] == L"--pictures";
    if (arguments.size() != 2 && !pictures)
        return Refuse(L"usage: win32_host FILE [--pictures FOLDER]");
    CParameterLake::Lake().read(arguments[1].c_str());
    if (!CQtParamInstance().ReadTablesFromCandidateLake())
        return Refuse(L"The file cannot be loaded.");

    paramdb::win32::EnableHighDpi();
    paramdb::win32::Views const views;
    HostWindow window;
    if (pictures)
        return TakePictures(window, arguments[3]) ? 0 : 1;
    ::ShowWindow(window.Window(), show);
    MSG message;
    while (::GetMessageW(&message, nullptr, 0, 0) > 0) {
        if (::IsDialogMessageW(window.Window(), &message) != FALSE)
            continue;
        ::TranslateMessage(&message);
        ::DispatchMessageW(&message);
    }
    return 0;
}
