// Measures reading, linking and merging lakes against the floor: reading the bytes of the same files and
// finding their line ends.
#include <paramdb/storage/lake.h>

#include "command_line.h"
#include "figures.h"
#include "generate.h"
#include "line_floor.h"
#include "measure.h"

#include <algorithm>
#include <cstdio>
#include <exception>
#include <limits>
#include <memory>
#include <string>
#include <vector>

namespace {

using namespace benchmarks;

constexpr wchar_t LargestTable[] = L"<TIpParamAndStore>";
constexpr std::size_t LinesBesideRows = 2 + 2 * 103; // versions, openers and closing lines

// A parameter file and what a lake must find in it.
struct LakeFile {
    std::filesystem::path path;
    std::size_t bytes = 0;
    std::size_t lines = 0;
    std::size_t largest_rows = 0;
    std::wstring largest_last; // the last row of the largest table

    CString Name() const { return CString(path.wstring()); }
};

LakeFile WriteLake(std::filesystem::path const& path, std::vector<TableRows> const& tables) {
    std::string const text = LakeText(tables);
    WriteFile(path, text);
    LakeFile file{path, text.size(), static_cast<std::size_t>(std::ranges::count(text, '\n')), 0, {}};
    for (TableRows const& table : tables)
        if (table.description->tag == std::wstring_view(LargestTable)) {
            file.largest_rows = table.rows.size();
            std::string last = table.rows.back();
            std::ranges::replace(last, '\t', ' ');
            file.largest_last.assign(last.begin(), last.end());
        }
    return file;
}

void CheckLargest(CLake const& lake, LakeFile const& file) {
    auto const section = lake[LargestTable];
    Check(section.found() && section.position->unnamed_size() == file.largest_rows,
          "the largest section does not have its rows");
    auto const last = section.position->begin_unnamed()[static_cast<std::ptrdiff_t>(file.largest_rows) - 1];
    Check(last->value_text() == file.largest_last, "the last row of the largest section is another one");
    Check(lake[L"<DbDesign.CacheVersion>"].number() == 216, "the version is another one");
}

// A base file, and the file of a customer that overrides a quarter of its tables with fewer rows.
struct Files {
    LakeFile base;
    LakeFile customer;

    Files(WorkFolder const& folder, std::size_t lines) {
        std::size_t const rows = lines > 2 * LinesBesideRows ? lines - LinesBesideRows : lines;
        base = WriteLake(folder.Path("base.lake"), GenerateRows({rows}));
        auto tables = GenerateRows({rows / 2, 2});
        std::size_t index = 0;
        std::erase_if(tables, [&index](TableRows const& table) {
            return index++ % 4 != 0 && table.description->tag != std::wstring_view(LargestTable);
        });
        customer = WriteLake(folder.Path("customer.lake"), tables);
    }
};

void CheckResults(Files const& files) {
    Check(CountLines(files.base.path) == files.base.lines, "the floor counts other lines");
    CLake base(files.base.Name());
    CLake customer(files.customer.Name());
    Check(base.size() == files.base.lines + 1, "the lake does not have its lines");
    CheckLargest(base, files.base);
    base.merge(customer);
    // The root of the merged lake becomes a blank line.
    Check(base.size() == files.base.lines + files.customer.lines + 2, "the merged lake lacks lines");
    CheckLargest(base, files.customer);
}

// Works on lakes that are made anew for every run.
class LakeWorks {
public:
    explicit LakeWorks(Files const& files) : m_files(&files) {}
    LakeWorks(LakeWorks const&) = delete;
    LakeWorks& operator=(LakeWorks const&) = delete;

    std::vector<Work> Works() {
        auto const drop = [this] {
            m_base.reset();
            m_customer.reset();
        };
        return {
            {"floor of reading", {}, [this] { CountLines(m_files->base.path); }, {}},
            {"read and link", {}, [this] { ReadBase(); }, drop},
            {"floor of merging",
             {},
             [this] {
                 CountLines(m_files->base.path);
                 CountLines(m_files->customer.path);
             },
             {}},
            {"merge",
             [this] {
                 ReadBase();
                 ReadCustomer();
             },
             [this] { m_base->merge(*m_customer); }, drop},
        };
    }

    void ReadBase() { m_base = std::make_unique<CLake>(m_files->base.Name()); }
    void ReadCustomer() { m_customer = std::make_unique<CLake>(m_files->customer.Name()); }

private:
    Files const* m_files;
    std::unique_ptr<CLake> m_base;
    std::unique_ptr<CLake> m_customer;
};

constexpr double None = std::numeric_limits<double>::quiet_NaN();

// The figures of all works at one size. The first size leaves its cost of a line in `smallest_costs`.
void Measure(std::size_t lines, std::size_t repeats, Figures& figures, std::vector<double>& smallest_costs) {
    WorkFolder const folder;
    Files const files(folder, lines);
    CheckResults(files);

    LakeWorks lakes(files);
    std::vector<Work> const works = lakes.Works();
    std::vector<double> const seconds = MedianSeconds(works, repeats);
    Memory const memory = MeasureMemory([&lakes] {
        lakes.ReadBase();
        return std::size_t{0};
    });

    for (std::size_t work = 0; work < works.size(); ++work) {
        bool const is_floor = work % 2 == 0; // of the work behind it
        bool const merges = work >= 2;
        std::size_t const count = files.base.lines + (merges ? files.customer.lines : 0);
        std::size_t const bytes = files.base.bytes + (merges ? files.customer.bytes : 0);
        double const cost = seconds[work] / static_cast<double>(count);
        if (smallest_costs.size() < works.size())
            smallest_costs.push_back(cost);
        figures.figures.push_back(
            {works[work].name,
             count,
             {static_cast<double>(bytes) / seconds[work] / 1e6, 1e-6 / cost, cost * 1e9,
              is_floor || merges ? None : static_cast<double>(memory.kept) / static_cast<double>(count),
              is_floor ? None : seconds[work] / seconds[work - 1], cost / smallest_costs[work]}});
    }
}

} // namespace

int main(int count, char** arguments) {
    try {
        CommandLine const line = ParseCommandLine(count, arguments);
        Figures figures{"Lakes: medians of interleaved runs",
                        "lines",
                        {"MB/s", "M lines/s", "ns/line", "bytes/line", "times floor", "times smallest size"}};
        std::vector<double> smallest_costs;
        for (std::size_t const lines : line.sizes)
            Measure(lines, line.Repeats(lines), figures, smallest_costs);
        Print(figures);
        if (!line.json.empty())
            WriteJson(figures, line.json);
        return 0;
    } catch (std::exception const& error) {
        std::fprintf(stderr, "lake_benchmark: %s\n", error.what());
        return 1;
    }
}
