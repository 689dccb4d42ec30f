// The smallest host: loads a parameter file and says what it holds.
#include <paramdb/paramdb.h>

#include <cstdio>
#include <string>

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fputs("usage: embed FILE\n", stderr);
        return 2;
    }
    // Messages of the load come here, with a category and a style (1 plain, 3 fault in data, 4 refusal).
    PrWin::SetSink([](int, int, std::wstring const& text) { std::printf("message: %ls", text.c_str()); });

    std::string const name = argv[1];
    CParameterLake::Lake().read(std::wstring(name.begin(), name.end()));
    CQtParamInstance parameters;
    if (!parameters.ReadTablesFromCandidateLake()) {
        std::puts("not loaded");
        return 1;
    }
    std::printf("loaded: base type '%ls', alias '%ls'\n", parameters.BaseType().GetString(),
                parameters.AliasType().GetString());
    return 0;
}
