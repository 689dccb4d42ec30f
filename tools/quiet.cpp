#include "tools/quiet.h"

#include <ostream>

namespace paramdb::tools {
namespace {

int Place() {
    static int const place = std::ios_base::xalloc();
    return place;
}

} // namespace

bool IsQuiet(std::ostream& stream) {
    return stream.iword(Place()) != 0;
}

void SetQuiet(std::ostream& stream, bool is_quiet) {
    stream.iword(Place()) = is_quiet ? 1 : 0;
}

} // namespace paramdb::tools
