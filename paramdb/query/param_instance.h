// The query object: a handle onto the parameter data, through which a host loads it and asks it everything.
//
//     CParameterLake::Lake().read(L"gearbox.lake");
//     CQtParamInstance parameters;
//     if (!parameters.ReadTablesFromCandidateLake())
//         ...  // the reason has been given to PrWin::Output
//
// A handle has no state of its own and is copied freely. Queries are const and may run in several threads at
// once; a load, a clear or a purge must run alone.
#pragma once

#include <paramdb/distillery/param_distillery.h>
#include <paramdb/keys/q_clavis.h>
#include <paramdb/keys/text_buffer.h>
#include <paramdb/platform/core/export.h>
#include <paramdb/platform/signal/clavis.h>
#include <paramdb/platform/signal/measuring_unit.h>

#include <bitset>
#include <string>

class CComboBox;

class PARAMDB_API CQtParamInstance {
public:
    // A handle onto this distillery, which is not owned; null stands for the one of the process.
    CQtParamInstance(CQtParamDistillery* distillery = nullptr);

    // Whether a load has gone through since the start or the last CQtParamServer::Clear. A failed load does
    // not lower it.
    bool Initialized() const { return m_distillery->Initialized(); }

    // The whole load, from the process-wide table set if that holds a table and else from the process-wide
    // lake. See CQtParamDistillery for what a failure leaves. Throws std::bad_variant_access if a version
    // cell of the table set holds no whole number.
    bool ReadTablesFromCandidateLake() { return m_distillery->ReadTablesFromCandidateLake(); }

    // Has every later load tell how far it has come: the step ("read" or "derive"), what is done of it and
    // the whole, a few times each second on the thread that loads. An empty function for none, as at first.
    void SetLoadProgress(paramdb::LoadProgress progress) {
        m_distillery->SetLoadProgress(std::move(progress));
    }

    // Empties the tables and the named texts. The initialized flag and the derived information stay.
    void PurgeTables() { m_distillery->PurgeTables(); }

    // Outputs limit + 1 rows of each table and of the derived ones behind them at most, or all of them if the
    // limit is 0 (category 8, style 1).
    void DumpTables(int limit) const;

    // Takes the auto mode parameters over into their two tables and writes every table to its local sea,
    // where it has one.
    void WriteTablesToLocalSeas() const;

    // Computes the layout of virtual mode ids from the auto mode parameters as they are now. True if a bit is
    // left beside the extension. Ids made before lose their meaning when the layout changes.
    bool UpdateLocalSeas();

    // Replaces the pieces of the names of virtual modes.
    void SetAutoModeNaming(CQtParamDistillery::AutoModeNaming const& naming);

    // Copies of the four named texts of the last load; empty before it and where its source had none.
    CString LearnFileName() const { return m_distillery->LearnFileName(); }
    CString CalibFileName() const { return m_distillery->CalibFileName(); }
    CString BaseType() const { return m_distillery->BaseType(); }
    CString AliasType() const { return m_distillery->AliasType(); }

    // The tables, each under the name of its tag without the leading T, unless the catalogue names it
    // otherwise. A family of tables is reached by instrument class: IpSvOfSpec().at(1001). Rows are valid
    // until the table is cleared or read again.
#define PARAMDB_NAME_TABLE(place, accessor, tag, key_column)                                                 \
    auto const& accessor() const {                                                                           \
        return m_distillery->Tables().accessor;                                                              \
    }
#define PARAMDB_TABLE(place, accessor, tag, container, key, row, key_columns, row_columns)                   \
    auto const& accessor() const {                                                                           \
        return m_distillery->Tables().accessor;                                                              \
    }
#define PARAMDB_CLASS_MAP(accessor, row)                                                                     \
    auto const& accessor() const {                                                                           \
        return m_distillery->Tables().accessor;                                                              \
    }
#include <paramdb/tables/catalogue.def>

    // All tables in the order of registration, with their descriptions and their rows whatever their classes.
    std::span<paramdb::CatalogueEntry const> Entries() const {
        return m_distillery->Entries();
    }

