#include <paramdb/controls/element_values.h>
#include <paramdb/platform/core/lib_mgr.h>

#include <tests/controls/control_world.h>

namespace {

class ElementValues : public ControlTest {};

TEST_F(ElementValues, Masks) {
    ControlWorld world;
    world.names[0] = {{1, L"a"}, {2, L"b"}};
    world.mode_flags = {{1, 6}};
    world.location_flags = {{5, 4}};
    world.names[5] = {{7, L"c"}, {8, L"d"}};
    world.signal_types = {{7, 4}, {8, -1}};
    Load(world);
    struct Case {
        Clavis::qOrder element;
        int id;
        unsigned int mask;
        bool passes;
    };
    Case const cases[] = {
        {Clavis::qMode, 1, 0, true},
        {Clavis::qMode, 1, 2, true},
        {Clavis::qMode, 1, 9, false},
        {Clavis::qMode, 2, 0, true},
        {Clavis::qMode, 2, 0xFFFFFFFF, false}, // without a row
        {Clavis::qInstrument, 1001, 1, true},
        {Clavis::qInstrument, 2500, 1, true},
        {Clavis::qInstrument, 3500, 1, true},
        {Clavis::qInstrument, 2001, 1, false},
        {Clavis::qInstrument, 2001, 2, true},
        {Clavis::qInstrument, 2500, 2, true},
        {Clavis::qInstrument, 3600, 2, true},
        {Clavis::qInstrument, 1001, 2, false},
        {Clavis::qInstrument, 3500, 2, false},
        {Clavis::qInstrument, 2600, 3, false},
        {Clavis::qInstrument, 8000, 64, true}, // -1 has every bit
        {Clavis::qInstrument, 4711, 0xFFFFFFFF, false},
        {Clavis::qChannel, 4711, 1, true},
        {Clavis::qLocation, 5, 4, true},
        {Clavis::qLocation, 5, 3, false},
        {Clavis::qLocation, 6, 4, false},
        {Clavis::qInstrParam, 4711, 1, true},
        {Clavis::qSignal, 7, 12, true},
        {Clavis::qSignal, 7, 3, false},
        {Clavis::qSignal, 8, 0x80000000, true},
        {Clavis::qSignal, 9, 1, false},
        {static_cast<Clavis::qOrder>(7), 1, 8, true},
    };
    for (auto const& [element, id, mask, passes] : cases)
        EXPECT_EQ(paramdb::PassesFilter(CQtParamInstance(), element, id, mask), passes)
            << element << " " << id << " " << mask;
}

TEST_F(ElementValues, ModesThatAreLeftOut) {
    int const virtual_mode = ControlWorld::VirtualMode(1, 3);
    ControlWorld world;
    world.mode_flags = {{1, 0}, {2, 1024 | 1}};
    Load(world);
    CQtParamInstance const parameters;
    for (bool const hide : {false, true}) {
        EXPECT_FALSE(paramdb::IsLeftOut(parameters, Clavis::qMode, 1, hide));
        EXPECT_TRUE(paramdb::IsLeftOut(parameters, Clavis::qMode, 2, hide));
        EXPECT_FALSE(paramdb::IsLeftOut(parameters, Clavis::qMode, 3, hide));
        EXPECT_EQ(paramdb::IsLeftOut(parameters, Clavis::qMode, virtual_mode, hide), hide);
        EXPECT_FALSE(paramdb::IsLeftOut(parameters, Clavis::qChannel, 2, hide));
        EXPECT_FALSE(paramdb::IsLeftOut(parameters, Clavis::qChannel, virtual_mode, hide));
    }
}

TEST_F(ElementValues, UnknownValues) {
    EXPECT_EQ(paramdb::UnknownValueText(Clavis::qMode, 17), L"(Test step 17)");
    EXPECT_EQ(paramdb::UnknownValueText(Clavis::qInstrParam, -5), L"(Parameter -5)");
    CLibMgr::SetLanguage(CLibMgr::Language::german);
    EXPECT_EQ(paramdb::UnknownValueText(Clavis::qChannel, 3), L"(Kanal 3)");
}

} // namespace
