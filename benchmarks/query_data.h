// The rows that query_benchmark asks for, and its questions. The same options give the same ones on every
// machine.
#pragma once

#include <paramdb/distillery/param_distillery.h>

#include "generate_values.h"
#include "query_subject.h"

#include <cstddef>
#include <string>
#include <vector>

namespace benchmarks {

// How many rows the tables that are searched have.
struct QuerySizes {
    std::size_t locations = 1000;
    std::size_t parameters = 1000;
    std::size_t order_sources = 1000;
};

// Fills the tables of a new distillery and derives: locations, instrument parameters with their triggers,
// modes, channels of every kind, signals, rotors and gears. Ids have gaps; names are short, each only there
// once, and ASCII.
void FillForQueries(CQtParamDistillery& distillery, QuerySizes const& sizes);

// Questions ask for the rows in random order, for each as often as for any other, and at least as many times
// as there are rows. A missing id or name lies between those that are there.
std::vector<int> LocationIds(CQtParamDistillery const& distillery, bool missing, Random& random);
std::vector<int> Parameters(CQtParamDistillery const& distillery, bool missing, Random& random);
std::vector<BaseOrderQuestion> Gears(CQtParamDistillery const& distillery, Random& random);
std::vector<OrderSourceQuestion> Rotors(CQtParamDistillery const& distillery, Random& random);
std::vector<QClavis> Keys(CQtParamDistillery const& distillery, Random& random);

// Names as questions. Each text is there once and has its place in the order in which it is first asked for,
// apart from the tables.
class NameQuestions {
public:
    NameQuestions(CQtParamDistillery const& distillery, bool missing, Random& random);

    std::vector<NameQuestion> const& questions() const { return m_questions; }

private:
    std::vector<wchar_t> m_wide;
    std::string m_utf8;
    std::vector<NameQuestion> m_questions;
};

} // namespace benchmarks