    // Tables to which a host may add rows of its own.
    auto& AppSignalProperty() {
        return m_distillery->Tables().AppSignalProperty;
    }
    auto& ErrorCode() {
        return m_distillery->Tables().ErrorCode;
    }
    auto& SeverityProperty() {
        return m_distillery->Tables().SeverityProperty;
    }
    auto& SignalDispatch() {
        return m_distillery->Tables().SignalDispatch;
    }
    auto& TriggerParam() {
        return m_distillery->Tables().TriggerParam;
    }

    // Names and ids (names.cpp). -1 is the id of nothing and the answer to a name that is not there; an id
    // that is not there has an empty name. Names are compared by code unit. A name of 200 or more characters
    // is reported (TableType::strcopy) and looked up by its first 199. Arguments must not be null. A returned
    // name is valid until its table is cleared or read again, a generated one until the next such call of the
    // same thread. Nothing here allocates.
#define PARAMDB_NAMES(kind, table)                                                                           \
    int kind##Id(wchar_t const* name) const {                                                                \
        return m_distillery->Tables().table.Idx(name);                                                       \
    }                                                                                                        \
    wchar_t const* kind##Name(int id) const {                                                                \
        return m_distillery->Tables().table.Name(id);                                                        \
    }
    PARAMDB_NAMES(TypeAlias, TypeNames)
    PARAMDB_NAMES(BenchAlias, BenchNames)
    PARAMDB_NAMES(Channel, Channel)
    PARAMDB_NAMES(Location, Location)
    PARAMDB_NAMES(PhysMode, PhysMode)
    PARAMDB_NAMES(ResamplingJob, ResamplingJob)
    PARAMDB_NAMES(ResamplingSet, ResamplingSet)
    PARAMDB_NAMES(SensorGroup, SensorGroup)
    PARAMDB_NAMES(ApplicationSignal, ApplicationSignal)
