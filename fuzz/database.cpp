// Databases: a file of any bytes, or a good one changed by any statements of SQL, imported, loaded, exported
// and imported again.
#include <paramdb/database.h>
#include <paramdb/platform/core/utf8.h>
#include <paramdb/storage/parameter_lake.h>
#include <paramdb/storage/parameter_table_set.h>

#include "support/answers.h"
#include "support/expect.h"
#include "support/input.h"
#include "support/message_watch.h"
#include "support/query_sweep.h"
#include "support/set_sum.h"

#include <filesystem>
#include <memory>
#include <sqlite3.h>
#include <string>
#include <tests/support/temp_dir.h>

namespace {

using ParamDb::CDbTableSet;
using ParamDb::row_t;
using namespace std::chrono_literals;

constexpr std::string_view FileMagic = "SQLite format 3";
constexpr auto Timeout = 2s;

CDbTableSet SmallSet() {
    auto const name = [](std::int32_t id, wchar_t const* text) { return row_t{id, std::wstring(text)}; };
    return {{L"<DbDesign.CacheVersion>", {row_t{std::int32_t{216}}}},
            {L"<DbDesign.CacheMinorVersion>", {row_t{std::int32_t{1}}}},
            {L"<QType><FBaseName>", {row_t{std::wstring(L"base")}}},
            {L"<TMode>", {name(1, L"idle"), name(2, L"ramp")}},
            {L"<TChannel>", {name(0, L"mix"), name(1, L"sync")}},
            {L"<TBaseOrder>", {row_t{std::int32_t{1}, 23.0f}}},
            {L"<TSensorGroupList>", {row_t{std::int32_t{1}, std::int32_t{2}, std::int32_t{3}}}}};
}

std::wstring Connection(std::filesystem::path const& file) {
    return L"sqlite3:" + test_support::WideName(file);
}

// A database with two revisions.
std::string const& GoodDatabase() {
    static std::string const bytes = [] {
        auto const file = fuzz::ScratchFolder() / "good.db";
        std::filesystem::remove(file);
        for (int revision = 0; revision < 2; ++revision)
            fuzz::Expect(ParamDb::ExportTables(SmallSet(), Connection(file) + L"#bench",
                                               {.timeout = Timeout, .who = L"fuzz"})
                             .has_value(),
                         "an export");
        return test_support::ReadBytes(file);
    }();
    return bytes;
}

// Runs statements that touch no other file and come to an end.
void Run(std::filesystem::path const& file, std::string const& statements) {
    sqlite3* database = nullptr;
    sqlite3_open(file.string().c_str(), &database);
    std::unique_ptr<sqlite3, decltype(&sqlite3_close)> const owner(database, sqlite3_close);
    sqlite3_limit(database, SQLITE_LIMIT_LENGTH, 100'000);
    sqlite3_set_authorizer(
        database,
        [](void*, int action, char const* name, char const*, char const*, char const*) {
            bool const is_foreign = action == SQLITE_ATTACH || action == SQLITE_DETACH;
            bool const is_setting = action == SQLITE_PRAGMA && std::string_view(name) != "writable_schema";
            return is_foreign || is_setting ? SQLITE_DENY : SQLITE_OK;
        },
        nullptr);
    int steps = 0;
    sqlite3_progress_handler(
        database, 1000, [](void* count) { return ++*static_cast<int*>(count) > 200 ? 1 : 0; }, &steps);
    // One after the other: a bad one does not end them.
    for (std::size_t begin = 0; begin < statements.size();) {
        std::size_t const end = std::min(statements.find("\n", begin), statements.size());
        sqlite3_exec(database, statements.substr(begin, end - begin).c_str(), nullptr, nullptr, nullptr);
        begin = end + 1;
    }
}

void LoadAndAsk(CDbTableSet const& set) {
    CParameterLake::Lake().clear();
    ParamDb::CParameterTableSet::TableSet() = set;
    CQtParamDistillery distillery;
    CQtParamInstance instance(&distillery);
    instance.ReadTablesFromCandidateLake();
    fuzz::Answers answers;
    fuzz::AskEverything(instance, answers);
    ParamDb::CParameterTableSet::TableSet().clear();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    std::string_view const input = fuzz::TextOf(data, size);
    fuzz::MessageWatch messages;
    bool const is_file = input.starts_with(FileMagic);
    auto const file = fuzz::ScratchFolder() / "input.db";
    for (char const* const name : {"input.db-journal", "input.db-wal", "input.db-shm"})
        std::filesystem::remove(fuzz::ScratchFolder() / name);
    test_support::WriteBytes(file, is_file ? input : GoodDatabase());
    if (!is_file)
        Run(file, std::string(input));
    messages.TakeCount();

    static_cast<void>(ParamDb::Revisions(Connection(file), Timeout));
    CDbTableSet const before = SmallSet();
    CDbTableSet set = before;
    auto const imported = ParamDb::ImportTables(Connection(file), set, {.timeout = Timeout});
    if (!imported) {
        fuzz::Expect(messages.TakeCount() > 0, "a message for an import that fails");
        fuzz::Expect(set == before, "the set as it was after a failure");
        return 0;
    }
    CDbTableSet strict = before;
    if (ParamDb::ImportTables(Connection(file), strict, {.timeout = Timeout, .strict = true}))
        fuzz::Expect(fuzz::SumOf(strict) == fuzz::SumOf(set), "the same if strict");
    LoadAndAsk(set);

    // What is exported comes back as it was, as soon as keys that come twice are gone.
    auto const output = fuzz::ScratchFolder() / "output.db";
    test_support::WriteBytes(output, GoodDatabase()); // with tables, which take longest to make
    CDbTableSet once;
    CDbTableSet twice;
    ParamDb::ExportOptions const options{.timeout = Timeout, .who = L"fuzz"};
    if (ParamDb::ExportTables(set, Connection(output) + L"#one", options)) {
        fuzz::Expect(
            ParamDb::ImportTables(Connection(output) + L"#one", once, {.timeout = Timeout}).has_value(),
            "an import of what was exported");
        fuzz::Expect(ParamDb::ExportTables(once, Connection(output) + L"#two", options).has_value(),
                     "an export of what was imported");
        fuzz::Expect(
            ParamDb::ImportTables(Connection(output) + L"#two", twice, {.timeout = Timeout}).has_value(),
            "an import of the second export");
        fuzz::Expect(fuzz::SumOf(once) == fuzz::SumOf(twice), "the set that was exported");
    }
    // A good export over whatever the file holds, which may refuse it.
    static_cast<void>(ParamDb::ExportTables(SmallSet(), Connection(file) + L"#bench", options));
    return 0;
}
