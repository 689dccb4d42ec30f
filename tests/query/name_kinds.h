// The kinds of things that have names, with everything that can be asked about each.
#pragma once

#include <paramdb/query/param_instance.h>

#include <iterator>
#include <string>
#include <tests/distillery/derivation_support.h>
#include <tests/support/messages.h>

namespace names {

using IdQuery = int (CQtParamInstance::*)(wchar_t const*) const;
using NameQuery = wchar_t const* (CQtParamInstance::*)(int) const;
using TreeQuery = CDynNameIdTable const& (CQtParamInstance::*)() const;
using ValidityQuery = bool (CQtParamInstance::*)(int) const;

// The queries for one kind of thing, and where its names stand.
struct Kind {
    char const* tag;
    CDynNameIdTable CParamTables::*table;
    IdQuery id;
    NameQuery name;
    TreeQuery tree;
    ValidityQuery is_valid; // null where there is none
};
using Query = CQtParamInstance;
inline Kind const Kinds[] = {
    {"<TAliasType>", &CParamTables::TypeNames, &Query::TypeAliasId, &Query::TypeAliasName, &Query::TypeNames,
     nullptr},
    {"<TAliasBench>", &CParamTables::BenchNames, &Query::BenchAliasId, &Query::BenchAliasName,
     &Query::BenchNames, nullptr},
    {"<TMode>", &CParamTables::Mode, &Query::ModeId, &Query::ModeName, &Query::Mode, &Query::IsValidMode},
    {"<TChannel>", &CParamTables::Channel, &Query::ChannelId, &Query::ChannelName, &Query::Channel,
     &Query::IsValidChannel},
    {"<TLocation>", &CParamTables::Location, &Query::LocationId, &Query::LocationName, &Query::Location,
     &Query::IsValidLocation},
    {"<TInstrument>", &CParamTables::Instrument, &Query::InstrumentId, &Query::InstrumentName,
     &Query::Instrument, &Query::IsValidInstrument},
    {"<TPhysMode>", &CParamTables::PhysMode, &Query::PhysModeId, &Query::PhysModeName, &Query::PhysMode,
     &Query::IsValidPhysMode},
    {"<TResamplingGroup>", &CParamTables::ResamplingJob, &Query::ResamplingJobId, &Query::ResamplingJobName,
     &Query::ResamplingJob, nullptr},
    {"<TProcessingUnit>", &CParamTables::ResamplingSet, &Query::ResamplingSetId, &Query::ResamplingSetName,
     &Query::ResamplingSet, nullptr},
    {"<TSensorGroup>", &CParamTables::SensorGroup, &Query::SensorGroupId, &Query::SensorGroupName,
     &Query::SensorGroup, nullptr},
    {"<TApplicationSignal>", &CParamTables::ApplicationSignal, &Query::ApplicationSignalId,
     &Query::ApplicationSignalName, &Query::ApplicationSignal, &Query::IsValidApplicationSignal},
};

// What the name query of a kind gives for an id without a row.
inline std::wstring NameOfAMiss(Kind const& kind, int id) {
    return kind.name == &Query::InstrumentName ? L"(Instr. " + std::to_wstring(id) + L")" : L"";
}

// What a name of 200 or more characters is reported with.
inline Message CutMessage(std::wstring const& name) {
    return {1, 1,
            L"TableType::strcopy(): copy truncated because destination string with length 200 can't take '" +
                name + L"'\n"};
}

// Names are made of few letters, some of them nasty, and ids are few, so that both come again and again.
inline std::wstring RandomName(derivation::Random& random) {
    static constexpr wchar_t letters[] = {L'a', L'A', L'\u00E4', L'\xD800', L' ', L'\xFFFF', L'\x1'};
    std::wstring name;
    if (random.OneIn(12))
        name.assign(static_cast<std::size_t>(random.Between(196, 202)), L'a');
    for (int count = random.Between(0, 2); count > 0; --count)
        name += letters[random.Between(0, static_cast<int>(std::size(letters)) - 1)];
    return name;
}

} // namespace names
