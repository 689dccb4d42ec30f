// Grids of many parameters, most of whose fields lie beyond the bits of an id: the fields are those that one
// shift for each later parameter gives.
#include <paramdb/distillery/mode_info.h>

#include "own_distillery.h"

#include <gtest/gtest.h>
#include <random>
#include <string>
#include <vector>

namespace {

// The states and interval fields of all parameters, shift by shift.
struct Fields {
    std::vector<unsigned> states;
    std::vector<unsigned> intervals;
};

Fields PlainFields(CAutoModeParamMap const& params, int extension, int state_bits) {
    Fields fields;
    for (auto own = params.begin(); own != params.end(); ++own) {
        int state = extension;
        int interval = extension >> (static_cast<unsigned>(state_bits) & 31);
        for (auto later = std::next(own); later != params.end(); ++later) {
            state >>= later->second.HasState ? 2 : 0;
            interval >>= static_cast<unsigned>(later->second.IntervalBits) & 31;
        }
        unsigned const width = static_cast<unsigned>(own->second.IntervalBits) & 31;
        fields.states.push_back(own->second.HasState ? static_cast<unsigned>(state) & 3 : 0);
        fields.intervals.push_back(static_cast<unsigned>(interval) & ((1U << width) - 1));
    }
    return fields;
}

TEST(FieldWalk, RandomGrids) {
    std::mt19937 random(17);
    for (int round = 0; round < 300; ++round) {
        SCOPED_TRACE(round);
        OwnDistillery own;
        own.AddMode(1, L"idle", 2);
        own.tables().PhysMode.Add(2, L"P");
        int const count = 1 + static_cast<int>(random() % (round % 3 == 0 ? 60 : 6));
        for (int order = 0; order < count; ++order) {
            // A width of so many bits, mostly of none; the row of such a signal has no unit.
            int const bits = random() % 3 == 0 ? static_cast<int>(random() % (round % 5 == 0 ? 60 : 7)) : 0;
            own.AddParameter(order, order + 10, 0, static_cast<float>(std::uint64_t{1} << bits), 1,
                             static_cast<int>(random() % 2));
        }
        own.Build(); // whether an id has room for it or not
        CQtModeInfo const& modes = own.derived().ModeInfo();
        for (int question = 0; question < 20; ++question) {
            int const mode = static_cast<int>(random() & 0x7FFFFFFE);
            Fields const fields = PlainFields(modes.Params(), modes.Extension(mode), modes.StateBits());
            bool const all =
                std::find(fields.intervals.begin(), fields.intervals.end(), 0U) == fields.intervals.end();
            ASSERT_EQ(modes.IsValidVirtual(mode), modes.IsVirtual(mode) && all) << mode;
            // A label for each parameter if one of them moves.
            CString const name = modes.BaseName(modes.Extension(mode), 2);
            std::wstring expected = L"P" + modes.Naming().SeparatorText;
            bool moves = false;
            for (unsigned const state : fields.states)
                moves = moves || state >= 2;
            for (unsigned const state : fields.states)
                if (moves)
                    expected += state == 1   ? modes.Naming().StateDownText
                                : state == 2 ? modes.Naming().StateFallText
                                : state == 3 ? modes.Naming().StateUpText
                                             : modes.Naming().StateConstantText;
            if (!moves)
                expected += modes.Params().begin()->second.HasState && fields.states.front() == 0
                                ? modes.Naming().IndexedSuffix
                                : modes.Naming().ConstantSuffix;
            ASSERT_EQ(std::wstring(name), expected) << mode;
        }
    }
}

} // namespace
