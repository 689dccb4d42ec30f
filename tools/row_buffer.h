// Room for one row of any table, for reading its lines without its classes.
#pragma once

#include <paramdb/platform/sea/pr_win.h>
#include <paramdb/storage/lake_text.h>
#include <paramdb/tables/catalogue.h>

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <variant>
#include <vector>

namespace paramdb::tools {

// Reads as loads do: what a short line does not have stays as the line before left it, also one that failed.
class RowBuffer {
public:
    using Value = std::variant<std::int32_t, std::uint32_t, std::int64_t, float, double, CFixedText>;

    // Holds a new row of the table at first; all zeros and empty texts for a table that is not of the
    // catalogue.
    explicit RowBuffer(TableDescription const& table);
    RowBuffer(RowBuffer const&) = delete;
    RowBuffer& operator=(RowBuffer const&) = delete;

    // False for a line that a load leaves out. Faults are reported as a load reports them.
    bool Read(LakeText line);

    // The fields in line order, those of the key first.
    std::span<Field const> Fields() const { return m_fields; }
    std::span<ConstField const> Key() const { return std::span(m_const_fields).first(m_key_size); }
    std::span<ConstField const> Row() const { return std::span(m_const_fields).subspan(m_key_size); }
    std::span<ConstField const> Columns(std::size_t first, std::size_t count) const {
        return std::span(m_const_fields).subspan(first, count);
    }

private:
    std::vector<Value> m_values;
    std::vector<Field> m_fields;
    std::vector<ConstField> m_const_fields;
    std::size_t m_key_size;
};

// Whether the fields, which are of the same types, are equal, as keys are in a table.
bool SameFields(std::span<ConstField const> left, std::span<ConstField const> right);

// The fields as bytes that are the same for equal fields alone; replaces what stands in `bytes`.
void PackFields(std::span<ConstField const> fields, std::string& bytes);

// The fields for the terminal, with a slash between, as KeyPattern takes them: 11/1/2.
std::string ShownKey(std::span<ConstField const> key);

// Takes the messages of the library away from everybody while it lives.
class Silence {
public:
    Silence();
    Silence(Silence const&) = delete;
    Silence& operator=(Silence const&) = delete;
    ~Silence();

private:
    PrWin::Sink m_previous;
};

} // namespace paramdb::tools
