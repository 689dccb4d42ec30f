#include "display_model.h"

#include <paramdb/platform/core/string_tables.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <iterator>
#include <sstream>
#include <stdexcept>

namespace display_model {
namespace {

Fields Split(std::string const& line) {
    std::istringstream stream(line);
    return {std::istream_iterator<std::string>(stream), {}};
}

std::string Word(std::int64_t id) {
    wchar_t const* text =
        id < 0 || id > 100000 ? nullptr : paramdb::FindString(0x9, static_cast<unsigned int>(id));
    std::string narrow;
    for (; text != nullptr && *text != L'\0'; ++text)
        narrow += static_cast<char>(*text); // Latin-1 keeps each in one byte
    return narrow;
}

std::string Accumulation(int code) {
    return code == 0 ? Word(18) : Word(std::int64_t{code} - 1) + " (#" + std::to_string(code) + ")";
}

// Codes of older data as a load converts them.
int Converted(int code, std::string const& decay) {
    if (code >= 20 && code <= 22)
        return code;
    if (code == 3)
        return std::strtof(decay.c_str(), nullptr) != 0.0f ? 21 : 22;
    return code == 2 ? 20 : 0;
}

} // namespace

std::map<int, Layout> const& Layouts() {
    static std::map<int, Layout> const layouts = [] {
        std::map<int, Layout> all;
        auto const add = [&all](std::map<int, std::string> const& tables, std::string const& columns,
                                std::vector<Shown> const& lines) {
            for (auto const& [instrument, tag] : tables)
                all[instrument] = {tag, columns, lines};
        };
        std::vector<Shown> const trend{{108, 'p', 1}, {144, 'e', 2, 550}, {145, 'c', 3},
                                       {146, 'c', 4}, {114, 'r', 5},      {23, 'r', 6}};
        add({{1001, "<TIpSpectralValue>"}, {2001, "<TIpSpectralTrack>"}, {2007, "<TIpResidualTrack>"}},
            "nnnsnn",
            {{101, 't', 1}, {104, 'l', 2}, {102, 'e', 3, 300}, {103, 'v', 4}, {107, 'i', 5}, {108, 'p', 6}});
        add({{1002, "<TIpCrest>"}, {1003, "<TIpRms>"}, {1004, "<TIpPeak>"}, {1005, "<TIpKurtosis>"}}, "nnr",
            {{101, 't', 1}, {100, 'e', 2, 200}, {111, 'r', 3}});
        add({{1008, "<TIpHoelder>"}}, "nnrn",
            {{101, 't', 1}, {100, 'e', 2, 200}, {111, 'r', 3}, {148, 'v', 4}});
        add({{1060, "<TIpSP>"}}, "n", {{134, 'e', 1, 290}});
        add({{1700, "<TIpSgArea>"}}, "nsnnrnn",
            {{100, 'e', 1, 200}, {103, 'v', 2}, {107, 'i', 3}, {108, 'p', 4}, {10, 'a', 7}});
        add({{2002, "<TIpCrestTrack>"},
             {2003, "<TIpRmsTrack>"},
             {2004, "<TIpPeakTrack>"},
             {2005, "<TIpKurtosisTrack>"},
             {2006, "<TIpModulationTrack>"},
             {20000, "<TIpCvValue>"}},
            "nn", {{101, 't', 1}, {100, 'e', 2, 200}});
        add({{2012, "<TIpVarAreaTrack>"}}, "nnnnnnn",
            {{100, 'e', 1, 200},
             {101, 't', 2},
             {130, 'l', 3},
             {107, 'i', 4},
             {108, 'p', 5},
             {110, 'v', 6},
             {131, 'v', 7}});
        add({{2070, "<TIpSgAreaTrack>"}}, "nnsnn",
            {{101, 't', 1}, {100, 'e', 2, 200}, {103, 'v', 3}, {107, 'i', 4}, {108, 'p', 5}});
        add({{2100, "<TIpCatCurve>"}}, "nn", {{100, 'e', 1, 200}});
        add({{2500, "<TIpSpectrum>"}}, "nnrn", {{101, 't', 1}, {10, 'A', 2}});
        add({{2700, "<TIpSgSection>"}}, "nsnnnn",
            {{100, 'e', 1, 200}, {103, 'v', 2}, {107, 'i', 3}, {108, 'p', 4}});
        add({{2800, "<TIpSpectralDev>"}}, "nnrrrr",
            {{108, 'p', 1}, {144, 'e', 2, 30}, {111, 'r', 3}, {115, 'r', 4}, {105, 'r', 5}, {106, 'r', 6}});
        add({{3000, "<TIpSignalGuard>"}}, "nn", {{100, 'e', 1, 220}});
        add({{3700, "<TIpModSpectrogram>"}}, "nnrn", {{101, 't', 1}});
        add({{10000, "<TIpTrackInterval>"}}, "nnnrrn",
            {{100, 'e', 1, 200},
             {107, 'i', 2},
             {108, 'p', 3},
             {105, 'r', 4},
             {106, 'r', 5},
             {133, 'e', 6, 250}});
        add({{10100, "<TIpCurveMax>"}}, "nn", {{108, 'p', 2}});
        add({{10101, "<TIpCurvePolygon>"}}, "nnnnrr",
            {{109, 'e', 1, 500}, {107, 'o', 3}, {108, 'p', 3}, {110, 'v', 4}, {114, 'r', 5}, {115, 'r', 6}});
        add({{10102, "<TIpSvCurve>"}}, "nn", {{100, 'e', 1, 200}, {107, 'o', 2}, {108, 'p', 2}});
        add({{10201, "<TIpSvBinOp>"}, {11201, "<TIpTrackBinOp>"}}, "nnnnnn",
            {{127, 'e', 1, 400}, {107, 'i', 2}, {108, 'p', 3}, {128, 'i', 4}, {129, 'p', 5}, {101, 't', 6}});
        add({{10202, "<TIpSvTrend>"}, {12202, "<TIpCurveTrend>"}, {13202, "<TIpCurveTrackTrend>"}}, "nnnnrr",
            trend);
        add({{11000, "<TIpTrackTransform>"}}, "nnnn",
            {{112, 'f', 1}, {107, 'i', 2}, {108, 'p', 3}, {101, 't', 4}});
        add({{16000, "<TIpTrackRegression>"}}, "nnnnnn",
            {{108, 'p', 1}, {116, 'f', 2}, {117, 'f', 3}, {118, 'v', 4}, {119, 'v', 5}, {120, 'v', 6}});
        add({{1050, "<TIpRatioTest>"},
             {1051, "<TIpDiffTest>"},
             {2600, "<TIpTimeSignal>"},
             {3500, "<TIpSpectrogram>"},
             {5000, "<TIpSFTrack>"},
             {5001, "<TIpSFTimeSignal>"},
             {21000, "<TIpCvTrack>"}},
            "n", {{101, 't', 1}});
        return all;
    }();
    return layouts;
}

std::string TextLake::Text() const {
    std::string text = "<DbDesign.CacheVersion>: 216\n<DbDesign.CacheMinorVersion>: 1\n";
    for (auto const& [tag, lines] : m_sections) {
        text += tag + ": {\n";
        for (std::string const& line : lines)
            text += " " + line + "\n";
        text += "}\n";
    }
    return text;
}

Fields TextLake::Row(std::string const& tag, int number) const {
    auto const section = m_sections.find(tag);
    if (section != m_sections.end())
        for (std::string const& line : section->second)
            if (std::atoi(line.c_str()) == number)
                return Split(line);
    return {};
}

std::map<std::array<int, 6>, Fields> TextLake::Keyed(std::string const& tag) const {
    std::map<std::array<int, 6>, Fields> rows;
    auto const section = m_sections.find(tag);
    if (section != m_sections.end())
        for (std::string const& line : section->second) {
            Fields const fields = Split(line);
            std::array<int, 6> key;
            for (std::size_t element = 0; element < 6; ++element)
                key[element] = std::stoi(fields[element]);
            rows.try_emplace(key, fields);
        }
    return rows;
}

std::string Model::Display(int parameter, std::string const& prefix, std::string const& suffix) const {
    std::string text;
    for (std::string const& line : Lines(parameter))
        text += prefix + line + suffix;
    return (text.empty() ? prefix + suffix : text).substr(0, 999);
}

std::vector<std::string> Model::Lines(int parameter) const {
    Fields const owner = m_lake.Row("<TInstrumentParam>", parameter);
    if (owner.empty())
        return {};
    int const instrument = std::stoi(owner[1]);
    if (instrument == 10001)
        return PolygonLines(parameter);
    if (instrument == 2900)
        throw std::out_of_range("2900");
    auto const layout = Layouts().find(instrument);
    if (layout == Layouts().end())
        return {};
    Fields const row = m_lake.Row(layout->second.tag, parameter);
    std::vector<std::string> lines;
    if (!row.empty())
        for (Shown const& shown : layout->second.lines)
            lines.push_back(Line(shown, row));
    return lines;
}

std::vector<std::string> Model::PolygonLines(int parameter) const {
    int next_group = 0;
    Fields entry;
    for (auto const& [key, ignored] : m_lake.Keyed("<TIpParamAndStore>"))
        for (auto const& [pattern, row] : m_lake.Keyed("<TIpTrackPolygon>")) {
            bool matches = true;
            for (std::size_t element = 0; element < 6; ++element)
                matches = matches && (pattern[element] == -1 || pattern[element] == key[element]);
            if (!matches)
                continue;
            std::string const group = row[11] == "1" ? std::to_string(next_group++) : row[6];
            if (key[4] == parameter && entry.empty())
                entry = {row[8], row[9], group};
        }
    if (entry.empty())
        return {};
    return {Line({109, 'e', 0, 500}, entry), Line({108, 'p', 1}, entry), Line({110, 'v', 2}, entry)};
}

std::string Model::Line(Shown const& shown, Fields const& row) const {
    std::string const& field = row[shown.column];
    return Word(shown.label) + ": " + Value(shown, field, row);
}

std::string Model::Value(Shown const& shown, std::string const& field, Fields const& row) const {
    int const number = std::atoi(field.c_str());
    auto const numbered = [](std::string const& text, std::string const& behind) {
        return text + " (#" + behind + ")";
    };
    switch (shown.kind) {
    case 't':
        return numbered(Name("<TTrigger>", number, 1), field);
    case 'l':
        return numbered(Name("<TLocation>", number, 1), field);
    case 'i':
        return numbered(Instrument(field), field);
    case 'p':
        return numbered(Name("<TInstrumentParam>", number, 2), field);
    case 'o': {
        std::string const instrument = Name("<TInstrumentParam>", number, 1);
        std::string const id = instrument.empty() ? "-1" : instrument;
        return numbered(Instrument(id), id);
    }
    case 'e':
        return numbered(Word(std::int64_t{shown.base} + number), field);
    case 'f':
        return numbered(Word(300), field);
    case 'A':
        return Accumulation(Converted(number, row[3]));
    case 'a':
        return Accumulation(number);
    case 'c':
        if (number == -1)
            return Word(22);
        return m_lake.Row("<TLearnProcedures>", number).empty() ? Word(9)
                                                                : Name("<TLearnProcedures>", number, 4);
    case 'r': {
        char text[64];
        std::snprintf(text, sizeof text, "%f", static_cast<double>(std::strtof(field.c_str(), nullptr)));
        return text;
    }
    default:
        return field;
    }
}

std::string Model::Name(std::string const& tag, int number, std::size_t column) const {
    Fields const row = m_lake.Row(tag, number);
    return row.empty() ? "" : row[column];
}

std::string Model::Instrument(std::string const& id) const {
    std::string const name = Name("<TInstrument>", std::atoi(id.c_str()), 1);
    return name.empty() ? "(Instr. " + id + ")" : name;
}

} // namespace display_model
