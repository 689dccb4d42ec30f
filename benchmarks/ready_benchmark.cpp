// Measures the way from a parameter file to a database that answers queries: the file, the tables and all
// that is derived from them; beside the plain model, and beside the parts of this way.
#include <paramdb/distillery/param_distillery.h>
#include <paramdb/platform/core/utf8.h>
#include <paramdb/platform/sea/pr_win.h>
#include <paramdb/storage/parameter_lake.h>

#include "command_line.h"
#include "figures.h"
#include "generate_ready.h"
#include "measure.h"
#include "plain_model.h"

#include <cstdio>
#include <exception>
#include <memory>
#include <stdexcept>
#include <vector>

namespace {

using namespace benchmarks;

// The library and the plain model on one file.
class ReadyWorks {
public:
    explicit ReadyWorks(std::filesystem::path file) : m_file(std::move(file)) {}
    ReadyWorks(ReadyWorks const&) = delete;
    ReadyWorks& operator=(ReadyWorks const&) = delete;

    std::vector<Work> Works() {
        auto const drop = [this] { Drop(); };
        return {
            {"paramdb", [this] { MakeLibrary(); }, [this] { LoadLibrary(); }, drop},
            {"paramdb, tables alone", [this] { MakeLibrary(); }, [this] { LoadTables(); }, drop},
            {"plain model", [this] { MakeModel(); }, [this] { LoadModel(); }, drop},
            {"plain model, tables alone", [this] { MakeModel(); }, [this] { LoadModelTables(); }, drop},
        };
    }

    void CheckResults(std::size_t rows) {
        MakeLibrary();
        LoadLibrary();
        MakeModel();
        LoadModel();
        Check(m_model->Faults() == 0, "the plain model finds a fault");
        Digest const tables = DigestOf(m_library->Tables());
        Check(tables.rows == rows && DigestOf(m_model->Tables()) == tables,
              "the plain model has loaded other rows");
        Digest const derived = DerivedDigest(*m_library);
        Check(derived.rows > rows / 10 && DerivedDigest(m_model->Derived()) == derived,
              "the plain model has derived other rows");
        Drop();
    }

private:
    void MakeLibrary() { m_library = std::make_unique<CQtParamDistillery>(); }
    void MakeModel() { m_model = std::make_unique<PlainModel>(); }
    void ReadLake() {
        Check(CParameterLake::Lake().read(CString(m_file.wstring())), "the file was not read");
    }
    void LoadLibrary() {
        ReadLake();
        Check(m_library->ReadTablesFromCandidateLake(), "the load was refused");
    }
    void LoadTables() {
        ReadLake();
        Check(m_library->CQtParamStore::ReadTablesFromCandidateLake(), "the load was refused");
    }
    void LoadModelTables() {
        m_model->ReadLake(m_file);
        Check(m_model->ReadTables(), "the plain model refuses the file");
    }
    void LoadModel() {
        LoadModelTables();
        Check(m_model->Derive(), "the plain model cannot derive");
    }
    void Drop() {
        m_library.reset();
        m_model.reset();
        CParameterLake::Lake().clear();
    }

    std::filesystem::path m_file;
    std::unique_ptr<CQtParamDistillery> m_library;
    std::unique_ptr<PlainModel> m_model;
};

void Measure(std::size_t rows, std::size_t repeats, Figures& figures) {
    WorkFolder const folder;
    auto const file = folder.Path("ready.lake");
    WriteFile(file, LakeText(GenerateReadyRows(rows)));
    ReadyWorks ready(file);
    ready.CheckResults(rows);

    auto const works = ready.Works();
    std::vector<double> const seconds = MedianSeconds(works, repeats);
    for (std::size_t work = 0; work < works.size(); ++work)
        figures.figures.push_back({works[work].name,
                                   rows,
                                   {seconds[work] * 1e3, static_cast<double>(rows) / seconds[work] / 1e6,
                                    seconds.front() / seconds[work]}});
}

// The generated rows have no fault.
void RefuseMessages() {
    PrWin::SetSink([](int, int, std::wstring const& text) {
        throw std::runtime_error("the load reports: " + paramdb::ToUtf8(text));
    });
}

} // namespace

int main(int count, char** arguments) {
    try {
        CommandLine const line = ParseCommandLine(count, arguments);
        RefuseMessages();
        Figures figures{
            "File to ready: medians of interleaved runs", "rows", {"ms", "M rows/s", "paramdb / this"}};
        for (std::size_t const rows : line.sizes)
            Measure(rows, line.Repeats(rows), figures);
        Print(figures);
        if (!line.json.empty())
            WriteJson(figures, line.json);
        return 0;
    } catch (std::exception const& error) {
        std::fprintf(stderr, "ready_benchmark: %s\n", error.what());
        return 1;
    }
}
