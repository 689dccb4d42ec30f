// Measures merging many parameter files one after the other against reading the same files.
#include <paramdb/storage/lake.h>

#include "command_line.h"
#include "figures.h"
#include "generate.h"
#include "measure.h"

#include <algorithm>
#include <cstdio>
#include <exception>
#include <limits>
#include <list>
#include <memory>
#include <string>
#include <vector>

namespace {

using namespace benchmarks;

constexpr wchar_t LargestTable[] = L"<TIpParamAndStore>";
constexpr std::size_t LinesBesideRows = 2 + 2 * 103; // versions, openers and closing lines
constexpr std::size_t FileCount = 100;
constexpr double MostTimesReading = 3;
constexpr double None = std::numeric_limits<double>::quiet_NaN();

struct LakeFile {
    CString name;
    std::size_t lines;
    std::wstring largest_last; // the last row of the largest table
};

std::vector<LakeFile> WriteFiles(WorkFolder const& folder, std::size_t lines_of_each) {
    std::size_t const rows = lines_of_each > 2 * LinesBesideRows ? lines_of_each - LinesBesideRows : 100;
    std::vector<LakeFile> files;
    for (std::size_t file = 0; file < FileCount; ++file) {
        auto const tables = GenerateRows({.rows = rows, .seed = file + 1});
        std::string const text = LakeText(tables);
        auto const path = folder.Path(std::to_string(file) + ".lake");
        WriteFile(path, text);
        auto const largest = std::ranges::find_if(tables, [](TableRows const& table) {
            return table.description->tag == std::wstring_view(LargestTable);
        });
        std::string last = largest->rows.back();
        std::ranges::replace(last, '\t', ' ');
        files.push_back({CString(path.wstring()), static_cast<std::size_t>(std::ranges::count(text, '\n')),
                         std::wstring(last.begin(), last.end())});
    }
    return files;
}

class MergeWorks {
public:
    explicit MergeWorks(std::vector<LakeFile> files) : m_files(std::move(files)) {}
    MergeWorks(MergeWorks const&) = delete;
    MergeWorks& operator=(MergeWorks const&) = delete;

    std::size_t Lines() const {
        std::size_t lines = 0;
        for (LakeFile const& file : m_files)
            lines += file.lines;
        return lines;
    }

    std::vector<Work> Works() {
        return {
            {"read 100 files", {}, [this] { Read(); }, [this] { m_lakes.clear(); }},
            {"read and merge 100 files", {}, [this] { Merge(); }, [this] { m_merged.reset(); }},
        };
    }

    void CheckResult() {
        Merge();
        // The root of each lake that is merged becomes a blank line.
        Check(m_merged->size() == Lines() + FileCount, "the merged lake lacks lines");
        auto const section = (*m_merged)[LargestTable];
        Check(section.found() && section.position->unnamed_size() > 0, "the largest section is not there");
        auto const last = section.position->end_unnamed()[-1];
        Check(last->value_text() == m_files.back().largest_last, "the last file has not won");
        m_merged.reset();
    }

private:
    void Read() {
        for (LakeFile const& file : m_files)
            m_lakes.emplace_back(file.name);
    }
    void Merge() {
        m_merged = std::make_unique<CLake>(m_files.front().name);
        for (std::size_t file = 1; file < m_files.size(); ++file) {
            CLake next(m_files[file].name);
            m_merged->merge(next);
        }
    }

    std::vector<LakeFile> m_files;
    std::list<CLake> m_lakes;
    std::unique_ptr<CLake> m_merged;
};

void Measure(std::size_t lines_of_each, std::size_t repeats, Figures& figures) {
    WorkFolder const folder;
    MergeWorks merging(WriteFiles(folder, lines_of_each));
    merging.CheckResult();
    auto const works = merging.Works();
    std::vector<double> const seconds = MedianSeconds(works, repeats);
    for (std::size_t work = 0; work < works.size(); ++work)
        figures.figures.push_back(
            {works[work].name,
             merging.Lines(),
             {seconds[work] * 1e3, static_cast<double>(merging.Lines()) / seconds[work] / 1e6,
              seconds[work] / seconds.front(), work == 0 ? None : MostTimesReading}});
}

} // namespace

int main(int count, char** arguments) {
    try {
        CommandLine const line = ParseCommandLine(count, arguments);
        Figures figures{
            "Merging: medians of interleaved runs", "lines", {"ms", "M lines/s", "times reading", "at most"}};
        Measure(line.sizes.back() / FileCount, line.repeats, figures);
        Print(figures);
        if (!line.json.empty())
            WriteJson(figures, line.json);
        return 0;
    } catch (std::exception const& error) {
        std::fprintf(stderr, "merge_benchmark: %s\n", error.what());
        return 1;
    }
}
