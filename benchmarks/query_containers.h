// A subject that keeps the rows in maps of one library, one for each table, as a program would that has
// nothing else.
#pragma once

#include <paramdb/distillery/param_distillery.h>

#include "query_subject.h"

#include <bit>
#include <limits>
#include <string>
#include <string_view>
#include <tuple>
#include <utility>

namespace benchmarks {

// `Maps` names the library's maps: ByName<V>, from std::wstring and searched with std::wstring_view, and
// ByKey<K, V>; and tells whether the latter is ordered.
template <class Maps>
class ContainerSubject : public Subject {
public:
    ContainerSubject(std::string name, CQtParamDistillery const& distillery) : Subject(std::move(name)) {
        CParamTables const& tables = distillery.Tables();
        CQtDerivedInfo const& derived = distillery.DerivedInfo();
        for (auto const& [id, row] : tables.Location) {
            m_names.emplace(id[0], row.name().view());
            m_ids.emplace(std::wstring(row.name().view()), id[0]);
        }
        m_triggers.insert(derived.TriggerIdMap().begin(), derived.TriggerIdMap().end());
        for (auto const& [mode, row] : tables.ModeProperty)
            m_physical_modes.emplace(mode[0], row.template get<"physical_mode">());
        for (auto const& [gear, row] : tables.BaseOrder)
            m_base_orders.emplace(gear[0], row.template get<"base_order">());
        for (auto const& [key, row] : derived.ChannelInfo().BaseChannels())
            m_channel_flags.emplace(Pair(key[0], key[1]), row.template get<"flags">());
        CopyPairs(tables.Virtual2PhysGear, m_physical_gears);
        CopyPairs(tables.RotorSpeedSource, m_speed_sources);
        for (auto const& [key, row] : derived.RotorInfo().Rotor2OrderSources())
            m_order_sources.emplace(SourceKey(key[0], key[1], key[2], key[3]),
                                    row.template get<"referred_id">());
    }

    void Ids(std::span<NameQuestion const> names, Answers answers) override {
        AnswerAll(names, answers, [this](NameQuestion const& question) {
            auto const found = m_ids.find(std::wstring_view(question.wide));
            return found != m_ids.end() ? found->second : -1;
        });
    }
    void Names(std::span<int const> ids, Answers answers) override {
        AnswerAll(ids, answers, [this](int id) { return *Text(id); });
    }
    std::wstring Name(int id) override { return Text(id); }
    void Triggers(std::span<int const> parameters, Answers answers) override {
        AnswerAll(parameters, answers, [this](int parameter) { return Value(m_triggers, parameter, -1); });
    }
    void BaseOrders(std::span<BaseOrderQuestion const> gears, Answers answers) override {
        AnswerAll(gears, answers, [this](BaseOrderQuestion const& question) {
            int const physical_mode = Value(m_physical_modes, question.mode, -1);
            int const gear = Value(m_physical_gears, Pair(physical_mode, question.gear), question.gear);
            return std::bit_cast<std::uint32_t>(Value(m_base_orders, gear, 0.0f));
        });
    }
    void OrderSources(std::span<OrderSourceQuestion const> rotors, Answers answers) override {
        if constexpr (Maps::is_ordered)
            AnswerAll(rotors, answers, [this](OrderSourceQuestion const& question) { return Sum(question); });
    }
    bool HasRanges() const override { return Maps::is_ordered; }

private:
    using Pair = std::pair<int, int>;
    // Physical mode, speed source, rotor, serial number.
    using SourceKey = std::tuple<int, int, int, int>;

    template <class Table, class Map>
    static void CopyPairs(Table const& table, Map& map) {
        for (auto const& [key, row] : table)
            map.emplace(Pair(key[0], key[1]), row.template get<"referred_id">());
    }

    template <class Map, class V>
    static V Value(Map const& map, typename Map::key_type const& key, V fallback) {
        auto const found = map.find(key);
        return found != map.end() ? found->second : fallback;
    }

    wchar_t const* Text(int id) const {
        auto const found = m_names.find(id);
        return found != m_names.end() ? found->second.c_str() : L"";
    }

    std::uint32_t Sum(OrderSourceQuestion const& question) const {
        int const physical_mode = Value(m_physical_modes, question.mode, -1);
        int const source = Value(m_speed_sources, Pair(physical_mode, question.rotor), -1);
        int const flags = Value(m_channel_flags, Pair(question.mode, question.channel), 0);
        constexpr int last = std::numeric_limits<int>::max();
        bool const is_mix = (flags & CQtChannelInfo::FlagMix) != 0;
        std::uint32_t sum = 0;
        if (!is_mix && (flags & CQtChannelInfo::FlagSync) == 0)
            return sum;
        auto row = m_order_sources.lower_bound({physical_mode, source, is_mix ? 0 : question.rotor, 0});
        auto const end =
            m_order_sources.upper_bound({physical_mode, source, is_mix ? last : question.rotor, last});
        for (; row != end; ++row)
            sum += static_cast<std::uint32_t>(row->second);
        return sum;
    }

    typename Maps::template ByName<int> m_ids;
    typename Maps::template ByKey<int, std::wstring> m_names;
    typename Maps::template ByKey<int, int> m_triggers;
    typename Maps::template ByKey<int, int> m_physical_modes;
    typename Maps::template ByKey<Pair, int> m_physical_gears;
    typename Maps::template ByKey<int, float> m_base_orders;
    typename Maps::template ByKey<Pair, int> m_speed_sources;
    typename Maps::template ByKey<Pair, int> m_channel_flags;
    typename Maps::template ByKey<SourceKey, int> m_order_sources;
};

} // namespace benchmarks
