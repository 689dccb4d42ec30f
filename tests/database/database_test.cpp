#include "tests/database/database_test.h"

#include <paramdb/database/cells.h>

#include <bit>
#include <cmath>
#include <cstring>
#include <limits>
#include <map>
#include <type_traits>

namespace {

using namespace ParamDb;
using paramdb::FieldType;
using paramdb::database::SqlColumn;
using paramdb::database::SqlTable;
using paramdb::database::SqlTables;

class Cells {
public:
    explicit Cells(std::uint32_t seed) : m_random(seed) {}

    cell_t Make(FieldType type, bool is_key) {
        switch (type) {
        case FieldType::Int:
            return Integer<std::int32_t>();
        case FieldType::Unsigned:
            return Integer<std::uint32_t>();
        case FieldType::Int64:
            return Integer<std::int64_t>();
        case FieldType::Float:
            return Real<float, std::uint32_t>(is_key);
        case FieldType::Double:
            return Real<double, std::uint64_t>(is_key);
        case FieldType::Text:
            break;
        }
        return Text(is_key);
    }

private:
    std::uint32_t Below(std::uint32_t end) { return static_cast<std::uint32_t>(m_random() % end); }
    std::uint64_t Bits() { return (std::uint64_t{m_random()} << 32) | m_random(); }

    template <class Number>
    cell_t Integer() {
        Number const special[] = {0, 1, static_cast<Number>(-1), std::numeric_limits<Number>::min(),
                                  std::numeric_limits<Number>::max()};
        return Below(4) == 0 ? special[Below(5)] : static_cast<Number>(Bits());
    }

    template <class Number, class BitsOfNumber>
    cell_t Real(bool is_key) {
        using Limits = std::numeric_limits<Number>;
        Number const special[] = {
            Number(0),           -Number(0),    Limits::denorm_min(), -Limits::denorm_min(),
            Limits::min(),       Limits::max(), Limits::lowest(),     Limits::infinity(),
            -Limits::infinity(), Number(1) / 3, Number(16777217),     Number(5e-310)};
        Number number =
            Below(3) == 0 ? special[Below(12)] : std::bit_cast<Number>(static_cast<BitsOfNumber>(Bits()));
        if (is_key && std::isnan(number))
            number = 1;
        // Every kind of number that is none: quiet and signalling, with and without a sign.
        if (!is_key && Below(6) == 0) {
            constexpr int fraction = Limits::digits - 1;
            BitsOfNumber const exponent = std::bit_cast<BitsOfNumber>(Limits::infinity());
            BitsOfNumber const low = static_cast<BitsOfNumber>(Bits()) & ((BitsOfNumber{1} << fraction) - 1);
            BitsOfNumber const sign = BitsOfNumber{Below(2)} << (sizeof(Number) * 8 - 1);
            return MakeCell<Number>(static_cast<BitsOfNumber>(sign | exponent | (low == 0 ? 1 : low)));
        }
        return number;
    }

    // Without a way through a register, where some machines would make a signalling one quiet.
    template <class Number, class BitsOfNumber>
    static cell_t MakeCell(BitsOfNumber bits) {
        cell_t cell(std::in_place_type<Number>, Number());
        std::memcpy(&std::get<Number>(cell), &bits, sizeof bits);
        return cell;
    }

    // Texts of keys have no surrogates: databases have them in the order of characters.
    cell_t Text(bool is_key) {
        std::wstring text;
        switch (Below(6)) {
        case 0: // every character that a parameter file holds
            for (wchar_t unit = 1; unit <= 198; ++unit)
                text += static_cast<wchar_t>(unit + (Below(2) == 0 ? 0 : 57));
            break;
        case 1:
            text = L"it's \"quoted\" \\ {a,b} NULL :p1 $1 ?";
            break;
        case 2:
            text.assign(198, Below(2) == 0 ? L'x' : L'\xFFFD');
            break;
        case 3:
            break;
        default:
            for (std::size_t left = Below(198); left > 0; --left) {
                auto unit = static_cast<wchar_t>(1 + Below(0xFFFF));
                if (is_key && unit >= 0xD800 && unit <= 0xDFFF)
                    unit = L'?';
                text += unit;
            }
        }
        if (!is_key && text.size() < 190 &&
            Below(3) == 0) // characters beyond U+FFFF, among them private ones
            text += static_cast<wchar_t>(0xDBF0 + Below(16)),
                text += static_cast<wchar_t>(0xDC00 + Below(0x400));
        return text;
    }

