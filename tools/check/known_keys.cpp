#include "tools/check/known_keys.h"

#include "tools/nearest_names.h"
#include "tools/report.h"

#include <algorithm>
#include <map>

namespace paramdb::tools::check {
namespace {

using Keys = std::vector<std::wstring_view>;

Keys const VersionKeys{L"<DbDesign.CacheVersion>", L"<DbDesign.CacheMinorVersion>"};
Keys const TextKeys{L"<QLearn><FLearnArcName>", L"<QCalib><FCalibFileName>", L"<QType><FBaseName>",
                    L"<QType><FAliasName>"};

bool IsOneOf(Keys const& keys, LakeText text) {
    return std::any_of(keys.begin(), keys.end(), [&](std::wstring_view key) { return text == key; });
}

} // namespace

TableDescription const* TableOf(LakeText key) {
    static std::map<std::wstring_view, TableDescription const*> const tables = [] {
        std::map<std::wstring_view, TableDescription const*> result;
        for (TableDescription const& table : Catalogue())
            result.emplace(table.tag, &table);
        return result;
    }();
    auto const found = tables.find(key.wide());
    return found != tables.end() ? found->second : nullptr;
}

bool IsVersionKey(LakeText key) {
    return IsOneOf(VersionKeys, key);
}

bool IsTextKey(LakeText key) {
    return IsOneOf(TextKeys, key);
}

std::string DidYouMeanKey(LakeText key) {
    Keys names = VersionKeys;
    names.insert(names.end(), TextKeys.begin(), TextKeys.end());
    for (TableDescription const& table : Catalogue())
        names.push_back(table.tag);
    std::vector<std::string> nearest;
    for (std::size_t const place : NearestNames(key.wide(), names))
        nearest.push_back(Printable(names[place]));
    return DidYouMean(nearest);
}

} // namespace paramdb::tools::check
