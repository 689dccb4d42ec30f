// The keys that a load looks for at the top level of a file.
#pragma once

#include <paramdb/storage/lake_text.h>
#include <paramdb/tables/catalogue.h>

#include <string>
#include <string_view>
#include <vector>

namespace paramdb::tools::check {

// The table of exactly this tag; null if there is none.
TableDescription const* TableOf(LakeText key);

// The keys that stand with a single value: numbers of the version and named texts.
bool IsVersionKey(LakeText key);
bool IsTextKey(LakeText key);

// "; did you mean <TMode>?", or nothing.
std::string DidYouMeanKey(LakeText key);

} // namespace paramdb::tools::check
