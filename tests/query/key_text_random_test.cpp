// The texts of keys over random tables, against a plain model.
#include <paramdb/query/param_instance.h>

#include <algorithm>
#include <bitset>
#include <gtest/gtest.h>
#include <map>
#include <string>
#include <tests/distillery/derivation_support.h>
#include <tests/distillery/own_distillery.h>
#include <tests/support/messages.h>
#include <utility>
#include <vector>

namespace {

using Mask = std::bitset<Clavis::ElementCount>;
using Names = std::map<int, std::wstring>;

// The tables, and the texts by going through them.
struct TextModel {
    Names modes, instruments, channels, locations, signals;
    std::map<int, std::pair<int, std::wstring>> parameters; // instrument and name
    std::map<int, unsigned int> channel_types, location_flags;

    static std::wstring NameIn(Names const& names, int id) { return names.contains(id) ? names.at(id) : L""; }
    std::wstring Instrument(int id) const {
        std::wstring const name = NameIn(instruments, id);
        return !name.empty() ? name : L"(Instr. " + std::to_wstring(id) + L")";
    }
    std::wstring Parameter(int id) const { return parameters.contains(id) ? parameters.at(id).second : L""; }

    std::wstring Element(int element, int id, int rule) const {
        std::wstring const names[] = {NameIn(modes, id),     Instrument(id), NameIn(channels, id),
                                      NameIn(locations, id), Parameter(id),  NameIn(signals, id)};
        std::wstring const name = id == -1 ? L"(Nil)" : names[element];
        std::wstring const number = L"[" + std::to_wstring(id) + L"]";
        if (name.empty())
            return rule == 0 ? L"" : number;
        return rule == 1 ? name + L" " + number : name;
    }

    std::wstring Joined(std::vector<int> const& key, int rule, Mask mask) const {
        std::wstring text;
        for (std::size_t element = 0; element < key.size(); ++element)
            if (mask[element])
                text +=
                    (text.empty() ? L"" : L" / ") + Element(static_cast<int>(element), key[element], rule);
        return text;
    }

    std::wstring InstrParam(int instrument, int parameter) const {
        if (instrument == -1 && parameters.contains(parameter))
            instrument = parameters.at(parameter).first;
        int count = 0;
        for (auto const& [id, row] : parameters)
            count += row.first == instrument ? 1 : 0;
        return Instrument(instrument) + (count > 1 ? L" " + Parameter(parameter) : L"");
    }

    std::wstring LocaChan(int location, int channel, bool both) const {
        std::wstring const place = NameIn(locations, location);
        std::wstring const name = NameIn(channels, channel);
        unsigned int const type = channel_types.contains(channel) ? channel_types.at(channel) : 0;
        int count = 0;
        for (auto const& [id, other] : channel_types)
            count += other == type ? 1 : 0;
        bool const is_fixed = type % 8 >= 4 || type == 0;
        if (is_fixed && count > 1)
            return place + L" (" + name + L")";
        if (is_fixed) {
            auto const flags = location_flags.find(location);
            return flags != location_flags.end() && flags->second % 8 < 4 ? name : place;
        }
        if (type % 4 >= 2)
            return !both && count <= 1 ? name : name + L" (" + place + L")";
        return place + L" " + name;
    }

    std::wstring Nice(std::vector<int> const& key, bool both, std::wstring const& separator) const {
        std::wstring const between = L" " + separator + L" ";
        std::wstring const mode = key[0] == -1 ? L"(Nil)" : NameIn(modes, key[0]);
        std::wstring const signal = key[5] == -1 ? L"(Nil)" : NameIn(signals, key[5]);
        std::wstring const text = mode + between + InstrParam(key[1], key[4]) + between +
                                  LocaChan(key[3], key[2], both) + between + signal;
        return text.substr(0, 499);
    }
};

class World {
public:
    OwnDistillery own;
    TextModel model;

    explicit World(derivation::Random& random) : m_random(&random) {
        CParamTables& tables = own.tables();
        AddNames(tables.Mode, model.modes, L"mode");
        AddNames(tables.Instrument, model.instruments, L"instrument");
        AddNames(tables.Channel, model.channels, L"channel");
        AddNames(tables.Location, model.locations, L"location");
        AddNames(tables.ApplicationSignal, model.signals, L"signal");
        ChangeParameters();
        ChangeFlags();
    }

    // New rows of instrument parameters.
    void ChangeParameters() {
        CParamTables& tables = own.tables();
        tables.InstrumentParam.clear();
        model.parameters.clear();
        for (int count = m_random->Between(0, 8); count > 0; --count) {
            int const parameter = AnyId();
            int const instrument = AnyId();
            std::wstring const name = AnyName(L"parameter", parameter);
            if (model.parameters.try_emplace(parameter, instrument, name).second)
                tables.InstrumentParam.insert(
                    {parameter, QVInstrumentParam(instrument, name.c_str(), 0, 0u, 0u)});
        }
    }

    // New rows of channels and locations.
    void ChangeFlags() {
        CParamTables& tables = own.tables();
        tables.ChannelProperty.clear();
        tables.LocationProperty.clear();
        model.channel_types.clear();
        model.location_flags.clear();
        for (int count = m_random->Between(0, 5); count > 0; --count) {
            int const id = AnyId();
            auto const flags = static_cast<unsigned int>(m_random->Between(0, m_random->OneIn(4) ? 16 : 7));
            if (model.channel_types.try_emplace(id, flags).second)
                tables.ChannelProperty.insert({id, QVChannelProperty(flags, 0)});
            if (m_random->OneIn(2) && model.location_flags.try_emplace(id, flags).second)
                tables.LocationProperty.insert({id, QVLocationProperty(flags, 0, 0)});
        }
    }

