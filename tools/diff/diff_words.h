// The words of a comparison, the same in text and on a page: what a value looks like, which rows have the
// same change, and what it all comes to.
#pragma once

#include "tools/diff/column_meaning.h"
#include "tools/diff/comparison.h"

#include <string>
#include <string_view>
#include <vector>

namespace paramdb::tools {

// The name of an id or the word for a value, in UTF-8; empty where there is none.
std::string NameBeside(Snapshot const& snapshot, ColumnMeaning const& meaning, FieldValue const& value);

// Whether a value of an answer says that there is nothing: an id of -1, nan, an empty text.
bool IsNothing(FieldValue const& value, ColumnMeaning const& meaning);

// A value for the terminal. Texts of tables stand in quotes; in an answer what is not there is "none".
struct ShownValue {
    std::string text;
    std::string name; // empty for none
};

struct ShownField {
    std::string_view column;
    ShownValue value;
};

struct ShownChange {
    std::string_view column;
    ShownValue a;
    ShownValue b;
};

using ShownFields = std::vector<ShownField>;

struct ShownEntry {
    RowChange change;
    std::vector<ShownFields> keys;    // several for rows with the same change
    ShownFields fields;               // of an added or removed row: all behind the key
    std::vector<ShownChange> changes; // of a changed row: the columns that differ
};

struct ShownTable {
    std::string title;               // the tag, or the title of the topic
    std::vector<ShownEntry> entries; // in the order of their first keys
    std::size_t left_out = 0;        // rows beyond the limit
};

enum class DifferencePart { Tables, Answers };

// The differences of a table for reading. A limit of 0 shows all rows.
ShownTable ShowTable(Comparison const& comparison, TableDifference const& table, DifferencePart part,
                     std::size_t limit);

// "base type", with blanks in the name.
std::string HeaderName(HeaderDifference const& difference);
ShownValue HeaderValue(FieldValue const& value);

// "12 rows differ in 3 of 103 tables: 2 added, 1 removed, 9 changed".
std::string Verdict(Comparison const& comparison);

// "2 spectral intervals move, 1 spectral interval is new"; empty for no differences.
std::string TopicSentence(AnswerTopic const& topic, DifferenceCounts const& counts);
// The same for limits.
std::string LimitSentence(DifferenceCounts const& counts);

// Why nothing is told of what follows; empty where it is.
std::string WhyNoAnswers(Comparison const& comparison);

} // namespace paramdb::tools
