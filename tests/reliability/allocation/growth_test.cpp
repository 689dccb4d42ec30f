// What is taken for a file grows with the file and no faster, whatever stands in it: four times the lines, a
// little over four times the memory and the requests for it. The square would be sixteen times.
#include <paramdb/query/param_instance.h>
#include <paramdb/storage/lake.h>

#include "failing_memory.h"
#include "quiet_sink.h"
#include "sanitized.h"
#include "shapes.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <string>
#include <tests/support/sources.h>
#include <tests/tools/command_run.h>
#include <vector>

namespace {

using failing_memory::Taken;
using failing_memory::TakenSoFar;

template <class Action>
Taken TakenBy(Action const& action) {
    Taken const before = TakenSoFar();
    action();
    Taken const after = TakenSoFar();
    return {after.bytes - before.bytes, after.requests - before.requests};
}

class Growth : public CommandTest, public testing::WithParamInterface<shapes::Shape> {
protected:
    static constexpr std::size_t Lines = IsSanitized ? 1000 : 4000;
    static constexpr std::size_t LinesForTheCommand = IsSanitized ? 250 : 1000;

    // The same action on a file of the shape with so many lines, and on one of four times as many. Room is
    // taken in steps, for which six times is enough, and a table may take a whole block of some megabytes.
    template <class Action>
    void ExpectLinear(char const* what, std::size_t lines, Action const& action) {
        constexpr std::size_t block = std::size_t{5} << 20;
        Taken taken[2];
        for (bool const is_larger : {false, true}) {
            std::string const name = File(u8"shape.lake", GetParam().make(is_larger ? lines * 4 : lines));
            action(name); // what is made once and kept does not count
            taken[is_larger ? 1 : 0] = TakenBy([&] { action(name); });
        }
        EXPECT_LE(taken[1].bytes, 6 * taken[0].bytes + block)
            << what << " takes " << taken[0].bytes << " bytes, then " << taken[1].bytes;
        EXPECT_LE(taken[1].requests, 6 * taken[0].requests + lines / 4)
            << what << " takes " << taken[0].requests << " blocks, then " << taken[1].requests;
    }
    static std::wstring Wide(std::string const& name) { return paramdb::FromUtf8(name); }
};

TEST_P(Growth, OfALake) {
    ExpectLinear("reading", Lines, [](std::string const& name) { CLake const lake(Wide(name).c_str()); });
    ExpectLinear("copying and merging", Lines, [](std::string const& name) {
        CLake lake(Wide(name).c_str());
        CLake copy(lake);
        lake.merge(copy);
        lake = copy;
        lake.merge(lake);
    });
}

TEST_P(Growth, OfALoad) {
    QuietSink const quiet;
    ExpectLinear("a load", Lines, [](std::string const& name) {
        CParameterLake::Lake().read(Wide(name));
        CQtParamDistillery distillery;
        distillery.ReadTablesFromCandidateLake();
        CQtParamInstance instance(&distillery);
        for (int id = 0; id < 100; ++id) {
            static_cast<void>(instance.ModeName(1 << 30 | id));
            static_cast<void>(instance.IsValidVirtualMode(1 << 30 | id));
        }
        CParameterLake::Lake().clear();
    });
}

TEST_P(Growth, OfTheCommand) {
    std::string const out = Name(u8"out");
    std::vector<std::string> const verbs[] = {
        {"check", "FILE"},
        {"format", "--check", "FILE"},
        {"merge", "FILE", "FILE", "-o", out + ".lake", "--force"},
        {"report", "FILE", "-o", out + ".html", "--force"},
        {"convert", "FILE", out + ".json", "--force"},
        {"diff", "FILE", "FILE"},
    };
    for (std::vector<std::string> const& verb : verbs)
        ExpectLinear(verb.front().c_str(), LinesForTheCommand, [&](std::string const& name) {
            std::vector<std::string> arguments = verb;
            std::replace(arguments.begin(), arguments.end(), std::string("FILE"), name);
            CommandRun const run = RunCommand(arguments);
            EXPECT_TRUE(run.code >= 0 && run.code <= 2) << run.err;
        });
}

INSTANTIATE_TEST_SUITE_P(Shapes, Growth, testing::ValuesIn(shapes::All()),
                         [](auto const& shape) { return std::string(shape.param.name); });

// One giant of each kind, for which nothing may use the stack, nor more time than there are lines.
TEST(Giants, AreReadAndLetGo) {
    QuietSink const quiet;
    constexpr std::size_t count = IsSanitized ? 100'000 : 1'000'000;
    test_support::TempDir const folder;
    auto const path = folder / u8"giant.lake";
    for (shapes::Shape const& shape : shapes::All()) {
        std::string const name = shape.name;
        if (name != "Deep" && name != "ClosingLines" && name != "OneSectionAgain" && name != "OneKeyAgain" &&
            name != "KeysDownwards")
            continue;
        SCOPED_TRACE(name);
        test_support::WriteBytes(path, shape.make(count));
        CParameterLake::Lake().read(test_support::WideName(path));
        EXPECT_GE(CParameterLake::Lake().size(), count);
        CQtParamDistillery distillery;
        EXPECT_TRUE(distillery.ReadTablesFromCandidateLake());
        CParameterLake::Lake().clear();
    }
}

TEST(Giants, ALineOfAHundredMegabytes) {
    QuietSink const quiet;
    constexpr std::size_t length = IsSanitized ? 30'000'000 : 100'000'000;
    test_support::TempDir const folder;
    auto const path = folder / u8"giant.lake";
    test_support::WriteBytes(path,
                             "<DbDesign.CacheVersion>: 216\n<DbDesign.CacheMinorVersion>: 1\n<TMode>: {\n"
                             "1 " +
                                 std::string(length, 'x') + "\n2 short\n}\n");
    std::ptrdiff_t const held = failing_memory::HeldBytes();
    CLake& lake = CParameterLake::Lake();
    lake.read(test_support::WideName(path));
    // The bytes of the file, and little beside them.
    EXPECT_LE(failing_memory::HeldBytes() - held, static_cast<std::ptrdiff_t>(length + length / 8));
    CQtParamDistillery distillery;
    EXPECT_TRUE(distillery.ReadTablesFromCandidateLake());
    EXPECT_EQ(CQtParamInstance(&distillery).ModeId(L"short"), 2);
    EXPECT_EQ(CQtParamInstance(&distillery).Mode().size(), 1U);
    lake.clear();
}

} // namespace
