// Whole loads: a parameter file, every question over it, the same load again, a second file over it, and all
// that is left after clearing.
#include "support/answers.h"
#include "support/custom_mutator.h"
#include "support/expect.h"
#include "support/input.h"
#include "support/loading.h"
#include "support/message_watch.h"
#include "support/query_sweep.h"

#include <cstdint>
#include <string>
#include <vector>

namespace {

struct Load {
    bool is_loaded;
    std::uint64_t messages;
    std::uint64_t answers;

    bool operator==(Load const&) const = default;
};

// A load with all questions and all dumps. Virtual modes are added last, for they change the tables.
Load LoadAndAsk(CQtParamDistillery& distillery, fuzz::MessageWatch& messages) {
    CQtParamInstance instance(&distillery);
    Load load{};
    messages.TakeSum();
    load.is_loaded = instance.ReadTablesFromCandidateLake();
    instance.DumpTables(2);
    load.messages = messages.TakeSum();
    fuzz::Answers answers;
    fuzz::AskEverything(instance, answers);
    load.answers = answers.Sum();
    return load;
}

void ChangeAndAsk(CQtParamDistillery& distillery) {
    CQtParamInstance instance(&distillery);
    fuzz::Answers answers;
    for (int const mode : {-1, 5, 1 << 20, 2147483647}) {
        answers.Take(instance.AddVMode(mode), instance.AddVModeName(mode, L"added"));
        answers.Take(instance.ModeName(mode), instance.ModeId(L"added"));
    }
    answers.Take(instance.UpdateLocalSeas());
    instance.WriteTablesToLocalSeas();
    fuzz::AskEverything(instance, answers);
}

} // namespace

fuzz::Tags const& fuzz::MutatorTags() {
    static Tags const all;
    return all;
}

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    auto const files = fuzz::SplitFiles(fuzz::TextOf(data, size), 2);
    fuzz::MessageWatch messages;
    CQtParamDistillery distillery;
    fuzz::FillLake(fuzz::WithVersion(files[0]));
    Load const first = LoadAndAsk(distillery, messages);

    // The same file gives the same, in a new place as over what has been loaded.
    {
        CQtParamDistillery other;
        fuzz::Expect(LoadAndAsk(other, messages) == first, "the same of the same file");
    }
    if (first.is_loaded)
        fuzz::Expect(LoadAndAsk(distillery, messages) == first, "the same of the same file over itself");

    if (files.size() > 1) {
        fuzz::FillLake(fuzz::WithVersion(files[1]));
        LoadAndAsk(distillery, messages);
    }
    ChangeAndAsk(distillery);
    distillery.Clear();
    distillery.ClearInitialized();
    fuzz::Answers answers;
    CQtParamInstance instance(&distillery);
    fuzz::AskEverything(instance, answers);
    instance.DumpTables(0);
    return 0;
}
