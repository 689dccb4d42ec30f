// SQL databases of parameter data. They link paramdb::database.
#pragma once

#include <paramdb/database/connection_text.h>
#include <paramdb/database/export_tables.h>
#include <paramdb/database/import_tables.h>
#include <paramdb/database/revision.h>
