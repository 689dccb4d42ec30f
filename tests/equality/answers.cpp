// Loads a random parameter file and writes all that there is to know of it: the messages of the load, the
// dump of every table and the answer to every question. Builds for different systems, or of different
// compilers, must write the same bytes for a seed.
//   paramdb_answers SEED FILE
#include <paramdb/platform/core/lib_mgr.h>
#include <paramdb/platform/sea/pr_win.h>
#include <paramdb/storage/parameter_lake.h>

#include "questions.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>

namespace {

bool WriteFile(std::filesystem::path const& path, std::string const& text) {
    std::ofstream file(path, std::ios::binary | std::ios::trunc);
    file << text;
    return static_cast<bool>(file.flush());
}

std::wstring WideName(std::filesystem::path const& path) {
    std::u8string const name = path.u8string();
    return paramdb::FromUtf8(std::string(name.begin(), name.end()));
}

} // namespace

int main(int count, char** arguments) {
    if (count != 3) {
        std::cerr << "usage: paramdb_answers SEED FILE\n";
        return 2;
    }
    auto const seed = static_cast<std::uint32_t>(std::strtoul(arguments[1], nullptr, 10));
    std::filesystem::path const target(arguments[2]);
    equality::Random random(seed);
    equality::AnswerBook book;
    CLibMgr::SetLanguage(CLibMgr::Language::english);
    PrWin::SetSink([&book](int category, int style, std::wstring const& text) {
        book.Tell("message", category, style, text);
    });

    std::filesystem::path const lake = std::filesystem::path(target).replace_extension(".lake");
    if (!WriteFile(lake, equality::RandomLake(random))) {
        std::cerr << "cannot write " << lake << '\n';
        return 1;
    }
    CParameterLake::Lake().read(WideName(lake));
    CQtParamInstance instance;
    bool const loaded = instance.ReadTablesFromCandidateLake();
    book.Tell("loaded", loaded, instance.Initialized());
    book.Tell("named texts", instance.LearnFileName(), instance.CalibFileName(), instance.BaseType(),
              instance.AliasType(), CQtParamInstance::TimeSignalId());
    instance.DumpTables(0);
    AskNames(instance, book);
    AskClassification(instance, book);
    AskKeyTexts(instance, random, book);
    AskDisplayTexts(instance, book);
    AskModes(instance, random, book);
    AskRotors(instance, book);
    AskChannelsAndPolygons(instance, book);
    AskIntervals(instance, random, book);
    AskTriggers(instance, random, book);
    AskNumbersAndOrders(random, book);
    PrWin::SetSink({});

    if (!WriteFile(target, book.Text())) {
        std::cerr << "cannot write " << target << '\n';
        return 1;
    }
    return 0;
}
