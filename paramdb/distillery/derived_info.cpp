#include <paramdb/distillery/derived_info.h>

bool CQtDerivedInfo::BuildDerivedInfo() {
    return true;
}
