#include "row_text.h"

#include <algorithm>

namespace fuzz {

std::string_view Trimmed(std::string_view line) {
    std::size_t const begin = line.find_first_not_of(" \t\r");
    return begin == line.npos ? std::string_view() : line.substr(begin);
}

bool OpensSection(std::string_view line) {
    return line.ends_with(": {") || line.ends_with(": {\r");
}

std::vector<std::string> FieldsOf(std::string_view line) {
    std::vector<std::string> fields;
    bool is_quoted = false;
    bool is_open = false;
    for (char const byte : line) {
        is_quoted = is_quoted != (byte == '"');
        bool const is_blank = !is_quoted && (byte == ' ' || byte == '\t' || byte == '\r');
        if (!is_blank && !is_open)
            fields.emplace_back();
        is_open = !is_blank;
        if (!is_blank)
            fields.back() += byte;
    }
    return fields;
}

paramdb::TableDescription const* TableOf(std::string_view tag) {
    for (auto const& table : paramdb::Catalogue()) {
        std::wstring_view const own = table.tag;
        if (std::equal(own.begin(), own.end(), tag.begin(), tag.end()))
            return &table;
    }
    return nullptr;
}

} // namespace fuzz
