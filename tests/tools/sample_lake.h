// A small lake for the verbs that read tables.
#pragma once

#include <string>

inline std::string const SampleLake = "<DbDesign.CacheVersion>: 216\n"
                                      "<DbDesign.CacheMinorVersion>: 1\n"
                                      "<TMode>: {\n"
                                      "\t1 \"Idle\"\n"
                                      "\t2 \"Warm up\"\n"
                                      "\t3 \"Pr\xFC"
                                      "fen\"\n"
                                      "\t11 \"1. gear drive\"\n"
                                      "}\n"
                                      "<TRotorSpeed>: {\n"
                                      "\t1 1 0.1 1 10\n"
                                      "\t1 2 0.2826086956521739 13 46\n"
                                      "\t2 1 inf 1 1\n"
                                      "}\n"
                                      "<TAuxStrings>: {\n"
                                      "\t\"Report/Title, long\" \"Gearbox\"\n"
                                      "\t\"Report/Footer\" \"a, b\"\n"
                                      "}\n";

// The same with a row that cannot be read, of which the load tells.
inline std::string const FaultyLake = SampleLake + "<TTrigger>: {\n"
                                                   "\t1 \"Speed\" 1\n"
                                                   "\tx \"Time\" 1\n"
                                                   "}\n";

inline std::string const RefusedLake = "<DbDesign.CacheVersion>: 999\n";
