// Measures the check list with very many instrument parameters: filling the control, opening its window,
// scrolling, narrowing by typing; and the same parameters in a combo.
//   qt_benchmark [--rows N] [--repeats N] [--json FILE]
// Without a screen it runs on the offscreen platform. Times are in milliseconds, the median of the repeats;
// of scrolling also the longest step. The goal is an open list within a second and steps that no eye notices
// (16 ms).
#include <paramdb/controls.h>
#include <paramdb/query/param_instance.h>
#include <paramdb/storage/parameter_lake.h>
#include <paramdb/views/qt/combo_view.h>
#include <paramdb/views/qt/list_view.h>
#include <paramdb/views/qt/qt_text.h>
#include <paramdb/views/qt/views.h>

#include "command_line.h"
#include "figures.h"

#include <QtWidgets/QAbstractItemView>
#include <QtWidgets/QApplication>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QScrollBar>
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <exception>
#include <map>
#include <string>
#include <vector>

namespace {

using namespace benchmarks;

constexpr int FirstId = 1000;

// Tables with so many parameters of fifty instruments, and nothing else, as the tables of the process.
void Load(std::size_t rows, WorkFolder const& folder) {
    constexpr std::size_t instruments = 50;
    std::string text = "<DbDesign.CacheVersion>: 216\n<DbDesign.CacheMinorVersion>: 1\n<TInstrument>: {\n";
    for (std::size_t i = 1; i <= instruments; ++i)
        text += "\t" + std::to_string(i) + " \"Instrument " + std::to_string(i) + "\"\n";
    text += "}\n<TInstrumentParam>: {\n";
    for (std::size_t i = 0; i < rows; ++i)
        text += "\t" + std::to_string(FirstId + static_cast<int>(i)) + " " +
                std::to_string(i % instruments + 1) + " \"Order spectrum " + std::to_string(i) + "\" 0 1 0\n";
    text += "}\n";
    auto const path = folder.Path("parameters.lake");
    WriteFile(path, text);
    CParameterLake::Lake().read(path.wstring());
    Check(CQtParamInstance().ReadTablesFromCandidateLake(), "the parameters do not load");
    CParameterLake::Lake().clear();
    Check(CQtParamInstance().InstrumentParam().size() == rows, "there are other rows");
}

void Settle() {
    QApplication::processEvents();
    QApplication::processEvents();
}

// The milliseconds that a work takes until everything is drawn.
template <class Work>
double Milliseconds(Work const& work) {
    auto const start = std::chrono::steady_clock::now();
    work();
    Settle();
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
}

class Times {
public:
    void Add(std::string const& work, double time) {
        if (!m_times.contains(work))
            m_order.push_back(work);
        m_times[work].push_back(time);
    }
    Figures Summary(std::size_t rows) {
        Figures figures{"Windows", "rows", {"median, ms", "longest, ms"}};
        for (std::string const& work : m_order) {
            auto& times = m_times[work];
            std::ranges::nth_element(times, times.begin() + static_cast<std::ptrdiff_t>(times.size() / 2));
            double const median = times[times.size() / 2];
            figures.figures.push_back({work, rows, {median, *std::max_element(times.begin(), times.end())}});
        }
        return figures;
    }

private:
    std::vector<std::string> m_order;
    std::map<std::string, std::vector<double>> m_times;
};

void MeasureCheckList(int rows, Times& times) {
    CClavisListCtrl list;
    list.Init(Clavis::qInstrParam);
    times.Add("fill the control", Milliseconds([&] { list.Fill({-1}, 0); }));
    Check(list.GetItemCount() == rows, "the list has other rows");
    paramdb::qt::ListView view;
    view.resize(400, 600);
    times.Add("open the check list", Milliseconds([&] {
                  view.SetList(&list);
                  view.show();
              }));
    auto& table = view.Table();
    Check(table.model()->rowCount() == rows, "the view has other rows");

    constexpr int steps = 100;
    QScrollBar& bar = *table.verticalScrollBar();
    for (int step = 0; step < steps; ++step)
        times.Add("scroll by a row", Milliseconds([&] { bar.setValue(bar.value() + table.rowHeight(0)); }));
    for (int step = 0; step < steps; ++step)
        times.Add("scroll anywhere", Milliseconds([&] { bar.setValue(bar.maximum() / steps * step); }));
    Check(bar.value() > 0 || rows < steps, "the view has not moved");

    times.Add("switch a box", Milliseconds([&] { list.ToggleCheckbox(0, 0); }));
    times.Add("switch all boxes", Milliseconds([&] { list.ClickColumn(0); }));
    Check(list.CountCheckedItems() == rows, "not all boxes are on");
    view.OpenFilter();
    QString typed;
    for (QChar const letter : QStringLiteral("um 99")) {
        typed += letter;
        times.Add("narrow by a letter", Milliseconds([&] { view.FilterEdit().setText(typed); }));
    }
    Check(table.model()->rowCount() < rows, "nothing was narrowed");
    times.Add("show all again", Milliseconds([&] { view.CloseFilter(); }));
}

void MeasureCombo(int rows, Times& times) {
    CClavisComboBox combo;
    paramdb::qt::ComboView view;
    view.SetCombo(&combo);
    view.show();
    Settle();
    times.Add("fill a combo", Milliseconds([&] { combo.Fill(Clavis::qInstrParam, FirstId, -1); }));
    Check(view.count() == rows + 1, "the combo has other rows");
    times.Add("open its list", Milliseconds([&] { view.showPopup(); }));
    view.hidePopup();
}

void Run(CommandLine const& line) {
    Figures figures{"Windows", "rows", {"median, ms", "longest, ms"}};
    for (std::size_t const rows : line.sizes) {
        WorkFolder const folder;
        Load(rows, folder);
        Times times;
        for (std::size_t repeat = 0; repeat < line.repeats; ++repeat) {
            MeasureCheckList(static_cast<int>(rows), times);
            MeasureCombo(static_cast<int>(rows), times);
        }
        for (Figure const& figure : times.Summary(rows).figures)
            figures.figures.push_back(figure);
        CQtParamInstance().PurgeTables();
    }
    Print(figures);
    if (!line.json.empty())
        WriteJson(figures, line.json);
}

} // namespace

int main(int argc, char** argv) {
    try {
        CommandLine line = ParseCommandLine(argc, argv);
        if (line.sizes.size() > 1)
            line.sizes = {1000, 10'000, 100'000};
        if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
            qputenv("QT_QPA_PLATFORM", "offscreen");
        QApplication const application(argc, argv);
        paramdb::qt::Views const views;
        Run(line);
        return 0;
    } catch (std::exception const& error) {
        std::fprintf(stderr, "qt_benchmark: %s\n", error.what());
        return 1;
    }
}
