#include "tools/quiet.h"

#include <ostream>

namespace paramdb::tools {
namespace {

int QuietPlace() {
    static int const place = std::ios_base::xalloc();
    return place;
}

} // namespace

bool IsQuiet(std::ostream& stream) {
    return stream.iword(QuietPlace()) != 0;
}

void SetQuiet(std::ostream& stream, bool is_quiet) {
    stream.iword(QuietPlace()) = is_quiet ? 1 : 0;
}

} // namespace paramdb::tools
