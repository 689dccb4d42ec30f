// A program linked with the shared libraries that takes everything across the border which a host may: texts
// and containers in both directions, exceptions, classes derived here, windows, tables of its own.
//   host MODULE FILE
#include <paramdb/platform/core/utf8.h>

#include "places.h"

#include <cstdio>
#include <cstring>
#include <stdexcept>
#include <string>
#include <thread>
#include <typeinfo>
#include <variant>
#include <vector>

namespace {

int checks = 0;
int failures = 0;

void Check(bool good, char const* what) {
    ++checks;
    if (!good) {
        ++failures;
        std::printf("failed: %s\n", what);
    }
}

// The text of the exception that the call throws, empty if it is none of that type.
template <class Exception, class Call>
std::string Caught(Call const& call) {
    try {
        call();
    } catch (Exception const& exception) {
        return exception.what();
    } catch (...) {
        return "another exception";
    }
    return "no exception";
}

void CheckOneOfAll(char const* module_name) {
    void* const module = OpenModule(module_name);
    auto* const tell = module != nullptr ? FindFunction<TellPlacesFunction>(module, "TellPlaces") : nullptr;
    Check(tell != nullptr, "the module opens");
    if (tell == nullptr)
        return;
    CLibMgr::SetLanguage(CLibMgr::Language::german);
    Places const here = FindPlaces();
    Places there{};
    tell(&there);
    Check(here.lake == there.lake, "one lake");
    Check(here.table_set == there.table_set, "one table set");
    Check(here.server == there.server, "one server");
    Check(here.sea == there.sea, "one sea of messages");
    Check(here.tree_memory == there.tree_memory, "one memory of trees");
    Check(here.first_table == there.first_table, "one set of tables");
    Check(here.message == there.message && here.message >= 0xC000, "one number of a control's message");
    Check(here.late_message == there.late_message && here.late_message >= 0xC000,
          "one number of another message");
    Check(there.language == static_cast<int>(CLibMgr::Language::german), "one language");
    Check(Clavis::ElementName(Clavis::qChannel, 1) == L"Kanal", "a word in it");
    CLibMgr::SetLanguage(CLibMgr::Language::english);
}

// Memory that one side takes and the other gives back, short and long.
void CheckTexts() {
    for (int const length : {0, 1, 7, 8, 15, 16, 1000, 100'000}) {
        CString text(L'x', length);
        std::wstring const copy = text.GetString(); // here from there
        text += copy;                               // grown there
        text.AppendFormat(L"|%d", length);
        std::wstring const expected =
            copy + copy + L"|" + std::to_wstring(length); // made here, compared there
        Check(text == expected, "a text that grows");
        Check(text.Left(length) + copy == CString(copy + copy), "texts that are put together");
        std::string const narrow = paramdb::ToUtf8(expected);
        Check(narrow.size() == expected.size() && paramdb::FromUtf8(narrow) == expected, "UTF-8");
        CFixedText fixed(text);
        CFixedText moved(L"a short one");
        moved = std::move(fixed);
        Check(moved.view() == std::wstring_view(expected).substr(0, CFixedText::Capacity - 1),
              "a text of a table");
        void* const block = tl_malloc(static_cast<std::size_t>(length));
        Check(block != nullptr, "memory");
        tl_free(block);
    }
    ParamDb::row_t const row{L"a cell of more than fifteen characters", L"another"};
    Check(ParamDb::CDbTable::to_wstring(row) == L"a cell of more than fifteen characters another", "cells");
    Check(ParamDb::ToText(row[1]) == L"another", "a cell");
}

void CheckExceptions() {
    Check(Caught<std::out_of_range>([] { static_cast<void>(CClavisSet().ElementSet(6)); }) ==
              "invalid key element",
          "an exception of the standard library");
    Check(Caught<std::bad_variant_access>([] {
              static_cast<void>(ParamDb::ToInteger<std::int32_t>(L"text"));
          }) == std::bad_variant_access().what(),
          "an exception of a header");
    auto const open_nothing = [] { CFile const file(L"no such folder/no such file", CFile::modeRead); };
    std::string const reason = Caught<CFileException>(open_nothing);
    Check(!reason.empty() && reason == Caught<std::runtime_error>(open_nothing), "an exception of its own");
    try {
        open_nothing();
    } catch (std::exception const& exception) {
        auto const* const failure = dynamic_cast<CFileException const*>(&exception);
        Check(failure != nullptr && failure->IsNotFound(), "the class of an exception");
    }
    auto const before =
        PrWin::SetSink([](int, int, std::wstring const&) { throw std::domain_error("of the host"); });
    for (int i = 0; i < 100; ++i)
        Check(Caught<std::domain_error>([] { PrWin::Output(8, 1, L"text\n"); }) == "of the host",
              "an exception that passes through");
    PrWin::SetSink(before);
}

class NotingList : public CXListCtrl {
public:
    std::vector<int> rows;

protected:
    void OnItemStateChange(int item, int column, unsigned int state) override {
        rows.push_back(item);
        CXListCtrl::OnItemStateChange(item, column, state);
    }
};

void CheckWindows() {
    CWnd parent;
    parent.Create();
    NotingList list;
    list.Create(&parent, 7);
    list.InsertColumn(0, L"Column", LVCFMT_LEFT, 90);
    for (int row = 0; row < 3; ++row) {
        list.InsertItem(row, L"an item with a long text that needs memory");
        list.SetCheckbox(row, 0, 0);
    }
    list.rows.clear();
    Check(list.ToggleCheckbox(1, 0) && list.rows == std::vector<int>{1}, "a function that a host overrides");
    CWnd* const found = parent.GetDlgItem(7);
    Check(found == &list && dynamic_cast<NotingList*>(found) == &list && typeid(*found) == typeid(NotingList),
          "a class of the host's");
    Check(dynamic_cast<CXListCtrl*>(found) == &list && dynamic_cast<CPentadCtrl*>(found) == nullptr,
          "a class of the library's");
    CPentadRangeSelectCtrl ranges;
    CWnd& window = ranges;
    Check(dynamic_cast<CRangeSelectCtrlBasics*>(&window) == static_cast<CRangeSelectCtrlBasics*>(&ranges),
          "a cast from base to base");

    CPentadCtrl editor;
    editor.Create(&parent, 8);
    CClavis const key(11, -1, -1, -1, -1, -1);
    editor.fill(key);
    Check(editor.retrieve() == key && editor.GetItemText(0, 1) == L"1. gear drive", "the key editor");
    CPentadDialog dialog;
    CClavis taken;
    dialog.set_target([&taken](CClavis const& chosen) { taken = chosen; });
    dialog.Display(key);
    dialog.OnBnClickedOk();
    Check(taken == key, "the dialog");
}

void CheckTables() {
    CQtParamInstance const parameters;
    Check(parameters.Initialized() && parameters.BaseType() == L"TG-6031", "a load in the module");
    Check(parameters.Mode().size() == parameters.IdNameMap(0).size() && parameters.ModeName(11) != nullptr &&
              std::wstring(parameters.ModeName(11)) == L"1. gear drive",
          "a query");
    Check(CQtParamInstance::TimeSignalId() == CQtParamDistillery::TimeSignalId(), "a static member");

    // Tables of the host's own, with code of the headers on this side.
    CDynNameIdTable names(L"<TMode>");
    CQParamSeaTypedTable<CDbUniqueMap<QIdx1, QVTrigger>> triggers(L"<TTrigger>");
    Check(names.ReadTable(CParameterLake::Lake()) && names.size() == parameters.Mode().size(),
          "a table of names");
    Check(names.Idx(L"Idle") == 1 && names.Add(4711, L"of the host") && names.Idx(L"of the host") == 4711,
          "its index");
    Check(triggers.ReadTable(CParameterLake::Lake()) && triggers.size() == parameters.Trigger().size(),
          "a table of rows");
    CResourceSea sea;
    sea.MakeList(L"<TTrigger>");
    Check(triggers.WriteTable(&sea) && sea.FindList(L"<TTrigger>")->size() == triggers.size(),
          "a table that is written");
    CQTableManager manager;
    Check(manager.RegisterTable(triggers) == 1 && manager.Table(0) == &triggers, "a manager of tables");
    manager.Clear();
    Check(triggers.empty(), "a table that is cleared");

    CLake lake = CParameterLake::Lake(); // its nodes are made there and freed here
    Check(lake.size() == CParameterLake::Lake().size() + 1 && lake[L"<TMode>"].found(),
          "a lake of the host's");
    lake[L"<QType><FBaseName>"] = L"a longer name than there was before";
    Check(lake[L"<QType><FBaseName>"].text() == L"a longer name than there was before", "a value of it");

    std::vector<std::thread> threads;
    std::vector<int> found(4);
    for (std::size_t i = 0; i < found.size(); ++i)
        threads.emplace_back([&found, &parameters, i] {
            for (int round = 0; round < 200; ++round)
                for (auto const& [id, name] : parameters.Mode())
                    found[i] += parameters.ModeId(parameters.ModeName(id[0])) == id[0] ? 1 : 0;
        });
    for (std::thread& thread : threads)
        thread.join();
    Check(found == std::vector<int>(4, 200 * static_cast<int>(parameters.Mode().size())),
          "queries in threads");
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 3)
        return 2;
    CheckOneOfAll(argv[1]);
    CheckTexts();
    CheckExceptions();
    auto* const run = FindFunction<RunExampleFunction>(OpenModule(argv[1]), "RunExample");
    Check(run != nullptr && run(argv[2]) == 0, "a load in the module");
    CheckTables();
    CheckWindows();
    std::printf("%d checks, %d failed\n", checks, failures);
    return failures == 0 ? 0 : 1;
}
