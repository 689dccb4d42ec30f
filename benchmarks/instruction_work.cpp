// A few representative works, each the same to the last instruction at every run, for
// scripts/compare-instructions.
//
//     instruction_work --list     the names of the works
//     instruction_work NAME       does one, after its result has been proven right
//     instruction_work            does all of them
#include <paramdb/distillery/param_distillery.h>
#include <paramdb/platform/sea/pr_win.h>
#include <paramdb/query/param_instance.h>
#include <paramdb/storage/parameter_lake.h>
#include <paramdb/storage/parameter_table_set.h>

#include "command_line.h"
#include "counted_work.h"
#include "counting_text.h"
#include "generate_ready.h"
#include "plain_model.h"
#include "query_data.h"
#include "query_subject.h"
#include "table_set_rows.h"

#include <algorithm>
#include <cstdio>
#include <exception>
#include <fstream>
#include <iterator>
#include <memory>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace {

using namespace benchmarks;

constexpr std::size_t Rows = 10'000;
constexpr std::size_t Questions = 2'000; // of each of five kinds

// One work: everything is made ready, the first run is checked, the second one counts.
class CountableWork {
public:
    CountableWork() = default;
    CountableWork(CountableWork const&) = delete;
    CountableWork& operator=(CountableWork const&) = delete;
    virtual ~CountableWork() = default;

    void RunChecked() {
        Prepare();
        Run();
        CheckResult();
        Tidy();
        Prepare();
        CountedWork([this] { Run(); });
        Tidy();
    }

protected:
    virtual void Prepare() = 0;
    virtual void Run() = 0;
    virtual void CheckResult() = 0;
    virtual void Tidy() = 0;

    std::filesystem::path Path(char const* name) const { return m_folder.Path(name); }

private:
    WorkFolder m_folder;
};

void ReadLake(std::filesystem::path const& path) {
    Check(CParameterLake::Lake().read(CString(path.wstring())), "the file was not read");
}

// From a file to filled tables.
class LoadWork : public CountableWork {
public:
    explicit LoadWork(bool in_random_order) {
        auto tables = GenerateReadyRows(Rows);
        m_file = Path("ready.lake");
        WriteFile(m_file, LakeText(tables));
        m_model.ReadLake(m_file);
        Check(m_model.ReadTables(), "the plain model refuses the file");
        if (!in_random_order)
            return;
        for (TableRows& table : tables)
            if (table.description->has_unique_keys)
                ShuffleRows(table.rows);
        WriteFile(m_file, LakeText(tables));
    }

    void Prepare() override { m_store = std::make_unique<CQtParamDistillery>(); }
    void Run() override {
        ReadLake(m_file);
        Check(m_store->CQtParamStore::ReadTablesFromCandidateLake(), "the load was refused");
    }
    void CheckResult() override {
        Digest const digest = DigestOf(m_store->Tables());
        Check(digest.rows == Rows && digest == DigestOf(m_model.Tables()), "the load gives other rows");
    }
    void Tidy() override {
        m_store.reset();
        CParameterLake::Lake().clear();
    }

protected:
    CQtParamDistillery& Store() { return *m_store; }
    PlainModel& Model() { return m_model; }

private:
    static void ShuffleRows(std::vector<std::string>& rows) {
        Random random(1);
        for (std::size_t left = rows.size(); left > 1; --left)
            std::swap(rows[left - 1], rows[static_cast<std::size_t>(random.Below(left))]);
    }

    std::filesystem::path m_file;
    PlainModel m_model;
    std::unique_ptr<CQtParamDistillery> m_store;
};

// From filled tables to all that is derived from them.
class DeriveWork : public LoadWork {
public:
    DeriveWork() : LoadWork(false) {
        Check(Model().Derive(), "the plain model cannot derive");
        ModelDerived derived = Model().Derived();
        derived.time_signal = CQtParamDistillery::TimeSignalId(); // found by the load, not derived
        m_expected = DerivedDigest(derived);
    }

    void Prepare() override {
        LoadWork::Prepare();
        LoadWork::Run();
    }
    void Run() override { Check(Store().DerivedInfo().BuildDerivedInfo(), "the derivation has failed"); }
    void CheckResult() override {
        Digest const digest = DerivedDigest(Store());
        Check(digest.rows > Rows / 10 && digest == m_expected, "other rows were derived");
    }

private:
    Digest m_expected;
};

