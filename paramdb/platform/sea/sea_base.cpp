#include <paramdb/platform/sea/sea_base.h>

CResourceSea& CSeaBase::MessagesSea() {
    // Never destroyed: a query while the process ends may still look a setting up.
    static CResourceSea& sea = *new CResourceSea;
    return sea;
}
