// The sum over all derived rows, for the plain model and for the library.
#include <paramdb/distillery/param_distillery.h>

#include "plain_model.h"

namespace benchmarks {
namespace {

class DerivedSum {
public:
    template <class... Fields>
    void Add(wchar_t const* name, Fields const&... fields) {
        Digest::Row row(name);
        (AddField(row, fields), ...);
        m_digest.Add(row);
    }
    Digest const& Result() const { return m_digest; }

private:
    template <class Field>
    static void AddField(Digest::Row& row, Field const& field) {
        if constexpr (requires { std::tuple_size<Field>::value; })
            std::apply([&row](auto const&... each) { (AddField(row, each), ...); }, field);
        else if constexpr (requires { field.tuple(); })
            AddField(row, field.tuple());
        else
            row.Add(field);
    }

    Digest m_digest;
};

} // namespace

Digest DerivedDigest(ModelDerived const& derived) {
    DerivedSum sum;
    for (auto const& [key, point] : derived.groups)
        sum.Add(L"group", key, point.x, point.y);
    for (auto const& [key, entry] : derived.entries)
        sum.Add(L"entry", key, entry.area_interpretation, entry.source_parameter, entry.group);
    for (auto const& [key, result] : derived.channels)
        sum.Add(L"channel", key, result);
    for (auto const& [key, interval] : derived.intervals)
        sum.Add(L"interval", key, interval.first, interval.second);
    for (auto const& [key, source] : derived.order_sources)
        sum.Add(L"source", key, source);
    for (auto const& [key, source] : derived.order_references)
        sum.Add(L"reference", key, source);
    for (auto const& [parameter, trigger] : derived.triggers)
        sum.Add(L"trigger", parameter, trigger);
    sum.Add(L"modes", derived.extension_bits, derived.extension_mask, derived.time_signal);
    return sum.Result();
}

Digest DerivedDigest(CQtParamDistillery const& distillery) {
    CQtDerivedInfo const& derived = distillery.DerivedInfo();
    DerivedSum sum;
    for (auto const& [key, point] : derived.GroupInfo().Groups())
        sum.Add(L"group", key, point.x, point.y);
    for (auto const& [key, entry] : derived.GroupInfo().Entries())
        sum.Add(L"entry", key, entry.area_interpretation, entry.source_parameter, entry.group);
    for (auto const& [key, row] : derived.ChannelInfo().BaseChannels())
        sum.Add(L"channel", key, row);
    for (auto const& [key, interval] : derived.SpecIntervals().Intervals())
        sum.Add(L"interval", key, interval);
    for (auto const& [key, row] : derived.RotorInfo().Rotor2OrderSources())
        sum.Add(L"source", key, row);
    for (auto const& [key, row] : derived.RotorInfo().Rotor2OrderReferences())
        sum.Add(L"reference", key, row);
    for (auto const& [parameter, trigger] : derived.TriggerIdMap())
        sum.Add(L"trigger", parameter, trigger);
    sum.Add(L"modes", derived.ModeInfo().ExtensionBits(), derived.ModeInfo().ExtensionMask(),
            CQtParamDistillery::TimeSignalId());
    return sum.Result();
}

} // namespace benchmarks
