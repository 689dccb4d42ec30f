// What reading a form of parameters gave, told in short texts, and a sample to write.
#pragma once

#include "tools/convert/forms.h"
#include "tools/rewrite/row_fields.h"

#include <array>
#include <optional>
#include <string>
#include <vector>

namespace form_told {

using namespace paramdb::tools;

using Strings = std::vector<std::string>;
using Rows = std::vector<ParamDb::row_t>;

inline std::wstring Text(wchar_t const* text) {
    return text;
}

inline std::size_t PlaceOf(wchar_t const* tag) {
    return static_cast<std::size_t>(TableOfTag(tag) - paramdb::Catalogue().data());
}

inline Rows RowsOf(ReadResult const& result, wchar_t const* tag) {
    auto const found = result.parameters.tables.find(PlaceOf(tag));
    return found == result.parameters.tables.end() ? Rows() : found->second;
}

// "KIND PLACE TEXT" of each loss, the kind by its first letter.
inline Strings Losses(ReadResult const& result) {
    Strings texts;
    for (Loss const& loss : result.losses)
        texts.push_back("csuef"[static_cast<std::size_t>(loss.kind)] + std::string(" ") + loss.finding.place +
                        " " + loss.finding.text);
    return texts;
}

inline Strings Faults(ReadResult const& result) {
    Strings texts;
    for (Finding const& fault : result.faults)
        texts.push_back(fault.place + " " + fault.text);
    return texts;
}

// What every kind holds in the tests of writing.
inline ParameterSet Sample() {
    ParameterSet parameters;
    parameters.version = {216, 1};
    parameters.texts = {L"a b", std::nullopt, L"", L"\xE4"};
    parameters.tables[PlaceOf(L"<TMode>")] = {{1, Text(L"Idle")}, {2, Text(L"Warm, \"up\"")}};
    parameters.tables[PlaceOf(L"<TRotorSpeed>")] = {{1, 2, 0.1, 3, 4}, {1, 3, -0.0, -5, 6}};
    parameters.tables[PlaceOf(L"<TTrigger>")] = {};
    return parameters;
}

} // namespace form_told
