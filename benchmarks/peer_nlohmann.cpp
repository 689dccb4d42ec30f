// nlohmann-json: the file becomes a document, whose values are then copied into the fields.
#include "command_line.h"
#include "peers.h"

#include <fstream>
#include <limits>
#include <nlohmann/json.hpp>
#include <tuple>
#include <type_traits>

namespace benchmarks {
namespace {

template <class T>
void Take(nlohmann::json const& value, T& field) {
    if constexpr (std::is_same_v<T, CFixedText>)
        AssignText(field, value.get_ref<std::string const&>());
    else
        field = value.get<T>();
}

template <class Rows>
void Fill(nlohmann::json const& array, Rows& rows) {
    rows.reserve(array.size());
    for (nlohmann::json const& fields : array) {
        auto& [key, row] = rows.emplace_back();
        std::size_t next = 0;
        auto const take = [&](auto&... targets) { (Take(fields[next++], targets), ...); };
        std::apply(take, key.tuple());
        std::apply(take, row.tuple());
    }
}

void Load(std::filesystem::path const& path, PlainTables& tables) {
    std::ifstream file(path, std::ios::binary);
    nlohmann::json const document = nlohmann::json::parse(file);
    ForEachTable(tables,
                 [&document](wchar_t const* tag, auto& rows) { Fill(document.at(NarrowTag(tag)), rows); });
}

} // namespace

Peer NlohmannPeer() {
    return {"nlohmann-json",
            "nlohmann.json",
            [](std::vector<TableRows> const& tables, std::filesystem::path const& path) {
                WriteFile(path, JsonText(tables));
            },
            Load,
            std::numeric_limits<std::size_t>::max(),
            3};
}

} // namespace benchmarks
