#include <paramdb/storage/dyn_tables.h>

#include <algorithm>
#include <cstddef>

namespace DynTables {
namespace {

constexpr std::uint32_t HeaderSize = 28;
constexpr std::uint32_t FirstFullVersion = 2;
constexpr std::int32_t LongestText = 200;

using Word = std::array<unsigned char, 4>;

Word ToBytes(std::uint32_t value) {
    Word bytes;
    for (unsigned byte = 0; byte < bytes.size(); ++byte)
        bytes[byte] = static_cast<unsigned char>(value >> (8 * byte));
    return bytes;
}

bool ReadBytes(CFile& file, void* bytes, std::uint32_t count) {
    return file.Read(bytes, count) == count;
}

bool ReadWord(CFile& file, std::uint32_t& value) {
    Word bytes;
    if (!ReadBytes(file, bytes.data(), bytes.size()))
        return false;
    value = 0;
    for (unsigned byte = 0; byte < bytes.size(); ++byte)
        value |= static_cast<std::uint32_t>(bytes[byte]) << (8 * byte);
    return true;
}

// The capacity that a negative size tells.
std::uint32_t TextCapacity(int size) {
    return 0u - static_cast<std::uint32_t>(size);
}

// Characters on their way between a buffer of wide ones and the 16 bits of the disk.
constexpr std::uint32_t ChunkCharacters = 256;
using Chunk = std::array<unsigned char, 2 * ChunkCharacters>;

void WriteText(CFile& file, wchar_t const* text, std::uint32_t capacity) {
    Chunk chunk;
    while (capacity > 0) {
        std::uint32_t const count = std::min(capacity, ChunkCharacters);
        for (std::uint32_t character = 0; character < count; ++character) {
            auto const unit = static_cast<std::uint16_t>(text[character]);
            chunk[2 * character] = static_cast<unsigned char>(unit & 0xFF);
            chunk[2 * character + 1] = static_cast<unsigned char>(unit >> 8);
        }
        file.Write(chunk.data(), 2 * count);
        text += count;
        capacity -= count;
    }
}

bool ReadText(CFile& file, wchar_t* text, std::uint32_t capacity) {
    Chunk chunk;
    while (capacity > 0) {
        std::uint32_t const count = std::min(capacity, ChunkCharacters);
        if (!ReadBytes(file, chunk.data(), 2 * count))
            return false;
        for (std::uint32_t character = 0; character < count; ++character)
            text[character] = static_cast<wchar_t>(chunk[2 * character] | chunk[2 * character + 1] << 8);
        text += count;
        capacity -= count;
    }
    return true;
}

} // namespace

void FillHeader(QtTableHeader& header, unsigned int a, unsigned int b, unsigned int c, unsigned int d) {
    header = {HeaderSize, Magic, a, b, c, d};
}

void WriteToFile(CFile& file, QtTableHeader const& header) {
    std::array<unsigned char, HeaderSize> bytes;
    auto next = std::ranges::copy(ToBytes(header.header_size), bytes.begin()).out;
    next = std::ranges::copy(header.magic, next).out;
    for (std::uint32_t const word : {header.word1, header.word2, header.word3, header.word4})
        next = std::ranges::copy(ToBytes(word), next).out;
    file.Write(bytes.data(), HeaderSize);
}

bool ReadFromFile(CFile& file, QtTableHeader& header) {
    if (!ReadWord(file, header.header_size))
        return false;
    if (!ReadBytes(file, header.magic.data(), static_cast<std::uint32_t>(header.magic.size())) ||
        header.magic != Magic)
        return false;
    if (!ReadWord(file, header.word1))
        return false;
    if (header.word1 < FirstFullVersion)
        header.word2 = header.word3 = 1;
    else if (!ReadWord(file, header.word2) || !ReadWord(file, header.word3))
        return false;
    return ReadWord(file, header.word4);
}

void WriteToFile(CFile& file, int const* sizes, void const* const* fields, unsigned int count) {
    for (unsigned int field = 0; field < count; ++field) {
        if (sizes[field] >= 0) {
            file.Write(fields[field], static_cast<unsigned int>(sizes[field]));
            continue;
        }
        std::uint32_t const capacity = TextCapacity(sizes[field]);
        file.Write(ToBytes(capacity).data(), sizeof(Word));
        WriteText(file, static_cast<wchar_t const*>(fields[field]), capacity);
    }
}

bool ReadFromFile(CFile& file, int const* sizes, void** fields, unsigned int count) {
    for (unsigned int field = 0; field < count; ++field) {
        if (sizes[field] >= 0) {
            if (!ReadBytes(file, fields[field], static_cast<std::uint32_t>(sizes[field])))
                return false;
            continue;
        }
        std::uint32_t stored = 0;
        if (!ReadWord(file, stored) || static_cast<std::int32_t>(stored) > LongestText)
            return false;
        if (!ReadText(file, static_cast<wchar_t*>(fields[field]), TextCapacity(sizes[field])))
            return false;
    }
    return true;
}

} // namespace DynTables