    std::mt19937 m_random;
};

void AddVersion(CDbTableSet& set) {
    set[paramdb::database::MajorVersionKey].push_back({std::int32_t{216}});
    set[paramdb::database::MinorVersionKey].push_back({std::int32_t{1}});
}

void FillTable(CDbTable& table, SqlTable const& description, std::size_t rows, Cells& cells) {
    struct Less {
        bool operator()(row_t const& left, row_t const& right) const { return left < right; }
    };
    std::multimap<row_t, row_t, Less> sorted;
    for (std::size_t row = 0; row < rows; ++row) {
        row_t key;
        row_t values;
        for (std::size_t column = 0; column < description.columns.size(); ++column) {
            bool const is_key = column < description.key_size;
            (is_key ? key : values).push_back(cells.Make(description.columns[column].type, is_key));
        }
        if (description.HasRowNumber() || !sorted.contains(key))
            sorted.emplace(key, values);
    }
    for (auto const& [key, values] : sorted) {
        table.push_back(key);
        table.back().insert(table.back().end(), values.begin(), values.end());
    }
}

bool SameBits(cell_t const& left, cell_t const& right) {
    if (left.index() != right.index())
        return false;
    return std::visit(
        [&right]<class Value>(Value const& value) {
            if constexpr (std::is_same_v<Value, std::wstring>)
                return value == std::get<Value>(right);
            else
                return std::memcmp(&value, &std::get<Value>(right), sizeof value) == 0;
        },
        left);
}

} // namespace

CDbTableSet RandomSet(std::uint32_t seed, std::size_t rows_of_each) {
    Cells cells(seed);
    CDbTableSet set;
    for (SqlTable const& table : SqlTables())
        FillTable(set[table.Tag()], table, rows_of_each, cells);
    AddVersion(set);
    for (paramdb::database::NamedText const& text : paramdb::database::NamedTexts())
        set[text.key].push_back({cells.Make(FieldType::Text, false)});
    return set;
}

CDbTableSet LargeSet(std::wstring const& tag, std::size_t rows) {
    CDbTableSet set;
    AddVersion(set);
    for (SqlTable const& table : SqlTables()) {
        if (table.Tag() != tag)
            continue;
        for (std::size_t row = 0; row < rows; ++row) {
            row_t& cells = set[tag].emplace_back();
            paramdb::database::ColumnFaults faults;
            for (SqlColumn const& column : table.columns) {
                auto const number = static_cast<std::int64_t>(cells.empty() ? row : row % 1000);
                if (column.type == FieldType::Text)
                    cells.emplace_back(L"row " + std::to_wstring(row));
                else
                    paramdb::database::AddInteger(cells, column.type, number, faults);
            }
        }
    }
    return set;
}

CDbTableSet SmallSet() {
    CDbTableSet set;
    AddVersion(set);
    set[L"<TMode>"] = {{std::int32_t{1}, std::wstring(L"Idle")},
                       {std::int32_t{2}, std::wstring(L"Pr\xFC"
                                                      L"fen")}};
    set[L"<TTrigger>"] = {{std::int32_t{5}, std::wstring(L"Speed"), std::int32_t{-1}}};
    return set;
}

std::string Difference(CDbTableSet const& left, CDbTableSet const& right) {
    for (auto const* set : {&left, &right})
        for (auto const& [key, table] : *set)
            if (!left.contains(key) || !right.contains(key))
                return paramdb::ToUtf8(key) + " is in one set alone";
    for (auto const& [key, table] : left) {
        CDbTable const& other = right.at(key);
        std::string const name = paramdb::ToUtf8(key);
        if (table.size() != other.size() || table.table_type() != other.table_type())
            return name + ": " + std::to_string(table.size()) + " and " + std::to_string(other.size()) +
                   " rows";
        for (std::size_t row = 0; row < table.size(); ++row)
            for (std::size_t cell = 0; cell < std::max(table[row].size(), other[row].size()); ++cell)
                if (table[row].size() != other[row].size() || !SameBits(table[row][cell], other[row][cell]))
                    return name + ": row " + std::to_string(row) + ", cell " + std::to_string(cell) + ": " +
                           paramdb::database::CellText(table[row][cell]) + " and " +
                           paramdb::database::CellText(other[row][cell]);
    }
    return {};
}