    // Few, so that rows meet.
    int AnyId() { return m_random->OneIn(8) ? -1 : m_random->Between(0, 5); }
    std::vector<int> AnyKey() { return {AnyId(), AnyId(), AnyId(), AnyId(), AnyId(), AnyId()}; }

private:
    std::wstring AnyName(std::wstring const& word, int id) {
        if (m_random->OneIn(8))
            return L"";
        std::wstring const name = word + std::to_wstring(id);
        return m_random->OneIn(6) ? name + std::wstring(199 - name.size(), L'-') : name;
    }
    void AddNames(CDynNameIdTable& table, Names& names, std::wstring const& word) {
        for (int count = m_random->Between(0, 6); count > 0; --count) {
            int const id = AnyId();
            std::wstring const name = AnyName(word, id);
            // The name of a mode of -1 is never shown; the texts of keys do not ask for it.
            if (names.try_emplace(id, name).second)
                table.Add(id, name.c_str());
        }
    }

    derivation::Random* m_random;
};

SClavis Plain(std::vector<int> const& key) {
    SClavis plain;
    std::copy(key.begin(), key.end(), plain.elements);
    return plain;
}

void CheckOneKey(World& world, derivation::Random& random) {
    CQtParamInstance const& instance = world.own.instance();
    TextModel const& model = world.model;
    std::vector<int> const key = world.AnyKey();
    SCOPED_TRACE(testing::Message() << "key " << testing::PrintToString(key));
    CClavis const clavis(key.data());
    QClavis const q_clavis(clavis);
    Mask const mask(static_cast<unsigned>(random.Between(0, 63)));
    for (int rule = 0; rule <= 2; ++rule) {
        std::wstring const text = model.Joined(key, rule, mask);
        auto const show = static_cast<CQtParamInstance::show_id_t>(rule);
        EXPECT_EQ(std::wstring(instance.FormatClavisText(clavis, show, mask)), text) << rule << ' ' << mask;
        EXPECT_EQ(std::wstring(instance.FormatClavisText(q_clavis, show, mask)), text) << rule << ' ' << mask;
        EXPECT_EQ(std::wstring(instance.FormatClavisText(Plain(key), show, mask)), text)
            << rule << ' ' << mask;
    }
    std::wstring const text = model.Joined(key, 2, mask);
    EXPECT_EQ(std::wstring(instance.FormatClavisText(clavis, mask)), text);
    EXPECT_EQ(std::wstring(instance.FormatClavisText(q_clavis, mask)), text);
    EXPECT_EQ(std::wstring(instance.FormatClavisText(Plain(key), mask)), text);

    CString out;
    EXPECT_EQ(std::wstring(instance.FormatInstrParamText(out, key[1], key[4])),
              model.InstrParam(key[1], key[4]));
    EXPECT_EQ(std::wstring(instance.FormatInstrParamText(out, q_clavis)), model.InstrParam(key[1], key[4]));
    bool const both = random.OneIn(2);
    EXPECT_EQ(std::wstring(instance.FormatLocaChanText(out, key[3], key[2], both)),
              model.LocaChan(key[3], key[2], both));
    EXPECT_EQ(std::wstring(instance.FormatLocaChanText(out, q_clavis, both)),
              model.LocaChan(key[3], key[2], both));
    std::wstring const separator(static_cast<std::size_t>(random.Between(0, 3)), L'|');
    std::wstring const nice = model.Nice(key, both, separator);
    EXPECT_EQ(std::wstring(instance.FormatClavisTextNice(clavis, both, separator.c_str())), nice);
    EXPECT_EQ(std::wstring(instance.FormatClavisTextNice(q_clavis, both, separator.c_str())), nice);
}

TEST(KeyTextRandom, AgainstAModel) {
    MessageLog messages;
    CQtParamInstance::ShowIdsInDialogs(false);
    for (unsigned seed = 1; seed <= 150; ++seed) {
        SCOPED_TRACE(seed);
        derivation::Random random(seed);
        World world(random);
        for (int time = 0; time < 3; ++time) {
            for (int count = 0; count < 12; ++count)
                CheckOneKey(world, random);
            world.ChangeFlags();
            if (random.OneIn(2))
                world.ChangeParameters();
        }
    }
    EXPECT_EQ(messages.Take(), std::vector<Message>());
}

TEST(KeyTextRandom, TheSwitchOfTheDialogsShowsAllIds) {
    CQtParamInstance::ShowIdsInDialogs(true);
    for (unsigned seed = 1001; seed <= 1050; ++seed) {
        SCOPED_TRACE(seed);
        derivation::Random random(seed);
        World world(random);
        CQtParamInstance const& instance = world.own.instance();
        for (int count = 0; count < 20; ++count) {
            std::vector<int> const key = world.AnyKey();
            Mask const mask(static_cast<unsigned>(random.Between(0, 63)));
            std::wstring const text = world.model.Joined(key, 1, mask);
            CClavis const clavis(key.data());
            EXPECT_EQ(std::wstring(instance.FormatClavisText(clavis, mask)), text);
            EXPECT_EQ(std::wstring(instance.FormatClavisText(QClavis(clavis), mask)), text);
            EXPECT_EQ(std::wstring(instance.FormatClavisText(Plain(key), mask)), text);
        }
    }
    CQtParamInstance::ShowIdsInDialogs(false);
}

} // namespace
