// toml++: the file becomes a document, whose values are then copied into the fields.
#include "command_line.h"
#include "peers.h"

#include <toml++/toml.h>
#include <tuple>
#include <type_traits>

namespace benchmarks {
namespace {

template <class T>
void Take(toml::node const& value, T& field) {
    if constexpr (std::is_same_v<T, CFixedText>)
        AssignText(field, value.ref<std::string>());
    else if constexpr (std::is_floating_point_v<T>)
        field = static_cast<T>(value.ref<double>());
    else
        field = static_cast<T>(value.ref<std::int64_t>());
}

template <class Rows>
void Fill(toml::array const& array, Rows& rows) {
    rows.reserve(array.size());
    for (toml::node const& node : array) {
        toml::array const& fields = *node.as_array();
        auto& [key, row] = rows.emplace_back();
        std::size_t next = 0;
        auto const take = [&](auto&... targets) { (Take(fields[next++], targets), ...); };
        std::apply(take, key.tuple());
        std::apply(take, row.tuple());
    }
}

void Load(std::filesystem::path const& path, PlainTables& tables) {
    toml::table const document = toml::parse_file(path.string());
    ForEachTable(tables, [&document](wchar_t const* tag, auto& rows) {
        Fill(*document.at(NarrowTag(tag)).as_array(), rows);
    });
}

} // namespace

Peer TomlPeer() {
    return {"toml++",
            "rows.toml",
            [](std::vector<TableRows> const& tables, std::filesystem::path const& path) {
                WriteFile(path, TomlText(tables));
            },
            Load,
            100'000,
            3};
}

} // namespace benchmarks
