// simdjson: the file is parsed on demand, each value straight into its field.
#include "command_line.h"
#include "peers.h"

#include <functional>
#include <limits>
#include <simdjson.h>
#include <tuple>
#include <type_traits>
#include <unordered_map>

namespace benchmarks {
namespace {

namespace ondemand = simdjson::ondemand;

template <class T>
void Take(ondemand::value value, T& field) {
    if constexpr (std::is_same_v<T, CFixedText>)
        AssignText(field, value.get_string());
    else if constexpr (std::is_floating_point_v<T>)
        field = static_cast<T>(double(value.get_double()));
    else
        field = static_cast<T>(std::int64_t(value.get_int64()));
}

// The vector grows as it must: counting the rows beforehand takes longer, as the text is then walked twice.
template <class Rows>
void Fill(ondemand::array array, Rows& rows) {
    for (ondemand::array fields : array) {
        auto& [key, row] = rows.emplace_back();
        auto next = fields.begin();
        std::apply(
            [&next](auto&... targets) {
                bool first = true;
                ((std::exchange(first, false) ? void() : void(++next), Take(ondemand::value(*next), targets)),
                 ...);
                ++next;
            },
            std::tuple_cat(key.tuple(), row.tuple()));
    }
}

void Load(std::filesystem::path const& path, PlainTables& tables) {
    std::unordered_map<std::string, std::function<void(ondemand::array)>> fillers;
    ForEachTable(tables, [&fillers](wchar_t const* tag, auto& rows) {
        fillers.emplace(NarrowTag(tag), [&rows](ondemand::array array) { Fill(array, rows); });
    });
    simdjson::padded_string const text = simdjson::padded_string::load(path.string());
    ondemand::parser parser;
    ondemand::document document = parser.iterate(text);
    for (auto table : document.get_object()) {
        std::string const tag(std::string_view(table.unescaped_key()));
        fillers.at(tag)(table.value());
    }
}

} // namespace

Peer SimdjsonPeer() {
    constexpr std::size_t any = std::numeric_limits<std::size_t>::max();
    return {"simdjson",
            "rows.json",
            [](std::vector<TableRows> const& tables, std::filesystem::path const& path) {
                WriteFile(path, JsonText(tables));
            },
            Load,
            any,
            any};
}

} // namespace benchmarks
