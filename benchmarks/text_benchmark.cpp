// Measures the descriptive texts of keys against the plain way, which counts rows at each call.
#include <paramdb/platform/sea/pr_win.h>
#include <paramdb/query/param_instance.h>

#include "command_line.h"
#include "counting_text.h"
#include "figures.h"
#include "measure.h"
#include "query_data.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <exception>
#include <limits>
#include <span>
#include <stdexcept>
#include <vector>

namespace {

using namespace benchmarks;

constexpr double None = std::numeric_limits<double>::quiet_NaN();
constexpr std::uint64_t Seed = 7;
// The plain way takes so long that it is asked for a part of the keys: as many as this many rows allow.
constexpr std::size_t RowsToCount = 4'000'000;

struct Size {
    std::size_t parameters;
    double goal; // how many times faster the library is to be; NaN for any
};

void Measure(Size const& size, std::size_t repeats, Figures& figures) {
    CQtParamDistillery distillery;
    FillForQueries(distillery, {.parameters = size.parameters});
    CQtParamInstance const parameters(&distillery);
    ModelTables const model = CopyToModel(distillery.Tables());
    Random random(Seed);
    std::vector<QClavis> const keys = Keys(distillery, random);
    auto const some = std::span(keys).first(std::clamp<std::size_t>(RowsToCount / size.parameters, 20, 5000));

    for (QClavis const& key : some)
        Check(parameters.FormatClavisTextNice(key, false, L"/") == CountingText(model, key, L"/").c_str(),
              "a key has another text");
    auto const is_empty = [](bool empty) { Check(!empty, "the text of a key is empty"); };
    Work const works[] = {{"counting",
                           {},
                           [&] {
                               for (QClavis const& key : some)
                                   is_empty(CountingText(model, key, L"/").empty());
                           },
                           {}},
                          {"paramdb",
                           {},
                           [&] {
                               for (QClavis const& key : keys)
                                   is_empty(parameters.FormatClavisTextNice(key, false, L"/").IsEmpty());
                           },
                           {}}};
    std::vector<double> const seconds = MedianSeconds(works, repeats);
    double const counting = seconds[0] * 1e9 / static_cast<double>(some.size());
    double const library = seconds[1] * 1e9 / static_cast<double>(keys.size());
    figures.figures.push_back(
        {"nice text of a key", size.parameters, {counting, library, counting / library, size.goal}});
}

// The rows have no fault.
void RefuseMessages() {
    PrWin::SetSink(
        [](int, int, std::wstring const&) { throw std::runtime_error("the library reports a fault"); });
}

} // namespace

int main(int count, char** arguments) {
    try {
        CommandLine const line = ParseCommandLine(count, arguments);
        RefuseMessages();
        Figures figures{"Texts of keys: nanoseconds for each, medians of interleaved runs",
                        "parameters",
                        {"counting", "paramdb", "times faster", "goal"}};
        std::vector<Size> sizes{{100, 10}, {8'000, 100}, {80'000, 1'000}};
        if (line.sizes.size() == 1)
            sizes = {{line.sizes.front(), None}};
        for (Size const& size : sizes)
            Measure(size, line.Repeats(size.parameters), figures);
        Print(figures);
        if (!line.json.empty())
            WriteJson(figures, line.json);
        return 0;
    } catch (std::exception const& error) {
        std::fprintf(stderr, "text_benchmark: %s\n", error.what());
        return 1;
    }
}
