#include <paramdb/controls/element_values.h>

namespace {

// The field of a row that a mask is compared with; 0 without a row.
template <class Table, class Field>
unsigned int FlagsIn(Table const& table, int id, Field const& field) {
    auto const row = table.find(id);
    return row != table.end() ? field(row->second) : 0;
}

} // namespace

namespace paramdb {

bool IsLeftOut(CQtParamInstance const& parameters, Clavis::qOrder element, int id, bool hide_virtual_modes) {
    return element == Clavis::qMode &&
           (parameters.ModeIsHidden(id) || (hide_virtual_modes && parameters.IsVirtualMode(id)));
}

bool PassesFilter(CQtParamInstance const& parameters, Clavis::qOrder element, int id, unsigned int mask) {
    if (mask == 0)
        return true;
    switch (element) {
    case Clavis::qMode:
        return (FlagsIn(parameters.ModeProperty(), id,
                        [](QVModeProps const& row) { return row.get<"flags">(); }) &
                mask) != 0;
    case Clavis::qInstrument: // bit by bit: a mask of 1 passes the kinds 3 and 5 too
        return (static_cast<unsigned int>(CQtParamInstance::ResultType(id)) & mask) != 0;
    case Clavis::qLocation:
        return (parameters.LocationPropertyFlag(id) & mask) != 0;
    case Clavis::qSignal:
        return (FlagsIn(parameters.AppSignalProperty(), id,
                        [](QVAppSignalProperty const& row) {
                            return static_cast<unsigned int>(row.get<"signal_type">());
                        }) &
                mask) != 0;
    default:
        return true;
    }
}

CString UnknownValueText(Clavis::qOrder element, int id) {
    CString text;
    text.Format(L"(%s %d)", Clavis::ElementName(element, 1).GetString(), id);
    return text;
}

} // namespace paramdb