// Destroying what a load has filled.
class DestroyWork : public LoadWork {
public:
    DestroyWork() : LoadWork(false) {}

    void Prepare() override {
        LoadWork::Prepare();
        LoadWork::Run();
        LoadWork::CheckResult();
    }
    void Run() override { LoadWork::Tidy(); }
    void CheckResult() override { Check(CParameterLake::Lake().size() == 1, "a cleared lake has lines"); }
};

// From the table set to filled tables.
class TableSetWork : public CountableWork {
public:
    TableSetWork() : m_model(MakeModelTables()) {
        auto const tables = GenerateReadyRows(Rows);
        m_cells = MakeTableSet(tables);
        auto const file = Path("ready.lake");
        WriteFile(file, LakeText(tables));
        PlainModel model;
        model.ReadLake(file);
        Check(model.ReadTables(), "the plain model refuses the file");
        m_model = model.Tables();
    }

    void Prepare() override {
        m_store = std::make_unique<CQtParamStore>();
        ParamDb::CParameterTableSet::TableSet().swap(m_cells);
    }
    void Run() override { Check(m_store->ReadTablesFromCandidateLake(), "the load was refused"); }
    void CheckResult() override {
        Check(DigestOf(m_store->Tables()) == DigestOf(m_model), "the table set gives other rows");
    }
    void Tidy() override {
        ParamDb::CParameterTableSet::TableSet().swap(m_cells);
        m_store.reset();
    }

private:
    ParamDb::CDbTableSet m_cells;
    ModelTables m_model;
    std::unique_ptr<CQtParamStore> m_store;
};

// Ten files one after the other into one lake.
class MergeWork : public CountableWork {
public:
    MergeWork() {
        for (std::size_t file = 0; file < FileCount; ++file) {
            std::string const text = LakeText(GenerateRows({.rows = Rows / FileCount, .seed = file + 1}));
            auto const path = Path("0.lake").replace_filename(std::to_string(file) + ".lake");
            WriteFile(path, text);
            m_names.emplace_back(path.wstring());
            m_lines += static_cast<std::size_t>(std::ranges::count(text, '\n'));
        }
    }

    void Prepare() override {}
    void Run() override {
        m_lake = std::make_unique<CLake>(m_names.front());
        for (std::size_t file = 1; file < FileCount; ++file) {
            CLake next(m_names[file]);
            m_lake->merge(next);
        }
    }
    void CheckResult() override {
        // The root of each lake that is merged becomes a blank line.
        Check(m_lake->size() == m_lines + FileCount, "the merged lake lacks lines");
        CLake const last(m_names.back());
        wchar_t const* const largest = L"<TIpParamAndStore>";
        auto const rows = last[largest].position;
        auto const merged = (*m_lake)[largest].position;
        Check(rows->unnamed_size() > 0 && std::equal(rows->begin_unnamed(), rows->end_unnamed(),
                                                     merged->begin_unnamed(), merged->end_unnamed(),
                                                     [](auto const& left, auto const& right) {
                                                         return left->value() == right->value();
                                                     }),
              "the last file has not won");
    }
    void Tidy() override { m_lake.reset(); }

private:
    static constexpr std::size_t FileCount = 10;

    std::vector<CString> m_names;
    std::size_t m_lines = 0;
    std::unique_ptr<CLake> m_lake;
};

// From a lake to a file.
class WriteWork : public CountableWork {
public:
    WriteWork() : m_text(LakeText(GenerateReadyRows(Rows))) {
        auto const path = Path("read.lake");
        WriteFile(path, m_text);
        m_lake = std::make_unique<CLake>(CString(path.wstring()));
    }

    void Prepare() override {}
    void Run() override {
        Check(m_lake->write(CString(Path("written.lake").wstring())), "the lake was not written");
    }
    void CheckResult() override {
        std::ifstream file(Path("written.lake"), std::ios::binary);
        std::string const written{std::istreambuf_iterator<char>(file), {}};
        // A comment is written with a tab before it.
        std::string expected = m_text;
        for (std::size_t at = expected.find("} ;"); at != std::string::npos; at = expected.find("} ;", at))
            expected[at + 1] = '\t';
        Check(written == expected, "other lines were written");
    }
    void Tidy() override {}

private:
    std::string m_text;
    std::unique_ptr<CLake> m_lake;
};

