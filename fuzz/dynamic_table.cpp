// Binary table files: headers and records of any layout, read from any bytes. The first bytes of an input
// tell the layout, the others are the file.
#include <paramdb/storage/dyn_tables.h>

#include "support/expect.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>
#include <vector>

namespace {

// A file in memory.
class MemoryFile : public CFile {
public:
    explicit MemoryFile(std::span<std::uint8_t const> bytes = {}) : m_bytes(bytes.begin(), bytes.end()) {}

    unsigned Read(void* buffer, unsigned count) override {
        auto const taken = static_cast<unsigned>(std::min<std::size_t>(count, m_bytes.size() - m_position));
        if (taken > 0)
            std::memcpy(buffer, m_bytes.data() + m_position, taken);
        m_position += taken;
        return taken;
    }
    void Write(void const* buffer, unsigned count) override {
        auto const* const bytes = static_cast<std::uint8_t const*>(buffer);
        m_bytes.insert(m_bytes.end(), bytes, bytes + count);
    }
    std::vector<std::uint8_t> const& Bytes() const { return m_bytes; }

private:
    std::vector<std::uint8_t> m_bytes;
    std::size_t m_position = 0;
};

// A record with room for its fields and not a byte more, so that a sanitizer sees who writes beyond one.
class Record {
public:
    explicit Record(std::span<std::uint8_t const> layout) {
        for (std::uint8_t const size : layout) {
            bool const is_text = size % 2 != 0;
            int const count = size / 2;
            m_sizes.push_back(is_text && count > 0 ? -count : count);
            m_bytes.emplace_back(is_text ? 0 : static_cast<std::size_t>(count));
            m_texts.emplace_back(is_text ? static_cast<std::size_t>(count) : 0);
        }
        for (std::size_t field = 0; field < m_sizes.size(); ++field)
            m_fields.push_back(m_sizes[field] < 0 ? static_cast<void*>(m_texts[field].data())
                                                  : static_cast<void*>(m_bytes[field].data()));
    }

    bool Read(CFile& file) { return DynTables::ReadFromFile(file, m_sizes.data(), m_fields.data(), Count()); }
    void Write(CFile& file) const { DynTables::WriteToFile(file, m_sizes.data(), m_fields.data(), Count()); }
    bool operator==(Record const& other) const {
        return m_bytes == other.m_bytes && m_texts == other.m_texts;
    }

private:
    unsigned Count() const { return static_cast<unsigned>(m_sizes.size()); }

    std::vector<int> m_sizes;
    std::vector<std::vector<std::uint8_t>> m_bytes;
    std::vector<std::vector<wchar_t>> m_texts;
    std::vector<void*> m_fields;
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    std::span<std::uint8_t const> input(data, size);
    if (input.empty())
        return 0;
    std::size_t const fields = std::min<std::size_t>(input[0] % 16, input.size() - 1);
    auto const layout = input.subspan(1, fields);
    MemoryFile file(input.subspan(1 + fields));
    MemoryFile written;

    DynTables::QtTableHeader header;
    if (!DynTables::ReadFromFile(file, header))
        return 0;
    fuzz::Expect(header.magic == DynTables::Magic, "the magic of a table file");
    bool const is_full = header.word1 >= 2;
    if (is_full) // the shorter form is read but not written
        DynTables::WriteToFile(written, header);

    // A record without fields has no length, so there may be any number of them.
    std::size_t most = fields > 0 ? 1000 : 3;
    std::vector<Record> records;
    for (Record record(layout); most > 0 && record.Read(file); --most) {
        records.push_back(Record(layout));
        MemoryFile one;
        record.Write(one);
        MemoryFile back(one.Bytes());
        fuzz::Expect(records.back().Read(back), "a record that was written");
        fuzz::Expect(records.back() == record, "the record that was written");
        records.back().Write(written);
    }
    if (!is_full)
        return 0;

    MemoryFile again(written.Bytes());
    DynTables::QtTableHeader same;
    fuzz::Expect(DynTables::ReadFromFile(again, same) && same.word1 == header.word1 &&
                     same.word2 == header.word2 && same.word3 == header.word3 && same.word4 == header.word4,
                 "the header that was written");
    for (Record const& record : records) {
        Record read(layout);
        fuzz::Expect(read.Read(again) && read == record, "the records that were written");
    }
    return 0;
}
