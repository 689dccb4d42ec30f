// Table sets: rows of cells of every type, as a host hands them over from a database.
//
// An input is written as a parameter file. A field becomes a cell of its column's type, unless it begins with
// a tilde and a letter that tells another one: i and u for 32 bits, l and m for 64 bits, f, d, and w for a
// text.
#include <paramdb/platform/core/utf8.h>
#include <paramdb/storage/parameter_lake.h>
#include <paramdb/storage/parameter_table_set.h>
#include <paramdb/tables/number_text.h>

#include "support/answers.h"
#include "support/custom_mutator.h"
#include "support/expect.h"
#include "support/input.h"
#include "support/message_watch.h"
#include "support/query_sweep.h"
#include "support/row_text.h"
#include "support/set_sum.h"

#include <optional>
#include <tests/support/text_lines.h>
#include <variant>

namespace {

using ParamDb::CDbTableSet;
using ParamDb::cell_t;
using paramdb::FieldType;
using ParamDb::row_t;

// A letter for each alternative of a cell.
constexpr std::string_view Letters = "iulmfdw";

double Number(std::string_view text) {
    double number = 0;
    paramdb::TakeNumber(text, number);
    return number;
}

std::int64_t Integer(std::string_view text) {
    std::int64_t number = 0;
    paramdb::TakeNumber(text, number);
    return number;
}

std::wstring Wide(std::string_view bytes) {
    std::wstring text;
    for (char const byte : bytes)
        text += paramdb::Widen(byte);
    return text;
}

char LetterOf(FieldType type) {
    switch (type) {
    case FieldType::Int:
        return 'i';
    case FieldType::Unsigned:
        return 'u';
    case FieldType::Int64:
        return 'l';
    case FieldType::Float:
        return 'f';
    case FieldType::Double:
        return 'd';
    case FieldType::Text:
        break;
    }
    return 'w';
}

cell_t Cell(std::string_view field, char letter) {
    if (field.size() > 1 && field[0] == '~' && Letters.find(field[1]) != Letters.npos) {
        letter = field[1];
        field.remove_prefix(2);
    }
    auto const bits = static_cast<std::uint64_t>(Integer(field));
    switch (letter) {
    case 'i':
        return static_cast<std::int32_t>(static_cast<std::uint32_t>(bits));
    case 'u':
        return static_cast<std::uint32_t>(bits);
    case 'l':
        return static_cast<std::int64_t>(bits);
    case 'm':
        return bits;
    case 'f':
        return static_cast<float>(Number(field));
    case 'd':
        return Number(field);
    default:
        break;
    }
    if (field.size() > 1 && field.front() == '"' && field.back() == '"')
        field = field.substr(1, field.size() - 2);
    return Wide(field);
}

row_t Row(std::string_view line, paramdb::TableDescription const* table, char other_letter) {
    row_t row;
    for (std::string const& field : fuzz::FieldsOf(line)) {
        char letter = other_letter;
        std::size_t const keys = table != nullptr ? table->key_columns.size() : 0;
        if (table != nullptr && row.size() < keys)
            letter = LetterOf(table->key_columns[row.size()].type);
        else if (table != nullptr && row.size() - keys < table->row_columns.size())
            letter = LetterOf(table->row_columns[row.size() - keys].type);
        row.push_back(Cell(field, letter));
    }
    return row;
}

CDbTableSet SetOf(std::string_view text) {
    CDbTableSet set;
    ParamDb::CDbTable* section = nullptr;
    paramdb::TableDescription const* description = nullptr;
    for (std::string const& line : test_support::SplitLines(std::string(text))) {
        std::string_view const trimmed = fuzz::Trimmed(line);
        std::size_t const colon = trimmed.starts_with('<') ? trimmed.find(':') : trimmed.npos;
        if (trimmed.starts_with('}')) {
            section = nullptr;
        } else if (colon != trimmed.npos) {
            std::string_view const key = trimmed.substr(0, colon);
            auto& table = set[Wide(key)];
            bool const opens = fuzz::OpensSection(trimmed);
            section = opens ? &table : nullptr;
            description = fuzz::TableOf(key);
            if (!opens)
                table.push_back(
                    Row(trimmed.substr(colon + 1), description, key.starts_with("<Db") ? 'i' : 'w'));
        } else if (section != nullptr) {
            section->push_back(Row(trimmed, description, 'i'));
        }
    }
    return set;
}

// A version where there is none, and tables of the named texts, which a load makes if they are missing.
void Complete(CDbTableSet& set) {
    set.merge(CDbTableSet{{L"<DbDesign.CacheVersion>", {row_t{std::int32_t{216}}}},
                          {L"<DbDesign.CacheMinorVersion>", {row_t{std::int32_t{1}}}},
                          {L"<QLearn><FLearnArcName>", {}},
                          {L"<QCalib><FCalibFileName>", {}},
                          {L"<QType><FBaseName>", {}},
                          {L"<QType><FAliasName>", {}}});
}

// A load of the set, and all that can be asked then; nothing if its version is no number.
std::optional<std::uint64_t> Ask(CQtParamDistillery& distillery, fuzz::MessageWatch& messages) {
    CQtParamInstance instance(&distillery);
    messages.TakeSum();
    bool is_loaded = false;
    try {
        is_loaded = instance.ReadTablesFromCandidateLake();
    } catch (std::bad_variant_access const&) {
        return std::nullopt;
    }
    fuzz::Answers answers;
    answers.Take(is_loaded, messages.TakeSum());
    fuzz::AskEverything(instance, answers);
    instance.DumpTables(1);
    return answers.Sum();
}

} // namespace

fuzz::Tags const& fuzz::MutatorTags() {
    static Tags const all;
    return all;
}

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    auto const files = fuzz::SplitFiles(fuzz::TextOf(data, size), 2);
    fuzz::MessageWatch messages;
    CParameterLake::Lake().clear();
    CDbTableSet& set = ParamDb::CParameterTableSet::TableSet();
    set = SetOf(files[0]);
    Complete(set);
    std::uint64_t const before = fuzz::SumOf(set);
    CQtParamDistillery distillery;
    auto const first = Ask(distillery, messages);
    fuzz::Expect(fuzz::SumOf(set) == before, "a load changes no cell of the set");
    CQtParamDistillery other;
    fuzz::Expect(Ask(other, messages) == first, "the same of the same set");

    if (files.size() > 1) {
        set.merge(SetOf(files[1]));
        Ask(distillery, messages);
    }
    for (auto const& [key, table] : set)
        for (row_t const& row : table)
            try {
                static_cast<void>(ParamDb::CDbTable::to_wstring(row));
            } catch (std::bad_variant_access const&) {
                continue; // a cell that is no text
            }
    set.clear();
    return 0;
}
