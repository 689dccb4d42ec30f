// Binary table files: a fixed header, then records whose fields the caller describes.
//
// A record is described by two arrays of equal length: the sizes and the addresses of its fields. A positive
// size is the number of bytes of the field. A negative size -n is a wide text buffer of n characters; on disk
// it is the number n and then n characters of 16 bits, the whole buffer, whatever the length of the text. All
// numbers of the format itself are little-endian; the bytes of the other fields are those in memory.
//
// Short files and a foreign magic give false. Writing fails with the exceptions of CFile, and so does reading
// a file that the system cannot read.
#pragma once

#include <paramdb/platform/core/export.h>
#include <paramdb/platform/framework/cfile.h>

#include <array>
#include <cstdint>

namespace DynTables {

inline constexpr std::array<char, 8> Magic{'+', '+', '+', '+', '+', '+', '+', '+'};

struct QtTableHeader {
    std::uint32_t header_size = 0;
    std::array<char, 8> magic{};
    std::uint32_t word1 = 0; // format version; below 2, word2 and word3 are absent from the file
    std::uint32_t word2 = 0;
    std::uint32_t word3 = 0;
    std::uint32_t word4 = 0;
};

// Sets size and magic, and the four words in order.
PARAMDB_API void FillHeader(QtTableHeader& header, unsigned int a, unsigned int b, unsigned int c,
                            unsigned int d);

// Writes the 28 bytes of the header in one call, whatever its version.
PARAMDB_API void WriteToFile(CFile& file, QtTableHeader const& header);

// Reads a header. Words that a file of version below 2 lacks become 1. The size in the file is not checked.
// On false the header holds what had been read.
PARAMDB_API bool ReadFromFile(CFile& file, QtTableHeader& header);

// Writes the fields of a record in order.
PARAMDB_API void WriteToFile(CFile& file, int const* sizes, void const* const* fields, unsigned int count);

// Reads the fields of a record in order; true at once for a count of 0. The number stored ahead of a text
// must not be above 200 and is not used otherwise: the caller's size decides. On false some fields hold what
// had been read.
PARAMDB_API bool ReadFromFile(CFile& file, int const* sizes, void** fields, unsigned int count);

} // namespace DynTables
