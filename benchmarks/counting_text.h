// The descriptive text of a key over the tables of the plain model, with all that has to be counted counted
// anew at each call.
#pragma once

#include <paramdb/keys/q_clavis.h>

#include "model_tables.h"

#include <string>

namespace benchmarks {

std::wstring CountingText(ModelTables const& tables, QClavis const& key, wchar_t const* separator);

} // namespace benchmarks
