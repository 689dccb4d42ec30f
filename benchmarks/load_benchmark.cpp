// Measures the way from a parameter file to filled tables, beside other programs that fill the same rows.
#include <paramdb/platform/sea/pr_win.h>
#include <paramdb/service/param_store.h>
#include <paramdb/storage/parameter_lake.h>

#include "command_line.h"
#include "figures.h"
#include "generate.h"
#include "measure.h"
#include "peers.h"
#include "plain_model.h"
#include "plain_tables.h"

#include <algorithm>
#include <cstdio>
#include <exception>
#include <limits>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

using namespace benchmarks;

constexpr double None = std::numeric_limits<double>::quiet_NaN();

// A way from a file to filled tables, and what came of it.
class Loader {
public:
    explicit Loader(std::string name, std::filesystem::path file)
        : m_name(std::move(name)), m_file(std::move(file)) {}
    Loader(Loader const&) = delete;
    Loader& operator=(Loader const&) = delete;
    virtual ~Loader() = default;

    std::string const& name() const { return m_name; }
    std::filesystem::path const& file() const { return m_file; }
    virtual std::size_t MostRepeats() const { return std::numeric_limits<std::size_t>::max(); }
    virtual bool FillsTables() const { return true; }

    virtual void Prepare() = 0;
    virtual void Load() = 0;
    // Loads, and returns the bytes of the tables alone where that is another number than those of all.
    virtual std::size_t LoadAndWeigh() {
        Load();
        return 0;
    }
    virtual Digest Result() = 0;
    virtual void Drop() = 0;

private:
    std::string m_name;
    std::filesystem::path m_file;
};

// The library: the file is read into the lake of the process, and from there into the tables of a store.
class LibraryLoader : public Loader {
public:
    using Loader::Loader;

    void Prepare() override { m_store = std::make_unique<CQtParamStore>(); }
    void Load() override {
        ReadLake();
        ReadTables();
    }
    std::size_t LoadAndWeigh() override {
        ReadLake();
        std::size_t const before = HeapBytes();
        ReadTables();
        return std::max(HeapBytes(), before) - before;
    }
    Digest Result() override { return DigestOf(m_store->Tables()); }
    void Drop() override {
        m_store.reset();
        CParameterLake::Lake().clear();
    }

protected:
    void ReadLake() {
        Check(CParameterLake::Lake().read(CString(file().wstring())), "the file was not read");
    }
    void ReadTables() { Check(m_store->ReadTablesFromCandidateLake(), "the load was refused"); }

private:
    std::unique_ptr<CQtParamStore> m_store;
};

// The first half of that.
class LakeLoader : public LibraryLoader {
public:
    using LibraryLoader::LibraryLoader;

    bool FillsTables() const override { return false; }
    void Load() override { ReadLake(); }
    std::size_t LoadAndWeigh() override {
        ReadLake();
        return 0;
    }
};

// The library once more, when lake and tables are full already.
class ReloadLoader : public LibraryLoader {
public:
    using LibraryLoader::LibraryLoader;

    void Prepare() override {
        LibraryLoader::Prepare();
        Load();
    }
};

// The same work as it is written the first time.
class ModelLoader : public Loader {
public:
    using Loader::Loader;

    void Prepare() override { m_model = std::make_unique<PlainModel>(); }
    void Load() override {
        m_model->ReadLake(file());
        ReadTables();
    }
    std::size_t LoadAndWeigh() override {
        m_model->ReadLake(file());
        std::size_t const before = HeapBytes();
        ReadTables();
        return std::max(HeapBytes(), before) - before;
    }
    Digest Result() override { return DigestOf(m_model->Tables()); }
    void Drop() override { m_model.reset(); }

private:
    void ReadTables() { Check(m_model->ReadTables(), "the plain model refuses the file"); }

    std::unique_ptr<PlainModel> m_model;
};

// A peer that fills plain tables.
class PeerLoader : public Loader {
public:
    PeerLoader(Peer const& peer, std::filesystem::path path)
        : Loader(peer.name, std::move(path)), m_peer(peer) {}

