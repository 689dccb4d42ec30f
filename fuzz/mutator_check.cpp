// Sees to it that the mutator of parameter files does what the fuzzers count on: the same seed gives the same
// file, no file is too long, and most of the tables come about with rows that can be read.
#include <paramdb/query/param_instance.h>

#include "support/expect.h"
#include "support/lake_mutator.h"
#include "support/loading.h"
#include "support/message_watch.h"

#include <iostream>
#include <set>
#include <string>

namespace {

constexpr std::size_t Longest = 3000;

// A file that grows by mutations, and begins anew when it is full; the tables in which rows were read.
std::set<std::wstring> TablesReached(std::uint32_t seeds, fuzz::Tags const& tags) {
    std::set<std::wstring> reached;
    std::string text;
    for (std::uint32_t seed = 0; seed < seeds; ++seed) {
        std::string const next = fuzz::MutateLake(text, Longest, seed, tags);
        fuzz::Expect(next.size() <= Longest, "a file that is not too long");
        fuzz::Expect(next == fuzz::MutateLake(text, Longest, seed, tags), "the same of the same seed");
        fuzz::Expect(fuzz::CrossLakes(text, next, Longest, seed).size() <= Longest, "a short mixture");
        text = next;
        if (text.size() < Longest * 9 / 10)
            continue;
        fuzz::FillLake(text);
        CQtParamDistillery distillery;
        fuzz::ReadAndDerive(distillery);
        for (auto const& entry : distillery.Entries())
            if (entry.rows->RowCount() > 0)
                reached.insert(entry.description->tag);
        text.clear();
    }
    return reached;
}

} // namespace

int main() {
    fuzz::MessageWatch const messages;
    auto const all = TablesReached(8000, {});
    fuzz::Expect(all.size() > 90, "rows of nearly all tables", std::to_string(all.size()));
    auto const one = TablesReached(300, {"<TTriggerParam>"});
    fuzz::Expect(one == std::set<std::wstring>{L"<TTriggerParam>"}, "rows of the one table");
    std::cout << all.size() << " tables reached\n";
    return 0;
}
