// Measures what a host does beside a first load: loading once more, loading from the table set, emptying and
// destroying; each against the first load of the same rows.
#include <paramdb/platform/sea/pr_win.h>
#include <paramdb/service/param_store.h>
#include <paramdb/storage/parameter_lake.h>
#include <paramdb/storage/parameter_table_set.h>

#include "command_line.h"
#include "figures.h"
#include "measure.h"
#include "plain_tables.h"
#include "table_set_rows.h"

#include <cstdio>
#include <exception>
#include <memory>
#include <stdexcept>
#include <vector>

namespace {

using namespace benchmarks;

class ReloadWorks {
public:
    ReloadWorks(std::filesystem::path file, ParamDb::CDbTableSet cells)
        : m_file(std::move(file)), m_cells(std::move(cells)) {}
    ReloadWorks(ReloadWorks const&) = delete;
    ReloadWorks& operator=(ReloadWorks const&) = delete;

    std::vector<Work> Works() {
        auto const make = [this] { MakeStore(); };
        auto const load = [this] { LoadAll(); };
        auto const drop = [this] { Drop(); };
        return {
            {"first load", make, [this] { Load(); }, drop},
            {"load again", load, [this] { Load(); }, drop},
            {"load from the table set", [this] { OfferCells(); }, [this] { ReadTables(); },
             [this] { WithdrawCells(); }},
            {"empty the tables", load, [this] { m_store->PurgeTables(); }, drop},
            {"destroy the tables", load, [this] { m_store.reset(); }, drop},
            {"clear the lake", load, [] { CParameterLake::Lake().clear(); }, drop},
        };
    }

    void CheckResults(std::size_t rows) {
        LoadAll();
        Digest const expected = DigestOf(m_store->Tables());
        Check(expected.rows == rows, "the load lacks rows");
        Load();
        Check(DigestOf(m_store->Tables()) == expected, "the second load gives other rows");
        m_store->PurgeTables();
        Check(DigestOf(m_store->Tables()).rows == 0, "a purged table has rows");
        Drop();
        Check(CParameterLake::Lake().empty(), "a cleared lake has lines");
        OfferCells();
        ReadTables();
        Check(DigestOf(m_store->Tables()) == expected, "the table set gives other rows");
        WithdrawCells();
    }

private:
    void MakeStore() { m_store = std::make_unique<CQtParamStore>(); }
    void ReadTables() { Check(m_store->ReadTablesFromCandidateLake(), "the load was refused"); }
    void Load() {
        Check(CParameterLake::Lake().read(CString(m_file.wstring())), "the file was not read");
        ReadTables();
    }
    void LoadAll() {
        MakeStore();
        Load();
    }
    void Drop() {
        m_store.reset();
        CParameterLake::Lake().clear();
    }
    // A table set with tables comes before the lake, so it is there only for its own work.
    void OfferCells() {
        MakeStore();
        ParamDb::CParameterTableSet::TableSet().swap(m_cells);
    }
    void WithdrawCells() {
        ParamDb::CParameterTableSet::TableSet().swap(m_cells);
        m_store.reset();
    }

    std::filesystem::path m_file;
    ParamDb::CDbTableSet m_cells;
    std::unique_ptr<CQtParamStore> m_store;
};

void Measure(std::size_t rows, std::size_t repeats, Figures& figures) {
    WorkFolder const folder;
    auto const file = folder.Path("rows.lake");
    auto const tables = GenerateRows({rows});
    WriteFile(file, LakeText(tables));
    ReloadWorks reloading(file, MakeTableSet(tables));
    reloading.CheckResults(rows);

    auto const works = reloading.Works();
    std::vector<double> const seconds = MedianSeconds(works, repeats);
    for (std::size_t work = 0; work < works.size(); ++work)
        figures.figures.push_back({works[work].name,
                                   rows,
                                   {seconds[work] * 1e3, static_cast<double>(rows) / seconds[work] / 1e6,
                                    seconds[work] / seconds.front()}});
}

// The generated rows have no fault.
void RefuseMessages() {
    PrWin::SetSink(
        [](int, int, std::wstring const&) { throw std::runtime_error("the load reports a fault"); });
}

} // namespace

int main(int count, char** arguments) {
    try {
        CommandLine const line = ParseCommandLine(count, arguments);
        RefuseMessages();
        Figures figures{
            "Around a load: medians of interleaved runs", "rows", {"ms", "M rows/s", "times first load"}};
        for (std::size_t const rows : line.sizes)
            Measure(rows, line.Repeats(rows), figures);
        Print(figures);
        if (!line.json.empty())
            WriteJson(figures, line.json);
        return 0;
    } catch (std::exception const& error) {
        std::fprintf(stderr, "reload_benchmark: %s\n", error.what());
        return 1;
    }
}
