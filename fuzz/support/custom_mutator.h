// What a fuzzer of parameter files tells the mutator.
#pragma once

#include "lake_mutator.h"

namespace fuzz {

// The tables to which rows are added; all of them if there is none.
Tags const& MutatorTags();

} // namespace fuzz
