#include "random_lake.h"

#include <paramdb/tables/catalogue.h>

#include <string_view>
#include <vector>

// One random choice for each statement: the operands of an operator are worked out in any order.
namespace equality {
namespace {

std::string Number(int number) {
    return std::to_string(number);
}

std::string RandomInteger(std::string_view column, Random& random) {
    if (column.ends_with("instrument"))
        return Number(RandomInstrument(random));
    if (column.ends_with("parameter"))
        return Number(random.Between(-1, HighestParameter));
    constexpr std::string_view odd[] = {"2147483647", "-2147483648", "+7", "007", "65536", "-93", "515",
                                        "20",         "21",          "22", "100", "4096",  "2500"};
    return random.OneIn(12) ? std::string(random.Pick(odd)) : Number(random.Between(-1, HighestId));
}

// In double quotes. The bytes above 127 are those of single-byte text, C0 (\x80 and so on) among them.
std::string RandomText(std::string_view column, Random& random, int longest) {
    if (column == "definition")
        return '"' + RandomDefinition(random) + '"';
    if (column == "unit") {
        constexpr std::string_view units[] = {"m/s2", "Hz", "kHz", "\xB5m", "1/min", "bar", "", "odd unit"};
        return '"' + std::string(random.Pick(units)) + '"';
    }
    constexpr std::string_view characters = "abcXYZ019_-+.,;:()\\'#%  \t\xE4\xF6\xFC\xDF\xB5\xFF\x80\xA0\x85";
    std::string text = "\"";
    for (int size = random.Between(0, longest); size > 0; --size)
        text += random.Pick(characters);
    return text + '"';
}

std::string NarrowTag(paramdb::TableDescription const& table) {
    std::wstring_view const tag = table.tag;
    return {tag.begin(), tag.end()};
}

// An element of the key of measurement data: few values, so that keys fit the patterns among them, which only
// the polygons have.
std::string RandomElement(std::string_view tag, Random& random) {
    return Number(random.Between(tag == "<TIpTrackPolygon>" ? -1 : 0, 2));
}

std::string RandomName(bool of_instrument, Random& random) {
    std::string row = Number(of_instrument ? RandomInstrument(random) : random.Between(0, HighestId)) + ' ';
    return row += RandomText("name", random, 16);
}

std::string ParameterRow(int parameter, Random& random) {
    std::string row = Number(parameter) + ' ';
    row += Number(RandomInstrument(random)) + ' ';
    row += RandomText("name", random, 16) + ' ';
    row += Number(random.Between(-1, HighestId));
    return row += " 1 2";
}

std::vector<std::string> RandomRows(paramdb::TableDescription const& table, Random& random) {
    std::string const tag = NarrowTag(table);
    std::vector<std::string> rows;
    if (table.row == "QIdxName") { // names for most ids, and for some of them two
        for (int count = random.Between(8, 20); count > 0; --count)
            rows.push_back(RandomName(tag == "<TInstrument>", random));
        return rows;
    }
    if (tag == "<TInstrumentParam>") { // without one for a limit there is no load
        for (int parameter = 0; parameter <= HighestParameter; ++parameter)
            rows.push_back(ParameterRow(parameter, random));
        return rows;
    }
    int const most = table.key == "QClavis" ? 90 : 30;
    for (int count = random.Between(0, most); count > 0; --count)
        rows.push_back(RandomRow(table, random));
    return rows;
}

// The two tables of signals hold the same ids, or nothing is derived at all.
std::vector<std::string> SignalRows(bool properties, int count, Random& random) {
    std::vector<std::string> rows;
    for (int signal = 0; signal < count; ++signal) {
        std::string row = Number(signal) + ' ';
        if (properties) {
            row += Number(random.Between(0, 31)) + " \"Hz\" ";
            row += RandomReal(random) + ' ';
            row += Number(random.Between(-3, 6)) + " 0";
        } else {
            row += RandomText("name", random, 16);
        }
        rows.push_back(row);
    }
    return rows;
}

// The two tables of the grid of virtual modes.
std::vector<std::string> GridRows(bool order, int count, Random& random) {
    std::vector<std::string> rows;
    for (int signal = 0; signal < count; ++signal) {
        std::string row = Number(order ? 10 * (count - signal) : signal) + ' ';
        if (order) {
            row += Number(signal);
        } else {
            row += Number(random.Between(-50, 50)) + ' ';
            row += Number(random.Between(51, 900)) + ".5 ";
            row += Number(random.Between(3, 60)) + ".25 1 0 1 ";
            row += Number(random.Between(0, 1)) + " 1 1";
        }
        rows.push_back(row);
    }
    return rows;
}

} // namespace

int RandomInstrument(Random& random) {
    static std::vector<int> const all = [] {
        std::vector<int> classes{0,    1,    1006, 1070, 1700,  2070,  2500,
                                 2501, 2600, 3500, 9999, 10001, 10201, 13202};
        for (auto const& table : paramdb::Catalogue())
            if (table.instrument_class != -1)
                classes.push_back(table.instrument_class);
        return classes;
    }();
    return random.Pick(all);
}

std::string RandomReal(Random& random) {
    constexpr std::string_view odd[] = {"inf",          "-inf",  "nan", "0",    "-0.0", "0x1.8p3",
                                        "3.4028235e38", "1e-45", "1e6", "1e-7", ".5",   "5."};
    if (random.OneIn(15))
        return std::string(random.Pick(odd));
    std::string text = random.OneIn(4) ? "-" : "";
    text += Number(random.Between(0, random.OneIn(2) ? 20 : 1000000));
    if (!random.OneIn(3))
        text += '.' + Number(random.Between(0, 99999999));
    if (random.OneIn(6))
        text += 'e' + Number(random.Between(-12, 12));
    return text;
}

std::string RandomDefinition(Random& random) {
    constexpr std::string_view odd[] = {"",   "HX",  "O1;O2;O3", "bad*", "OO", "HX-M0.5;HX+M0.5",
                                        "O1", ";;;", "H1+F2;H2", "F 1 ", "X",  "HX-L2;HX+L2;O3"};
    if (random.OneIn(6))
        return std::string(random.Pick(odd));
    // Mostly bands that rise, each of one kind of terms; a bad mixture now and then comes of itself.
    std::string const kinds = random.OneIn(2) ? "HM" : "FO";
    std::string text;
    int const positions = random.Between(1, 3) * 2;
    for (int position = 0; position < positions; ++position) {
        std::string letters = kinds + "L";
        for (int term = random.Between(1, 3); term > 0; --term) {
            bool const signed_term = !text.empty() && text.back() != ';';
            text += signed_term ? (random.OneIn(4) ? "-" : "+") : "";
            std::size_t const place = random.Bits() % letters.size();
            char const letter = letters[place];
            letters.erase(place, 1);
            text += letter + Number((letter == 'F' ? 100 : 4) * position + random.Between(0, 3));
            text += letter == 'L' || random.OneIn(2) ? "" : '.' + Number(random.Between(0, 999));
        }
        text += position + 1 < positions ? ";" : "";
    }
    return text;
}

std::string RandomField(paramdb::ColumnDescription const& column, Random& random) {
    constexpr std::string_view wrong[] = {"2147483648", "-9223372036854775809", "1e999", "none", "x1", "--1"};
    if (random.OneIn(200))
        return std::string(random.Pick(wrong));
    switch (column.type) {
    case paramdb::FieldType::Int:
        return RandomInteger(column.name, random);
    case paramdb::FieldType::Unsigned:
        return random.OneIn(10) ? "4294967295" : Number(random.Between(0, 15));
    case paramdb::FieldType::Int64:
        return Number(random.Between(-9, 9)).append(random.OneIn(2) ? "" : "0000000000");
    case paramdb::FieldType::Float:
    case paramdb::FieldType::Double:
        return RandomReal(random);
    case paramdb::FieldType::Text:
        break;
    }
    return RandomText(column.name, random, random.OneIn(30) ? 230 : 16);
}

std::string RandomRow(paramdb::TableDescription const& table, Random& random) {
    std::string const tag = NarrowTag(table);
    std::string row;
    for (auto const* columns : {&table.key_columns, &table.row_columns}) {
        for (auto const& column : *columns) {
            if (random.OneIn(300))
                return row;
            row += row.empty() ? "" : random.OneIn(10) ? " \t " : " ";
            bool const is_element = table.key == "QClavis" && columns == &table.key_columns;
            row += is_element && (tag == "<TRelativeLimit>" || !random.OneIn(20))
                       ? RandomElement(tag, random)
                       : RandomField(column, random);
        }
    }
    return row;
}

std::string RandomLake(Random& random) {
    std::string text = "; made from a seed\n<DbDesign.CacheVersion>: 216\n<DbDesign.CacheMinorVersion>: 1\n"
                       "<QLearn><FLearnArcName>: \"learned \xE4.bin\"\n<QType><FBaseName>: base\n\n"
                       "<QType><FAliasName>: \"an alias\"\n";
    int const signals = random.Between(4, HighestId);
    int const grid = random.Between(0, 3);
    for (auto const& table : paramdb::Catalogue()) {
        std::string const tag = NarrowTag(table);
        auto const rows = tag == "<TApplicationSignal>"    ? SignalRows(false, signals, random)
                          : tag == "<TAppSignalProperty>"  ? SignalRows(true, signals, random)
                          : tag == "<TAutoModeParam>"      ? GridRows(false, grid, random)
                          : tag == "<TAutoModeParamOrder>" ? GridRows(true, grid, random)
                                                           : RandomRows(table, random);
        text += tag;
        text += random.OneIn(2) ? ": {\r\n" : ": {\n";
        for (std::string const& row : rows) {
            text += '\t' + row;
            text += random.OneIn(3) ? "\r\n" : "\n";
        }
        text += "} ; the end\n";
    }
    return text;
}

} // namespace equality
