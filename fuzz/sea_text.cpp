// Seas: the text form of any bytes, and tables read from the lists of a sea and written to another one.
#include <paramdb/platform/sea/resource_list.h>
#include <paramdb/platform/sea/sea_text.h>

#include "support/expect.h"
#include "support/input.h"
#include "support/message_watch.h"
#include "support/query_sweep.h"

#include <string>

namespace {

using paramdb::ReadSeaText;
using paramdb::SeaContent;
using paramdb::WriteSeaText;

void CheckText(std::string_view text) {
    SeaContent const content = ReadSeaText(text);
    fuzz::Expect(std::is_sorted(content.bad_lines.begin(), content.bad_lines.end()), "bad lines in order");
    std::string const written = WriteSeaText(content.lists, content.values);
    SeaContent const again = ReadSeaText(written);
    fuzz::Expect(again.bad_lines.empty(), "no bad line in what was written");
    fuzz::Expect(again.lists == content.lists && again.values == content.values, "the sea that was written");
    fuzz::Expect(WriteSeaText(again.lists, again.values) == written, "the bytes that were written");
}

// Reads all tables, writes them to another sea, and reads that and the first one again. Texts are written as
// they are, so that one with blanks or quotes in it may read back as another.
void CheckTables(CResourceSea& sea) {
    CQtParamDistillery distillery;
    CQtParamDistillery again;
    CResourceSea written;
    for (std::size_t table = 0; table < distillery.Entries().size(); ++table) {
        auto* const first = distillery.Entries()[table].table;
        auto* const second = again.Entries()[table].table;
        first->ReadTable(&sea);
        fuzz::Expect(first->WriteTable(&written), "a sea to write to");
        second->ReadTable(&written);
        first->WriteTable(&sea);
    }
    for (std::size_t table = 0; table < distillery.Entries().size(); ++table)
        fuzz::Expect(again.Entries()[table].rows->RowCount() <= distillery.Entries()[table].rows->RowCount(),
                     "no more rows than were written");
    CQtParamInstance instance(&distillery);
    distillery.DerivedInfo().BuildDerivedInfo();
    fuzz::Answers answers;
    fuzz::AskEverything(instance, answers);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    std::string_view const text = fuzz::TextOf(data, size);
    CheckText(text);

    fuzz::MessageWatch messages;
    CResourceSea sea;
    std::wstring reason;
    fuzz::Expect(sea.Open(fuzz::ScratchFile("input.sea", text), &reason), "a sea of any bytes");
    static_cast<void>(sea.LookupGetBool(L"ShowIdsInDialogs", 0, true));
    sea.LookupBool(2, L"a key", true, -1);
    fuzz::Expect(sea.Save(&reason), "a sea that can be saved");
    CResourceSea again;
    fuzz::Expect(again.Open(sea.FileName()), "a sea that was saved");
    fuzz::Expect(again.Lists() == sea.Lists() && again.Values() == sea.Values(), "the sea that was saved");
    CheckTables(sea);
    return 0;
}