#undef PARAMDB_NAMES
    int ModeId(wchar_t const* name) const;
    int InstrumentId(wchar_t const* name) const;
    // The name of a mode; of a virtual mode that is no row of <TMode> a generated one of 499 characters at
    // most. Empty for -1.
    wchar_t const* ModeName(int mode) const;
    // The name of an instrument, "(Instr. 17)" for one without; never empty.
    wchar_t const* InstrumentName(int instrument) const;

    // Whether a row has that id. A virtual mode is valid once it has been added.
    bool IsValidMode(int id) const;
    bool IsValidPhysMode(int id) const;
    bool IsValidInstrument(int id) const;
    bool IsValidChannel(int id) const;
    bool IsValidLocation(int id) const;
    bool IsValidApplicationSignal(int id) const;

    // The physical mode of a mode; -1 for -1 and without a row.
    int PhysModeId(int mode) const {
        return Modes().PhysicalMode(mode);
    }

    // The parameter of that name under that instrument, the one of the lowest id; -1 for the instrument is
    // none and no wildcard. Looks at all parameters.
    int InstrumentParamId(wchar_t const* name, int instrument) const;
    wchar_t const* InstrumentParamName(int parameter) const;
    int InstrumentParameterToInstrument(int parameter) const;

    // The trigger of that name, the one of the lowest id. Looks at all triggers.
    int TriggerId(wchar_t const* name) const;
    wchar_t const* TriggerName(int trigger) const;
    // The trigger of an instrument parameter, or -1.
    int TriggerId(int parameter) const;

    // The name of a key element, numbered as Clavis::qOrder; null for any other number.
    wchar_t const* ClavisElementName(int element, int id) const;
    // The names of a key element by id. Instrument parameters have no such tree: they and any other number
    // give that of the modes.
    UniqueTree const& IdNameMap(unsigned int element) const;

    // Kinds of instruments, channels, locations and signals (classification.cpp).

    // What an instrument yields: 1 a single value, 2 a track, 3 a spectrum, 4 a kind of its own, 5 a track of
    // the second kind, 6 data in two dimensions, -1 nothing; 0 for a number that is no instrument's.
    static int ResultType(int instrument);
    bool IsSingleValueInstrument(int instrument) const;
    bool IsTrackInstrument(int instrument) const;
    bool IsSpectrumInstrument(int instrument) const;
    bool Is2dDataInstrument(int instrument) const;
    // The track instrument that belongs to one of single values and back; -1 for any other. 1070 and 1700
    // share the track 2070, which leads back to 1700.
    static int ScalarInstrumentToTrackInstrument(int instrument);
    static int TrackInstrumentToScalarInstrument(int instrument);
    // The flags of a channel and of a location; 0 without a row.
    enum channel_flag_t : unsigned int {
        sync_channel = 1,
        mix_channel = 2,
        fix_channel = 4,
    };
    unsigned int ChannelResamplingType(int channel) const;
    bool ChannelIsSync(int channel) const;
    bool ChannelIsMix(int channel) const;
    bool ChannelIsFix(int channel) const;
    unsigned int LocationPropertyFlag(int location) const;
    // The unit of an application signal, none without a row. Brings the unit text of the row up to date with
    // its code, so that nobody may be reading that text.
    CMeasuringUnit ApplicationSignalUnit(int signal);
    // Whether the mix channel is measured at more than one location.
    bool IpMultipleMixLocs() const;
    // Fills a combo with the types by id, their ids as data, and selects the given one, or, if that is null
    // or empty, the one selected before; none if no type has that name. Without any type the name stands
    // alone in the combo, without an id. The result is the number of types (type_combo.cpp).
    int FillTypeNameCombo(CComboBox& combo, wchar_t const* select) const;
    // Replaces the mode of a key by its base mode.
    void BaseModeClavis(QClavis& key) const;
    QClavis BaseModeClavis(QClavis const& key) const;

    // Texts for keys (key_text.cpp). Names and ids as above; an element of -1 reads "(Nil)".

    // When an element shows its id, as "[17]" behind its name.
    enum show_id_t {
        show_id_never = 0,
        show_id_always = 1,
        show_id_if_unnamed = 2,
    };
    // The elements that the mask selects, joined by " / ". Without a rule ids show always or if unnamed,
    // depending on ShowIdsInDialogs.
    CString FormatClavisText(SClavis const& key, std::bitset<Clavis::ElementCount> mask) const;
    CString FormatClavisText(CClavis const& key, std::bitset<Clavis::ElementCount> mask) const;
    CString FormatClavisText(QClavis const& key, std::bitset<Clavis::ElementCount> mask) const;
    CString FormatClavisText(SClavis const& key, show_id_t rule,
                             std::bitset<Clavis::ElementCount> mask) const;
    CString FormatClavisText(CClavis const& key, show_id_t rule,
                             std::bitset<Clavis::ElementCount> mask) const;
    CString FormatClavisText(QClavis const& key, show_id_t rule,
                             std::bitset<Clavis::ElementCount> mask) const;
    // Mode, instrument with parameter, location with channel, and signal, with the separator between blanks
    // between them, cut to 499 characters. `both` as in FormatLocaChanText. The separator must not be null.
    CString FormatClavisTextNice(CClavis const& key, bool both, wchar_t const* separator) const;
    CString FormatClavisTextNice(QClavis const& key, bool both, wchar_t const* separator) const;
    // The instrument, and the parameter too if the instrument has several. An instrument of -1 is that of the
    // parameter. The result is the text of `out`.
    wchar_t const* FormatInstrParamText(CString& out, int instrument, int parameter) const;
    wchar_t const* FormatInstrParamText(CString& out, QClavis const& key) const;
    // A fixed channel by its location, a mix channel by itself and, where there are several or `both` is set,
    // its location, a synchronous channel by both. The result is the text of `out`.
    wchar_t const* FormatLocaChanText(CString& out, int location, int channel, bool both) const;
    wchar_t const* FormatLocaChanText(CString& out, QClavis const& key, bool both) const;

    // Virtual modes (modes.cpp). A virtual mode is the id of a base mode together with an extension, a
    // position in the grid of the auto mode parameters. Every query that takes a mode reduces it to its base
    // mode first, unless it says otherwise. -1 stands for no mode.

    // The parameters of the grid by order key. After a change call UpdateLocalSeas.
    CAutoModeParamMap& AutoModeParams() {
        return Modes().Params();
    }
    CAutoModeParamMap const& AutoModeParams() const {
        return Modes().Params();
    }

    // The base mode and the extension of a virtual mode; -1 for -1.
    int VirtMode2BaseMode(int virtual_mode) const {
        return Modes().BaseMode(virtual_mode);
    }
    int VirtModeExtension(int virtual_mode) const {
        return Modes().Extension(virtual_mode);
    }
    // Packs an extension from one interval index for each parameter in key order, -1 for none, and, unless
    // null, one state 0 to 3 for each parameter, which is left out for those without state. 0 without
    // parameters.
    int VirtModeExtension(int const* intervals, int const* states) const {
        return Modes().Extension(intervals, states);
    }
    // The id of a mode with an extension; the mode itself if either is -1.
    int VirtModeGenerateId(int mode, int extension) const {
        return Modes().GenerateId(mode, extension);
    }
    // How many intervals the range of a parameter has; -1 for an empty range or a width of 0.
    int VirtModeIntervals(CVAutoModeParams const& params) const {
        return CQtModeInfo::Intervals(params);
    }
    // The middle of an interval, counted from 0, rounded to a whole number.
    float VirtModePosition(CVAutoModeParams const& params, unsigned int index) const {
        return CQtModeInfo::Position(params, index);
    }
    // Whether an id has an extension, and whether every parameter in it has an interval.
    bool IsVirtualMode(int mode) const {
        return Modes().IsVirtual(mode);
    }
    bool IsValidVirtualMode(int mode) const {
        return Modes().IsValidVirtual(mode);
    }

    // Whether a mode is not to be shown. The mode is not reduced: a virtual mode is never hidden.
    bool ModeIsHidden(int mode) const;
    // Whether a mode has the flag; false without a row.
    bool ModeIsOfType(int mode, QVModeProps::modeFlag flag) const;
    static bool ModeIsOfType(QVModeProps const& properties, QVModeProps::modeFlag flag);

    // The generated name of a virtual mode; empty for any other and without physical mode.
    CString VirtModeName(int virtual_mode) const {
        return Modes().Name(virtual_mode);
    }
    // The part of it that names physical mode and states.
    CString VirtModeBaseName(int extension, int physical_mode) const {
        return Modes().BaseName(extension, physical_mode);
    }
    // A value of a parameter with its unit, `precision` digits behind the point; empty if its signal has no
    // row.
    CString VirtModeNameFragment(CAutoModeParamMap::const_iterator parameter, float value,
                                 unsigned int precision) const {
        return Modes().NameFragment(parameter, value, precision);
    }

    // Adds a virtual mode to <TMode>, under its generated name or the given one. False if it is not virtual;
    // the second also if it is there already, where the first keeps the row and answers true.
    bool AddVMode(int virtual_mode);
    bool AddVModeName(int virtual_mode, wchar_t const* name);

    // Rotors and gears (rotors.cpp). A rotor is also known by its gears and order sources. -1 as an argument
    // stands for none; a miss is what each says.

    // The physical gear of a gear; the gear itself without a row, -1 for an argument of -1.
    int PhysicalGear(int mode, int gear) const;
    // The rotor of an order source; the source itself without a row, 0 for an argument of -1.
    int OrderSource2Rotor(int mode, int source) const;
    // Events in one turn of a gear, and its diameter; 0.0 without a row.
    float BaseOrder(int mode, int gear) const;
    float GearDiameter(int mode, int gear) const;
    // The speed source of a rotor, with `reference` also the one to fall back on; -1 on a miss.
    int RotorSpeedSource(int mode, int rotor, bool reference) const;
    // The application signal of that speed source, or -1.
    int RotorSpeedSourceAppId(int mode, int rotor, bool reference) const;
    // The same for a number that is a rotor already.
    int SpeedInfoOfRotor(int mode, int rotor, bool reference) const;
    // The first speed source with that application signal, or -1.
    int RotorSpeedAppIdSource(int signal) const;
    // The speed of rotor b for one turn of rotor a; 0.0 on a miss or if a stands still.
    double FrequencyRatioToGeneratingRotor(int mode, int a, int b) const;
    numeric::CRatio RotorSpeedRatio(int mode, int a, int b) const;
    // The speed of a rotor for one turn of its speed source; 0.0 on a miss.
    double RotorFrequencyRelativeToSpeedSourceRotor(int mode, int rotor, bool reference) const;
    // The order sources that a channel follows on a rotor: key physical mode, speed source, rotor, serial
    // number; value order source. Those of the rotor in a synchronous channel, of the whole speed source in a
    // mixed one, else none.
    CQtRotorInfo::Range OrderSourceRange(int mode, int channel, int rotor, bool reference) const;

    // Channels, intervals, polygons (derived.cpp).

    // The channel at the end of the line of parents, and the flags gathered on it; 0 without an entry.
    int BaseChannel(int mode, int channel) const;
    int ChannelFlags(int mode, int channel) const;
    // The channel that a channel inherits from, or -1.
    int ParentChannel(int mode, int channel) const;
    // The order definition of a spectral value or track; null on a miss.
    wchar_t const* SpecIntervalDefinition(unsigned int parameter) const;
    // The spectral intervals of an instrument parameter.
    CQtSpecIntervalStore::Range_t SpecIntervalRange(unsigned int parameter) const;
    // The polygons, and the entry of each concrete key.
    CGrexInfo const& GroupInfo() const {
        return m_distillery->DerivedInfo().GroupInfo();
    }

    // What the settings of an instrument parameter are, as lines to show (display_text.cpp), in the language
    // in force. A label or a word that the string table lacks is empty. Not const, as the string table of a
    // host may load on demand.

    // Each setting as prefix, line, suffix; prefix and suffix once for a parameter without row or settings.
    // What goes beyond 999 characters is dropped. Throws std::out_of_range("invalid map<K, T> key") for a
    // parameter of the instrument 2900, whose table stands in another family than it is looked for.
    CString IpDisplayText(int parameter, CString const& prefix, CString const& suffix);
    // "label: value", with " (#index)" behind it unless the index is negative. The label is a string id.
    CString IpParamDisplayText(unsigned int label, std::wstring const& value, int index);
    // "label: word (#value)"; label and word are string ids.
    CString IpEnumParamDisplayText(unsigned int label, int value, unsigned int text);
    // The same for the accumulation of a spectrum; without a number for 0.
    CString IpSpectrumAccumulationType(ParamDb::time_domain_accumulation_t accumulation);

    // The switch that makes names show their ids. It lives in the message sea; false while nobody has set it.
    static void ShowIdsInDialogs(bool show);
    static bool ShowIdsInDialogs();

    // The application signal that holds the time signal, as the last load found it; -1 before and for none.
    static int TimeSignalId() {
        return CQtParamDistillery::TimeSignalId();
    }

private:
    // Room for a nice text; two names always fit.
    using KeyText = CTextBuffer<500>;
    void AppendInstrParam(KeyText& text, int instrument, int parameter) const;
    void AppendLocaChan(KeyText& text, int location, int channel, bool both) const;

    CQtModeInfo& Modes() {
        return m_distillery->DerivedInfo().ModeInfo();
    }
    CQtModeInfo const& Modes() const {
        return m_distillery->DerivedInfo().ModeInfo();
    }
    CQtRotorTables const& Rotors() const {
        return m_distillery->DerivedInfo().RotorTables();
    }

    CQtParamDistillery* m_distillery;
};
