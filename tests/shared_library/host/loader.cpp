// A program that is not linked with paramdb: it opens the library, and then a module that needs it.
//   loader LIBRARY MODULE FILE
#include "modules.h"

#include <cstdio>

#ifdef _WIN32
#include <vector>

// The version that the file tells of itself.
static void PrintVersion(char const* library) {
    std::vector<char> data(GetFileVersionInfoSizeA(library, nullptr));
    VS_FIXEDFILEINFO* info = nullptr;
    UINT size = 0;
    if (!GetFileVersionInfoA(library, 0, static_cast<DWORD>(data.size()), data.data()) ||
        !VerQueryValueA(data.data(), "\\", reinterpret_cast<void**>(&info), &size)) {
        std::puts("no version");
        return;
    }
    std::printf("version %u.%u.%u.%u\n", static_cast<unsigned>(HIWORD(info->dwFileVersionMS)),
                static_cast<unsigned>(LOWORD(info->dwFileVersionMS)),
                static_cast<unsigned>(HIWORD(info->dwFileVersionLS)),
                static_cast<unsigned>(LOWORD(info->dwFileVersionLS)));
}
#endif

int main(int argc, char** argv) {
    if (argc != 4)
        return 2;
#ifdef _WIN32
    PrintVersion(argv[1]);
#endif
    if (OpenModule(argv[1]) == nullptr) {
        std::printf("not opened: %s\n", argv[1]);
        return 1;
    }
    void* const module = OpenModule(argv[2]);
    auto* const run = module != nullptr ? FindFunction<RunExampleFunction>(module, "RunExample") : nullptr;
    if (run == nullptr) {
        std::printf("not opened: %s\n", argv[2]);
        return 1;
    }
    return run(argv[3]);
}
