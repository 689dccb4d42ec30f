// The bytes of a file that was read, kept by every lake that has lines of it.
#pragma once

#include <paramdb/platform/core/large_block.h>
#include <paramdb/platform/framework/cstring.h>

#include <cstddef>
#include <memory>
#include <string_view>

namespace paramdb {

struct LakeBytes {
    LargeBlock block;
    std::size_t size = 0;
    CString file; // its name, as it was read

    std::string_view text() const { return {block.chars(), size}; }
};

using SharedLakeBytes = std::shared_ptr<LakeBytes const>;

} // namespace paramdb
