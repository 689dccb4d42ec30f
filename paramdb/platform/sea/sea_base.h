// The seas that belong to the process.
#pragma once

#include <paramdb/platform/core/export.h>
#include <paramdb/platform/sea/resource_sea.h>

class PARAMDB_API CSeaBase {
public:
    // The sea of messages and dialog settings. Built, empty and bound to no file, on first use, also when
    // several threads come first together, and there until the process ends. A host that wants settings to
    // last opens it on a file at start and saves it.
    [[nodiscard]] static CResourceSea& MessagesSea();
};
