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

#include <string>

class CQtParamInstance {
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

    // The name of a mode; of a virtual mode that is no row of <TMode> a generated one of 499 characters at
    // most, valid until the next such call of the same thread. Empty for -1.
    wchar_t const* ModeName(int mode) const;
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

    // The physical mode of a mode; -1 for -1 and without a row.
    int PhysModeId(int mode) const {
        return Modes().PhysicalMode(mode);
    }

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

    // Channels, triggers, intervals, polygons (derived.cpp).

    // The channel at the end of the line of parents, and the flags gathered on it; 0 without an entry.
    int BaseChannel(int mode, int channel) const;
    int ChannelFlags(int mode, int channel) const;
    // The channel that a channel inherits from, or -1.
    int ParentChannel(int mode, int channel) const;
    // The trigger of an instrument parameter, or -1.
    int TriggerId(int parameter) const;
    // The order definition of a spectral value or track; null on a miss.
    wchar_t const* SpecIntervalDefinition(unsigned int parameter) const;
    // The spectral intervals of an instrument parameter.
    CQtSpecIntervalStore::Range_t SpecIntervalRange(unsigned int parameter) const;
    // The polygons, and the entry of each concrete key.
    CGrexInfo const& GroupInfo() const {
        return m_distillery->DerivedInfo().GroupInfo();
    }

    // The switch that makes names show their ids. It lives in the message sea; false while nobody has set it.
    static void ShowIdsInDialogs(bool show);
    static bool ShowIdsInDialogs();

    // The application signal that holds the time signal, as the last load found it; -1 before and for none.
    static int TimeSignalId() {
        return CQtParamDistillery::TimeSignalId();
    }

private:
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
