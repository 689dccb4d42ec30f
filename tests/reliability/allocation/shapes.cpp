#include "shapes.h"

#include <algorithm>
#include <cmath>
#include <string_view>

namespace shapes {
namespace {

constexpr char Version[] = "<DbDesign.CacheVersion>: 216\n<DbDesign.CacheMinorVersion>: 1\n";

std::string Repeated(std::string_view line, std::size_t count) {
    std::string text = Version;
    text.reserve(text.size() + line.size() * count);
    for (; count > 0; --count)
        text += line;
    return text;
}

// A section with the lines that the function makes of numbers, the highest first.
template <class Line>
std::string Section(std::string const& tag, std::size_t count, Line const& line) {
    std::string text = tag + ": {\n";
    for (std::size_t number = count; number > 0; --number)
        text += line(std::to_string(number)) + '\n';
    return text + "}\n";
}

template <class Line>
std::string Table(std::string const& tag, std::size_t count, Line const& line) {
    return Version + Section(tag, count, line);
}

std::string Deep(std::size_t count) {
    return Repeated("{\n", count);
}
std::string DeepKeys(std::size_t count) {
    return Repeated("k: {\n", count) + std::string(count, '}');
}
std::string DeepAndClosed(std::size_t count) {
    std::string text = Repeated("{\n", count);
    for (; count > 0; --count)
        text += "}\n";
    return text;
}
std::string ClosingLines(std::size_t count) {
    return Repeated("}\n", count);
}
std::string OneSectionAgain(std::size_t count) {
    return Repeated("<TMode>: {\n1 a\n}\n", count);
}
std::string OneKeyAgain(std::size_t count) {
    return Repeated("<k>: v\n", count);
}
std::string KeysDownwards(std::size_t count) {
    std::string text = Version;
    for (; count > 0; --count)
        text += "k" + std::to_string(10'000'000 + count) + ": v\n";
    return text;
}
std::string OneLine(std::size_t count) {
    return Version + ("<TMode>: {\n1 " + std::string(count * 10, 'x')) + "\n}\n";
}
std::string OneKey(std::size_t count) {
    return Version + std::string(count * 10, 'x') + ": 1\n";
}
std::string Quotes(std::size_t count) {
    std::string text = std::string(Version) + "<TMode>: {\n1 ";
    for (; count > 0; --count)
        text += "\"a\" ";
    return text + "\n}\n";
}
std::string BlankLines(std::size_t count) {
    return Repeated("\n", count);
}
std::string Comments(std::size_t count) {
    return Repeated("; comment\n", count);
}
std::string UnknownSections(std::size_t count) {
    std::string text = Version;
    for (; count > 0; --count)
        text += "<TX" + std::to_string(count) + ">: {\n1 a\n}\n";
    return text;
}
std::string BadRows(std::size_t count) {
    return Table("<TInstrumentParam>", count, [](std::string const&) { return std::string("x x x"); });
}
std::string Modes(std::size_t count) {
    return Table("<TMode>", count, [](std::string const& id) { return id + " mode" + id; });
}
std::string OneModeAgain(std::size_t count) {
    return Table("<TMode>", count, [](std::string const& id) { return "1 mode" + id; });
}
std::string OneNameAgain(std::size_t count) {
    return Table("<TMode>", count, [](std::string const& id) { return id + " same"; });
}
std::string Parameters(std::size_t count) {
    return Table("<TInstrumentParam>", count,
                 [](std::string const& id) { return id + " 1001 parameter" + id + " 0 0 0"; });
}
std::string OneParameterAgain(std::size_t count) {
    return Table("<TInstrumentParam>", count,
                 [](std::string const& id) { return "1 1001 parameter" + id + " 0 0 0"; });
}
std::string PositionsAndOneThatIsNone(std::size_t count) {
    return Table("<TIpPolygonValue>", count, [&](std::string const& number) {
        return "1 " + (number == std::to_string(count) ? "nan" : number) + " 1";
    });
}
std::string OrderSeries(std::size_t count) {
    return Version + ("<TInstrument>: {\n1001 level\n}\n" +
                      Section("<TInstrumentParam>", count,
                              [](std::string const& id) { return id + " 1001 parameter" + id + " 0 0 0"; }) +
                      Section("<TIpSpectralValue>", count,
                              [](std::string const& id) { return id + " 3 0 0 HX-M1;HX+M1 0 0"; }));
}
std::string Rotors(std::size_t count) {
    return Version +
           (Section("<TOrderSource2Rotor>", count, [](std::string const& id) { return id + " 1 " + id; }) +
            Section("<TBaseOrder>", count, [](std::string const& id) { return id + " 7"; }) +
            Section("<TRotorSpeed>", count, [](std::string const& id) { return "1 " + id + " 0.5 1 3"; }));
}
// Each channel inherits from the one below it, and the first from itself.
std::string InheritingChannels(std::size_t count) {
    return Version +
           ("<TMode>: {\n1 idle\n}\n" +
            Section("<TChannel>", count, [](std::string const& id) { return id + " channel" + id; }) +
            Section("<TChannelInheritance>", count, [](std::string const& id) {
                return id + " -1 " + std::to_string(std::max(std::stoi(id) - 1, 1));
            }));
}
// Every mode has a base channel for every channel: it is their product that counts, not the file.
std::string ModesAndChannels(std::size_t count) {
    auto const side = static_cast<std::size_t>(std::sqrt(static_cast<double>(count)));
    return Version +
           (Section("<TMode>", side, [](std::string const& id) { return id + " mode" + id; }) +
            Section("<TChannel>", side, [](std::string const& id) { return id + " channel" + id; }) +
            Section("<TChannelInheritance>", side - 1,
                    [](std::string const& id) { return id + ' ' + id + ' ' + id; }));
}
// Keys, and rows that fit each of them.
std::string Wildcards(std::size_t count) {
    return Version + (Section("<TIpParamAndStore>", count,
                              [](std::string const& id) { return "1 1 1 1 " + id + " 1 0 0 0 0 0"; }) +
                      Section("<TIpTrackPolygon>", count, [](std::string const& id) {
                          return "-1 -1 -1 -1 " + id + " -1 1 1 1 0 0 0 0 0 0";
                      }));
}
std::string OnePolygon(std::size_t count) {
    return Table("<TIpPolygonValue>", count, [](std::string const& number) { return "1 " + number + " 1"; });
}
// A grid of virtual modes of so many dimensions, all but one of a single interval.
std::string GridOfManyDimensions(std::size_t count) {
    std::string const last = std::to_string(count);
    return Version +
           ("<TMode>: {\n1 idle\n}\n<TPhysMode>: {\n1 first\n}\n<TModeProperty>: {\n1 1 0 0 0\n}\n" +
            Section("<TAutoModeParam>", count,
                    [&](std::string const& id) {
                        return id + " 0 " + (id == last ? "4" : "1") + " 1 0 0 0 0 0 0";
                    }) +
            Section("<TAutoModeParamOrder>", count,
                    [](std::string const& id) { return std::to_string(std::stoi(id) - 1) + ' ' + id; }));
}

} // namespace

std::vector<Shape> const& All() {
    static std::vector<Shape> const all{
        {"Deep", Deep},
        {"DeepKeys", DeepKeys},
        {"DeepAndClosed", DeepAndClosed},
        {"ClosingLines", ClosingLines},
        {"OneSectionAgain", OneSectionAgain},
        {"OneKeyAgain", OneKeyAgain},
        {"KeysDownwards", KeysDownwards},
        {"OneLine", OneLine},
        {"OneKey", OneKey},
        {"Quotes", Quotes},
        {"BlankLines", BlankLines},
        {"Comments", Comments},
        {"UnknownSections", UnknownSections},
        {"BadRows", BadRows},
        {"Modes", Modes},
        {"OneModeAgain", OneModeAgain},
        {"OneNameAgain", OneNameAgain},
        {"Parameters", Parameters},
        {"OneParameterAgain", OneParameterAgain},
        {"PositionsAndOneThatIsNone", PositionsAndOneThatIsNone},
        {"OrderSeries", OrderSeries},
        {"Rotors", Rotors},
        {"InheritingChannels", InheritingChannels},
        {"ModesAndChannels", ModesAndChannels},
        {"Wildcards", Wildcards},
        {"OnePolygon", OnePolygon},
        {"GridOfManyDimensions", GridOfManyDimensions},
    };
    return all;
}

} // namespace shapes
