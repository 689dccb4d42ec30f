#include "tools/command.h"
#include "tools/terminal.h"

#include <iostream>

int main(int count, char* arguments[]) {
    paramdb::tools::Utf8Terminal const terminal;
    return paramdb::tools::RunCommand(paramdb::tools::Utf8Arguments(count, arguments), std::cout, std::cerr);
}
