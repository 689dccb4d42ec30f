// CQtParamInstance: names and ids.
#include <paramdb/keys/text_buffer.h>
#include <paramdb/query/param_instance.h>
#include <paramdb/tables/id_search.h>

#include <algorithm>
#include <string_view>

namespace {

// The id of the first row that fits, or -1.
template <class Table, class Fits>
int FirstId(Table const& table, Fits const& fits) {
    auto const row =
        std::find_if(table.begin(), table.end(), [&](auto const& entry) { return fits(entry.second); });
    return row != table.end() ? row->first[0] : -1;
}

// The name in the row of an id, empty without a row.
template <class Table>
wchar_t const* RowName(Table const& table, int id) {
    auto const row = paramdb::FindById(table, id);
    return row != table.end() ? row->second.template get<"name">().c_str() : L"";
}

} // namespace

int CQtParamInstance::ModeId(wchar_t const* name) const {
    return Mode().Idx(name);
}

int CQtParamInstance::InstrumentId(wchar_t const* name) const {
    return Instrument().Idx(name);
}

wchar_t const* CQtParamInstance::ModeName(int mode) const {
    if (mode == -1)
        return L"";
    if (Mode().IsValidId(mode))
        return Mode().Name(mode);
    thread_local CTextBuffer<500> buffer;
    buffer.Clear();
    Modes().AppendName(buffer, mode);
    return buffer.c_str();
}

wchar_t const* CQtParamInstance::InstrumentName(int instrument) const {
    wchar_t const* const name = Instrument().Name(instrument);
    if (*name != L'\0')
        return name;
    thread_local CTextBuffer<100> buffer;
    buffer.Clear();
    buffer += L"(Instr. ";
    buffer += instrument;
    buffer += L")";
    return buffer.c_str();
}

bool CQtParamInstance::IsValidMode(int id) const {
    return Mode().IsValidId(id);
}

bool CQtParamInstance::IsValidPhysMode(int id) const {
    return PhysMode().IsValidId(id);
}

bool CQtParamInstance::IsValidInstrument(int id) const {
    return Instrument().IsValidId(id);
}

bool CQtParamInstance::IsValidChannel(int id) const {
    return Channel().IsValidId(id);
}

bool CQtParamInstance::IsValidLocation(int id) const {
    return Location().IsValidId(id);
}

bool CQtParamInstance::IsValidApplicationSignal(int id) const {
    return ApplicationSignal().IsValidId(id);
}

int CQtParamInstance::InstrumentParamId(wchar_t const* name, int instrument) const {
    std::wstring_view const sought(name);
    return FirstId(InstrumentParam(), [&](QVInstrumentParam const& row) {
        return row.get<"instrument">() == instrument && row.get<"name">().view() == sought;
    });
}

wchar_t const* CQtParamInstance::InstrumentParamName(int parameter) const {
    return RowName(InstrumentParam(), parameter);
}

int CQtParamInstance::InstrumentParameterToInstrument(int parameter) const {
    auto const row = paramdb::FindById(InstrumentParam(), parameter);
    return row != InstrumentParam().end() ? row->second.get<"instrument">() : -1;
}

int CQtParamInstance::TriggerId(wchar_t const* name) const {
    std::wstring_view const sought(name);
    return FirstId(Trigger(), [&](QVTrigger const& row) { return row.get<"name">().view() == sought; });
}

wchar_t const* CQtParamInstance::TriggerName(int trigger) const {
    return RowName(Trigger(), trigger);
}

int CQtParamInstance::TriggerId(int parameter) const {
    auto const& triggers = m_distillery->DerivedInfo().TriggerIdMap();
    auto const trigger = triggers.find(parameter);
    return trigger != triggers.end() ? trigger->second : -1;
}

wchar_t const* CQtParamInstance::ClavisElementName(int element, int id) const {
    switch (element) {
    case Clavis::qMode:
        return ModeName(id);
    case Clavis::qInstrument:
        return InstrumentName(id);
    case Clavis::qChannel:
        return ChannelName(id);
    case Clavis::qLocation:
        return LocationName(id);
    case Clavis::qInstrParam:
        return InstrumentParamName(id);
    case Clavis::qSignal:
        return ApplicationSignalName(id);
    default:
        return nullptr;
    }
}

UniqueTree const& CQtParamInstance::IdNameMap(unsigned int element) const {
    switch (element) {
    case Clavis::qInstrument:
        return Instrument();
    case Clavis::qChannel:
        return Channel();
    case Clavis::qLocation:
        return Location();
    case Clavis::qSignal:
        return ApplicationSignal();
    default:
        return Mode();
    }
}
