// A library of the host that uses paramdb by itself. The programs open it while they run.
#include "places.h"

#include <cstdio>
#include <string>

#ifdef _WIN32
#define MODULE_API __declspec(dllexport)
#else
#define MODULE_API __attribute__((visibility("default")))
#endif

extern "C" {

MODULE_API TellPlacesFunction TellPlaces;
MODULE_API RunExampleFunction RunExample;

void TellPlaces(Places* places) {
    *places = FindPlaces();
}

int RunExample(char const* file) {
    std::string const name = file;
    CParameterLake::Lake().read(std::wstring(name.begin(), name.end()));
    CQtParamInstance parameters;
    if (!parameters.ReadTablesFromCandidateLake())
        return 1;
    std::printf("loaded: base type '%ls', alias '%ls'\n", parameters.BaseType().GetString(),
                parameters.AliasType().GetString());
    return 0;
}
}