// Names, ids, triggers, base orders and texts in turn.
class QueryWork : public CountableWork {
public:
    QueryWork() {
        FillForQueries(m_distillery, {});
        m_names = std::make_unique<NameQuestions>(m_distillery, false, m_random);
        m_ids = LocationIds(m_distillery, false, m_random);
        m_parameters = Parameters(m_distillery, false, m_random);
        m_gears = Gears(m_distillery, m_random);
        m_keys = Keys(m_distillery, m_random);
        m_library = LibrarySubject(m_distillery);
    }

    void Prepare() override {}
    void Run() override { Ask(*m_library, m_answers, m_texts); }
    void CheckResult() override {
        auto const maps = StdMapSubject(m_distillery);
        std::vector<std::uint32_t> answers;
        std::vector<CString> texts;
        Ask(*maps, answers, texts);
        Check(answers == m_answers, "a query has another answer");
        ModelTables const model = CopyToModel(m_distillery.Tables());
        for (std::size_t key = 0; key < Questions; ++key)
            Check(m_texts[key] == CountingText(model, m_keys[key], L"/").c_str(), "a key has another text");
    }
    void Tidy() override {}

private:
    void Ask(Subject& subject, std::vector<std::uint32_t>& answers, std::vector<CString>& texts) {
        answers.assign(4 * Questions, 0);
        Answers const all(answers);
        subject.Ids(std::span(m_names->questions()).first(Questions), all.subspan(0, Questions));
        subject.Names(std::span(m_ids).first(Questions), all.subspan(Questions, Questions));
        subject.Triggers(std::span(m_parameters).first(Questions), all.subspan(2 * Questions, Questions));
        subject.BaseOrders(std::span(m_gears).first(Questions), all.subspan(3 * Questions, Questions));
        CQtParamInstance const parameters(&m_distillery);
        texts.clear();
        for (QClavis const& key : std::span(m_keys).first(Questions))
            texts.push_back(parameters.FormatClavisTextNice(key, false, L"/"));
    }

    CQtParamDistillery m_distillery;
    Random m_random{7};
    std::unique_ptr<NameQuestions> m_names;
    std::vector<int> m_ids;
    std::vector<int> m_parameters;
    std::vector<BaseOrderQuestion> m_gears;
    std::vector<QClavis> m_keys;
    std::unique_ptr<Subject> m_library;
    std::vector<std::uint32_t> m_answers;
    std::vector<CString> m_texts;
};

struct NamedWork {
    std::string_view name;
    std::unique_ptr<CountableWork> (*make)();
};

constexpr NamedWork Works[] = {
    {"load", [] { return std::unique_ptr<CountableWork>(new LoadWork(false)); }},
    {"load-random-order", [] { return std::unique_ptr<CountableWork>(new LoadWork(true)); }},
    {"load-table-set", [] { return std::unique_ptr<CountableWork>(new TableSetWork); }},
    {"derive", [] { return std::unique_ptr<CountableWork>(new DeriveWork); }},
    {"queries", [] { return std::unique_ptr<CountableWork>(new QueryWork); }},
    {"merge", [] { return std::unique_ptr<CountableWork>(new MergeWork); }},
    {"write", [] { return std::unique_ptr<CountableWork>(new WriteWork); }},
    {"destroy", [] { return std::unique_ptr<CountableWork>(new DestroyWork); }},
};

void RunAll(std::string_view name) {
    bool is_known = false;
    for (NamedWork const& work : Works)
        if (name.empty() || name == work.name) {
            is_known = true;
            work.make()->RunChecked();
        }
    if (!is_known)
        throw std::invalid_argument("no work " + std::string(name));
}

// The generated rows have no fault.
void RefuseMessages() {
    PrWin::SetSink(
        [](int, int, std::wstring const&) { throw std::runtime_error("the library reports a fault"); });
}

} // namespace

int main(int count, char** arguments) {
    try {
        std::string_view const argument = count > 1 ? arguments[1] : "";
        if (argument == "--list") {
            for (NamedWork const& work : Works)
                std::printf("%s\n", std::string(work.name).c_str());
            return 0;
        }
        RefuseMessages();
        RunAll(argument);
        return 0;
    } catch (std::exception const& error) {
        std::fprintf(stderr, "instruction_work: %s\n", error.what());
        return 1;
    }
}
