#include <paramdb/platform/core/lib_mgr.h>

#include <tests/controls/control_world.h>

namespace {

constexpr char const* Tags[6] = {"<TMode>", "<TInstrument>",       "<TChannel>", "<TLocation>",
                                 "",        "<TApplicationSignal>"};

std::string Narrow(std::wstring const& text) {
    std::string narrow;
    for (wchar_t const unit : text)
        narrow += static_cast<char>(unit);
    return narrow;
}

std::string Quoted(std::wstring const& text) {
    return "\"" + Narrow(text) + "\"";
}

template <class Map, class Line>
std::string Table(std::string const& tag, Map const& rows, Line const& line) {
    std::string text = tag + ": {\n";
    for (auto const& [id, row] : rows)
        text += " " + std::to_string(id) + " " + line(row) + "\n";
    return text + "}\n";
}

} // namespace

std::string ControlWorld::Lake() const {
    std::string text = "<DbDesign.CacheVersion>: 216\n<DbDesign.CacheMinorVersion>: 1\n";
    for (std::size_t element = 0; element < std::size(names); ++element) {
        std::map<int, std::wstring> rows = names[element];
        if (element == 0)
            std::erase_if(rows, [](auto const& row) { return IsVirtual(row.first); });
        if (*Tags[element])
            text += Table(Tags[element], rows, Quoted);
    }
    text += Table("<TInstrumentParam>", parameters, [](Parameter const& row) {
        return std::to_string(row.instrument) + " " + Quoted(row.name) + " 0 0 0";
    });
    text += Table("<TModeProperty>", mode_flags,
                  [](unsigned int flags) { return "0 " + std::to_string(flags) + " 0 0"; });
    text += Table("<TLocationProperty>", location_flags,
                  [](unsigned int flags) { return std::to_string(flags) + " 0 0"; });
    std::map<int, int> types;
    for (auto const& [id, name] : names[5]) {
        auto const type = signal_types.find(id);
        types[id] = type != signal_types.end() ? type->second : 0;
    }
    text += Table("<TAppSignalProperty>", types,
                  [](int type) { return std::to_string(type) + " \"----\" 0 0 0"; });
    return text + "<TAutoModeParamOrder>: {\n 0 10\n}\n<TAutoModeParam>: {\n 10 0 1000 100 1 0 1 0 1 1\n}\n";
}

bool ControlWorld::IsHidden(int mode) const {
    auto const row = mode_flags.find(mode);
    return row != mode_flags.end() && (row->second & 1024) != 0;
}

bool ControlWorld::Passes(int element, int id, unsigned int mask) const {
    static std::map<int, int> const kinds{{1001, 1}, {2001, 2}, {2500, 3}, {2600, 4},
                                          {3500, 5}, {3600, 6}, {8000, -1}};
    auto const value = [id](auto const& rows) {
        auto const row = rows.find(id);
        return row != rows.end() ? static_cast<unsigned int>(row->second) : 0u;
    };
    switch (element) {
    case 0:
        return mask == 0 || (value(mode_flags) & mask) != 0;
    case 1:
        return mask == 0 || (value(kinds) & mask) != 0;
    case 3:
        return mask == 0 || (value(location_flags) & mask) != 0;
    case 5:
        return mask == 0 || (value(signal_types) & mask) != 0;
    default:
        return true;
    }
}

std::wstring ControlWorld::InstrumentName(int instrument) const {
    auto const row = names[1].find(instrument);
    return row != names[1].end() && !row->second.empty() ? row->second
                                                         : L"(Instr. " + std::to_wstring(instrument) + L")";
}

std::wstring ControlWorld::ParameterText(int parameter) const {
    Parameter const& row = parameters.at(parameter);
    int brothers = 0;
    for (auto const& [id, other] : parameters)
        brothers += other.instrument == row.instrument;
    return InstrumentName(row.instrument) + (brothers > 1 ? L" " + row.name : L"");
}

ControlWorld ControlWorld::Random(std::mt19937& random) {
    auto const below = [&](unsigned int limit) {
        return static_cast<int>(static_cast<unsigned int>(random()) % limit);
    };
    int serial = 0;
    auto const name = [&](wchar_t const* word) { return word + std::to_wstring(++serial); };
    ControlWorld world;
    for (int i = below(8); i > 0; --i) {
        int const mode = below(20);
        world.names[0][mode] = name(L"Mode ");
        if (below(3) > 0)
            world.mode_flags[mode] = static_cast<unsigned int>(below(8) + (below(3) == 0 ? 1024 : 0));
        if (below(3) == 0)
            world.names[0][VirtualMode(mode, below(10))] = name(L"Virtual ");
    }
    for (int const instrument : {1001, 2001, 2500, 2600, 3500, 3600, 8000, 77}) {
        if (below(2) == 0)
            world.names[1][instrument] = name(L"Instrument ");
    }
    for (int const element : {2, 3, 5}) {
        for (int i = below(6); i > 0; --i)
            world.names[element][below(12)] = name(L"Value ");
    }
    for (int i = below(6); i > 0; --i) {
        world.location_flags[below(12)] = static_cast<unsigned int>(below(8));
        world.signal_types[below(12)] = below(8);
    }
    int const instruments[] = {1001, 2001, 2500, 77, 4711};
    for (int i = below(10); i > 0; --i)
        world.parameters[below(30)] = {instruments[below(5)], name(L"Parameter ")};
    return world;
}

ControlTest::ControlTest() {
    CLibMgr::SetLanguage(CLibMgr::Language::english);
    CQtParamInstance::ShowIdsInDialogs(false);
    CMessageQueue::Clear();
}

ControlTest::~ControlTest() {
    CLibMgr::ResetLanguage();
    CQtParamInstance::ShowIdsInDialogs(false);
    paramdb::ResetSystemColors();
    CMessageQueue::Clear();
}

void ControlTest::Load(ControlWorld const& world) {
    Reset();
    FillLake(world.Lake());
    CQtParamInstance parameters;
    ASSERT_TRUE(parameters.ReadTablesFromCandidateLake()) << testing::PrintToString(messages.Take());
    for (auto const& [mode, name] : world.names[0]) {
        if (ControlWorld::IsVirtual(mode)) {
            ASSERT_TRUE(parameters.AddVModeName(mode, name.c_str()));
        }
    }
}
