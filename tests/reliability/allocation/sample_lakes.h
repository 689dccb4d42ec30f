// Two short lakes for tests of refused memory. Names are longer than a short text, so that each takes memory
// of its own.
#pragma once

inline constexpr char SampleLake[] =
    "; a comment\n<DbDesign.CacheVersion>: 216\n"
    "a key of more than fifteen characters: a value of more than fifteen characters\n"
    "<TMode>: {\n1 \"idle: at rest, with the engine warm\"\n2 ramp\n} ; the modes\n"
    "<TMode>: {\n3 coast\nkey inside of a section: {\n1\n}\n}\n{\n{\ndeep\n}\n";
inline constexpr char OtherLake[] = "<TMode>: {\n9 other\n}\nnew key of more than fifteen characters: 1\n\n";
