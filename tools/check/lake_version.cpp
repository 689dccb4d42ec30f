// Whether a load accepts the version of the files.
#include <paramdb/service/table_manager.h>
#include <paramdb/tables/number_text.h>

#include "tools/check/rules.h"
#include "tools/messages.h"
#include "tools/report.h"

#include <array>
#include <cstdint>

namespace paramdb::tools::check {
namespace {

struct VersionLine {
    wchar_t const* key;
    CLakeNode const* line; // null for none
    std::int32_t number;
};

VersionLine Find(CLake const& lake, wchar_t const* key) {
    auto const found = lake[key];
    return {key, found.found() ? &*found.position : nullptr, found.number()};
}

std::string Shown(VersionLine const& version) {
    return Printable(version.key);
}

Place PlaceOf(CheckContext const& context, VersionLine const& version) {
    return version.line->value_text().Visit([&]<class View>(View text) {
        if constexpr (std::is_same_v<View, std::string_view>)
            return context.PlaceOf(text);
        else
            return context.PlaceOf(*version.line);
    });
}

// A value that is not read, or not to its end.
void CheckNumber(CheckContext const& context, FindingList& findings, VersionLine const& version) {
    std::wstring const text = version.line->value_text().wide();
    std::wstring_view rest = text;
    std::int32_t number = 0;
    if (TakeNumber(rest, number) != NumberFault::None || !rest.empty())
        findings
            .Add("P104", PlaceOf(context, version),
                 Shown(version) + " is read as " + std::to_string(version.number) +
                     ": the value is not just a whole number")
            .Hint("write each number of the version on a line of its own");
}

} // namespace

void CheckVersion(CheckContext const& context, FindingList& findings) {
    CLake const& lake = context.Lake();
    std::array const versions{Find(lake, L"<DbDesign.CacheVersion>"),
                              Find(lake, L"<DbDesign.CacheMinorVersion>")};
    constexpr std::array required{CQTableManager::RequiredMajor, CQTableManager::RequiredMinor};
    for (VersionLine const& version : versions)
        if (version.line != nullptr)
            CheckNumber(context, findings, version);
    if (!context.IsRefused())
        return;

    // One finding stands for the refusal.
    for (std::size_t index = 0; index < context.Messages().size(); ++index)
        if (context.Messages()[index].style == RefusalStyle)
            findings.Explain(index);
    std::string const refused =
        std::to_string(context.LoadInfo().major) + "." + std::to_string(context.LoadInfo().minor);
    std::string const wanted = std::to_string(required[0]) + "." + std::to_string(required[1]);
    bool const major_is_wrong = versions[0].number != required[0];
    VersionLine const& cause = versions[major_is_wrong ? 0 : 1];
    std::string const line = Shown(cause) + ": " + std::to_string(required[major_is_wrong ? 0 : 1]);
    if (cause.line == nullptr)
        findings.Add("P101", Place(), "there is no line " + Shown(cause) + ", so no load takes the file")
            .Hint("add the line \"" + line + "\" if the tables are those of version " + wanted);
    else if (versions[0].number > required[0])
        findings
            .Add("P103", PlaceOf(context, cause),
                 "the version " + refused + " is greater than " + std::to_string(required[0]) +
                     ", the one supported: no table is loaded")
            .Hint("load the file with a newer program");
    else
        findings
            .Add("P102", PlaceOf(context, cause),
                 "the version " + refused + " is less than " + wanted +
                     ", the one supported: no table is loaded")
            .Hint("bring the file up to version " + wanted);
}

} // namespace paramdb::tools::check
