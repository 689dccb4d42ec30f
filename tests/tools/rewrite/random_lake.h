// Lakes of random lines, good and bad, for tests of what rewrites them.
#pragma once

#include <cstddef>
#include <random>
#include <string>
#include <string_view>
#include <vector>

class RandomLake {
public:
    explicit RandomLake(unsigned seed) : m_random(seed) {}

    // Some lines. Most sections are closed, some are not, and some lines close nothing.
    std::string Lines(std::size_t count) {
        std::string text;
        std::size_t depth = 0;
        bool const two = Chance(30);
        for (std::size_t line = 0; line < count; ++line) {
            text += Blanks() + Line(depth) + Blanks() + (two == Chance(95) ? "\r\n" : "\n");
        }
        for (; depth > 0 && !Chance(10); --depth)
            text += "}\n";
        if (Chance(20))
            text += "1 \"last\"";
        return text;
    }

    std::size_t Number(std::size_t below) {
        return std::uniform_int_distribution<std::size_t>(0, below - 1)(m_random);
    }
    bool Chance(std::size_t percent) { return Number(100) < percent; }
    template <class T>
    T const& One(std::vector<T> const& choices) {
        return choices[Number(choices.size())];
    }

    // The fields of a row, most of them as tables have them.
    std::string Row() {
        std::string row;
        for (std::size_t field = Number(8); field > 0 || row.empty(); field -= field > 0 ? 1 : 0)
            row += (Chance(5) ? "" : Chance(80) ? " " : Blanks()) + Field();
        return row;
    }

private:
    std::string Blanks() {
        std::string blanks;
        while (Chance(30))
            blanks += One<std::string>({" ", "\t", " ", "\xA0", "\x85", "\v", "\r"});
        return blanks;
    }

    std::string Garbage() {
        std::string bytes;
        for (std::size_t count = Number(6); count > 0; --count) {
            char byte = static_cast<char>(static_cast<unsigned char>(Number(255) + 1));
            bytes += byte == '\n' ? '"' : byte;
        }
        return bytes;
    }

    std::string Field() {
        static std::vector<std::string> const fields{
            "1",   "2",   "-3",    "+4",   "007",  "99999999999", "0x1p3",  "1.5",       "-.5",  "1e3",
            "1.",  "inf", "nan",   "1e99", "idle", "\"\"",        "\"up",   "\"a b\"",   "a\"b", "\"c:d\"",
            "e:f", "g;h", "\";\"", "{",    "}",    "\"}\"",       "\"x\"5", "\"tab\t\"", "\"",   "\xE4\xA0"};
        if (Chance(3))
            return '"' + std::string(190 + Number(12), 'l') + '"';
        return Chance(8) ? Garbage() : One(fields);
    }

    std::string Line(std::size_t& depth) {
        static std::vector<std::string> const keys{"<TMode>",
                                                   "<TMode>",
                                                   "<TRotorSpeed>",
                                                   "<TAuxStrings>",
                                                   "<TErrorGroup>",
                                                   "<TTrigger>",
                                                   "k",
                                                   "\"a:b\" k",
                                                   "",
                                                   "} k",
                                                   "<DbDesign.CacheVersion>"};
        std::size_t const kind = Number(100);
        if (kind < 12 && depth < 5) {
            ++depth;
            return (Chance(10) ? "" : One(keys) + Blanks() + ":") + Blanks() + "{";
        }
        if (kind < 22 && (depth > 0 || Chance(1))) {
            depth -= depth > 0 ? 1 : 0;
            return One<std::string>({"}", "}", "} ; end", "};end", "}x", "} \"y;\" ; z"});
        }
        if (kind < 28)
            return "";
        if (kind < 36)
            return ";" + Blanks() + One<std::string>({"note", ";;; rule", "", "a: {", "\"open"});
        if (kind < 48)
            return One(keys) + Blanks() + ":" + Blanks() + (Chance(50) ? Row() : Garbage());
        return Row();
    }

    std::mt19937 m_random;
};
