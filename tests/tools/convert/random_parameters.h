// Random parameters for tests of converting.
#pragma once

#include <paramdb/storage/white_space.h>
#include <paramdb/tables/catalogue.h>

#include "tools/convert/parameter_set.h"
#include "tools/rewrite/row_fields.h"

#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>
#include <random>
#include <string>
#include <vector>

class RandomParameters {
public:
    explicit RandomParameters(unsigned seed) : m_random(seed) {}

    // Some tables with some rows, extreme numbers among them, and texts that every kind of file can hold.
    paramdb::tools::ParameterSet Set() {
        paramdb::tools::ParameterSet parameters;
        parameters.version[0] = Chance(50) ? 216 : static_cast<std::int32_t>(Bits());
        if (Chance(80))
            parameters.version[1] = static_cast<std::int32_t>(Bits());
        for (auto& text : parameters.texts)
            if (Chance(70))
                text = Text(40);
        for (std::size_t count = Number(5); count > 0; --count)
            AddTable(parameters, Number(paramdb::Catalogue().size()));
        return parameters;
    }

    void AddTable(paramdb::tools::ParameterSet& parameters, std::size_t table) {
        auto& rows = parameters.tables[table];
        for (std::size_t count = Number(8); count > 0; --count)
            rows.push_back(Row(table));
    }

    ParamDb::row_t Row(std::size_t table) {
        ParamDb::row_t row;
        for (auto const& column : paramdb::tools::ColumnsOf(paramdb::Catalogue()[table]))
            row.push_back(Cell(column.type));
        return row;
    }

    ParamDb::cell_t Cell(paramdb::FieldType type) {
        switch (type) {
        case paramdb::FieldType::Int:
            return Chance(50) ? static_cast<std::int32_t>(Number(5)) : Integer<std::int32_t>();
        case paramdb::FieldType::Unsigned:
            return Integer<std::uint32_t>();
        case paramdb::FieldType::Int64:
            return Integer<std::int64_t>();
        case paramdb::FieldType::Float:
            return Float<float>(std::bit_cast<float>(static_cast<std::uint32_t>(Bits())));
        case paramdb::FieldType::Double:
            return Float<double>(std::bit_cast<double>(Bits()));
        case paramdb::FieldType::Text:
            break;
        }
        return Text(70);
    }

    // A text of bytes that a line can hold.
    std::wstring Text(std::size_t longest) {
        std::wstring text;
        bool has_blank = false;
        for (std::size_t count = Number(Chance(10) ? longest : 6); count > 0; --count) {
            auto const unit = static_cast<wchar_t>(Number(255) + 1);
            bool const blank = paramdb::IsWhiteSpace(unit);
            bool const fits = unit != L'\n' && unit != L'"';
            text += fits ? unit : L'x';
            has_blank = has_blank || blank;
        }
        if (Chance(10) && !has_blank && !text.empty() && text.find_first_of(L":;{}") == std::wstring::npos)
            text.insert(1, L"\"");
        // A second quote in the line would free what stands between.
        return text.find(L'"') != std::wstring::npos && Chance(90) ? L"one\"" : text;
    }

    std::uint64_t Bits() { return m_random(); }
    std::size_t Number(std::size_t below) {
        return std::uniform_int_distribution<std::size_t>(0, below - 1)(m_random);
    }
    bool Chance(std::size_t percent) { return Number(100) < percent; }

private:
    template <class T>
    T Integer() {
        using Limits = std::numeric_limits<T>;
        T const extremes[] = {Limits::min(), Limits::max(), T(0), T(1), static_cast<T>(Limits::max() / 2)};
        return Chance(30) ? extremes[Number(5)] : static_cast<T>(Bits());
    }
    // Of a NaN no more than the sign can be written.
    template <class T>
    T Float(T number) {
        using Limits = std::numeric_limits<T>;
        T const extremes[] = {Limits::max(),
                              Limits::lowest(),
                              Limits::min(),
                              Limits::denorm_min(),
                              Limits::infinity(),
                              -Limits::infinity(),
                              Limits::quiet_NaN(),
                              T(-0.0),
                              T(0.1)};
        if (Chance(40))
            number = extremes[Number(9)];
        return std::isnan(number) ? std::copysign(Limits::quiet_NaN(), number) : number;
    }

    std::mt19937_64 m_random;
};