    std::size_t MostRepeats() const override { return m_peer.most_repeats; }
    void Prepare() override { m_tables = std::make_unique<PlainTables>(); }
    void Load() override { m_peer.load(file(), *m_tables); }
    Digest Result() override { return DigestOf(*m_tables); }
    void Drop() override { m_tables.reset(); }

private:
    Peer m_peer;
    std::unique_ptr<PlainTables> m_tables;
};

// Writes the files and gives the ways to load them, the library first.
std::vector<std::unique_ptr<Loader>> MakeLoaders(WorkFolder const& folder, std::size_t rows) {
    std::vector<std::unique_ptr<Loader>> loaders;
    auto const sorted = GenerateRows({rows});
    auto const sorted_file = folder.Path("sorted.lake");
    auto const shuffled_file = folder.Path("shuffled.lake");
    WriteFile(sorted_file, LakeText(sorted));
    WriteFile(shuffled_file, LakeText(GenerateRows({.rows = rows, .in_random_order = true})));
    loaders.push_back(std::make_unique<LibraryLoader>("paramdb", sorted_file));
    loaders.push_back(std::make_unique<LakeLoader>("paramdb, lake alone", sorted_file));
    loaders.push_back(std::make_unique<ReloadLoader>("paramdb, second load", sorted_file));
    loaders.push_back(std::make_unique<LibraryLoader>("paramdb, random order", shuffled_file));
    loaders.push_back(std::make_unique<ModelLoader>("plain model", sorted_file));
    for (Peer const& peer : Peers())
        if (rows <= peer.most_rows) {
            peer.write(sorted, folder.Path(peer.file_name));
            loaders.push_back(std::make_unique<PeerLoader>(peer, folder.Path(peer.file_name)));
        }
    return loaders;
}

// Loads once with each and sees that all came to the same rows.
void CheckResults(std::vector<std::unique_ptr<Loader>> const& loaders, std::size_t rows) {
    Digest expected;
    for (auto const& loader : loaders) {
        if (!loader->FillsTables())
            continue;
        loader->Prepare();
        loader->Load();
        Digest const result = loader->Result();
        loader->Drop();
        if (loader == loaders.front())
            expected = result;
        if (result.rows != rows || result != expected)
            throw std::runtime_error(loader->name() + " has loaded other rows");
    }
}

Memory MemoryOf(Loader& loader) {
    loader.Prepare();
    Memory const memory = MeasureMemory([&loader] { return loader.LoadAndWeigh(); });
    loader.Drop();
    return memory;
}

void Measure(std::size_t rows, std::size_t repeats, Figures& figures) {
    WorkFolder const folder;
    auto const loaders = MakeLoaders(folder, rows);
    CheckResults(loaders, rows);

    std::vector<Work> works;
    for (auto const& loader : loaders)
        works.push_back({loader->name(), [&load = *loader] { load.Prepare(); },
                         [&load = *loader] { load.Load(); }, [&load = *loader] { load.Drop(); },
                         loader->MostRepeats()});
    std::vector<double> const seconds = MedianSeconds(works, repeats);

    auto const count = static_cast<double>(rows);
    for (std::size_t work = 0; work < works.size(); ++work) {
        Memory const memory = MemoryOf(*loaders[work]);
        auto const bytes = static_cast<double>(std::filesystem::file_size(loaders[work]->file()));
        std::size_t const tables = memory.part > 0 ? memory.part : memory.kept;
        figures.figures.push_back(
            {works[work].name,
             rows,
             {seconds[work] * 1e3, count / seconds[work] / 1e6, bytes / seconds[work] / 1e6,
              static_cast<double>(memory.kept) / count,
              loaders[work]->FillsTables() ? static_cast<double>(tables) / count : None,
              static_cast<double>(memory.peak) / count, seconds.front() / seconds[work]}});
    }
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
        Figures figures{"File to filled tables: medians of interleaved runs",
                        "rows",
                        {"ms", "M rows/s", "MB/s", "bytes/row", "bytes/row of tables", "peak bytes/row",
                         "paramdb / this"}};
        for (std::size_t const rows : line.sizes)
            Measure(rows, line.Repeats(rows), figures);
        Print(figures);
        if (!line.json.empty())
            WriteJson(figures, line.json);
        return 0;
    } catch (std::exception const& error) {
        std::fprintf(stderr, "load_benchmark: %s\n", error.what());
        return 1;
    }
}
