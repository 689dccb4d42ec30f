#include "tools/table_names.h"

#include <paramdb/platform/core/utf8.h>
#include <paramdb/query/param_instance.h>

#include "tools/case_fold.h"
#include "tools/nearest_names.h"
#include "tools/report.h"

#include <algorithm>

namespace paramdb::tools {
namespace {

constexpr std::size_t MostTags = 3;
constexpr std::size_t ShortestTagPart = 3;

// The tag without its brackets.
std::string_view InnerOf(std::string_view tag) {
    return tag.substr(1, tag.size() - 2);
}

char Lower(char letter) {
    return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
}

// Whether the name stands in the text and is long enough to tell something.
bool Holds(std::string_view text, std::string_view part) {
    if (part.size() < ShortestTagPart)
        return false;
    auto const equal = [](char left, char right) { return Lower(left) == Lower(right); };
    return std::search(text.begin(), text.end(), part.begin(), part.end(), equal) != text.end();
}

// Of two texts in small letters.
std::size_t Distance(std::wstring_view from, std::wstring_view to) {
    return EditDistance(from, to, std::max(from.size(), to.size()));
}

} // namespace

TableDescription const* FindTable(std::string_view name) {
    for (TableDescription const& table : Catalogue()) {
        std::string const tag = TagOf(table);
        if (name == tag || name == InnerOf(tag) || name == InnerOf(tag).substr(1))
            return &table;
    }
    return nullptr;
}

CatalogueEntry const& EntryOf(TableDescription const& table) {
    return CQtParamInstance().Entries()[static_cast<std::size_t>(&table - Catalogue().data())];
}

std::string TagOf(TableDescription const& table) {
    return ToUtf8(table.tag);
}

std::vector<std::string> TagsLike(std::string_view name) {
    if (name.starts_with('<'))
        name.remove_prefix(1);
    if (name.ends_with('>'))
        name.remove_suffix(1);
    std::size_t const limit = 2 + name.size() / 4;

    std::wstring const wanted = FoldCase(FromUtf8(name));

    struct Candidate {
        std::size_t distance;
        std::string tag;
    };
    std::vector<Candidate> candidates;
    for (TableDescription const& table : Catalogue()) {
        std::string tag = TagOf(table);
        std::string_view const inner = InnerOf(tag);
        if (name.empty() || name.size() > inner.size() + limit)
            continue;
        std::wstring const folded = FoldCase(FromUtf8(inner));
        std::size_t const distance =
            std::min(Distance(wanted, folded), Distance(wanted, std::wstring_view(folded).substr(1)));
        if (distance <= limit || Holds(inner, name))
            candidates.push_back({distance, std::move(tag)});
    }
    std::ranges::stable_sort(candidates, {}, &Candidate::distance);

    // What is farther off than the nearest one is like it by chance, unless it holds the name.
    std::size_t const farthest = candidates.empty() ? 0 : std::min(candidates.front().distance + 1, limit);
    std::vector<std::string> tags;
    for (Candidate const& candidate : candidates) {
        bool const is_near = candidate.distance <= farthest;
        if (tags.size() < MostTags && (is_near || Holds(candidate.tag, name)))
            tags.push_back(candidate.tag);
    }
    return tags;
}

std::string UnknownTable(std::string_view name, std::string_view fault) {
    std::string text = name.empty() ? "\"\"" : Printable(FromUtf8(name));
    text.append(": ").append(fault);
    auto const tags = TagsLike(name);
    text += tags.empty() ? "; `paramdb tables FILE...` lists them" : DidYouMean(tags);
    text += '\n';
    return text;
}

} // namespace paramdb::tools
