"""The tables of a parameter file: their columns in line order, one table a line.

A line reads

    table | key columns | row columns | instrument class or blank | what the table holds

and a column reads  name[:type][>table][?]  with the types int (if none is told), uint, int64, float, double and text.
`>table` names the table whose ids the column holds, and a trailing `?` allows -1 there (none, or any).
Columns whose use is the host's own business are called value_N, N being their place in the row.
"""

from __future__ import annotations

import re
from dataclasses import dataclass

FULL_KEY = ("mode>TMode instrument>TInstrument channel>TChannel location>TLocation "
            "parameter>TInstrumentParam signal>TApplicationSignal")
OPEN_KEY = " ".join(column + "?" for column in FULL_KEY.split())
SOURCE = "source_instrument>TInstrument source_parameter>TInstrumentParam"
SPECTRAL = ("trigger>TTrigger? base_order_ref>TLocation? interpretation definition:text "
            "source_instrument>TInstrument? source_parameter>TInstrumentParam?")
TIME_VALUE = "trigger>TTrigger? calculation averaging:float"
BINARY = ("operation source_instrument>TInstrument source_parameter>TInstrumentParam "
          "source_instrument_2>TInstrument source_parameter_2>TInstrumentParam trigger>TTrigger?")
TREND = ("source_parameter>TInstrumentParam detection procedure_a>TLearnProcedures? procedure_b>TLearnProcedures? "
         "offset:float slope:float")

LINES = f"""
TMode               | mode | name:text | | Test steps.
TChannel            | channel | name:text | | Channels: how a signal is resampled before it is analysed.
TLocation           | location | name:text | | Objects: rotors, gears, order sources and measuring places share one range of ids.
TInstrument         | instrument | name:text | | Instruments, each with the number of its class.
TInstrumentParam    | parameter | instrument>TInstrument name:text value_3 value_4:uint value_5:uint | | Instrument parameters: what is measured, and with which instrument.
TPhysMode           | physical_mode | name:text | | Physical modes: the states of the gear change. All rotor tables go by them.
TResamplingGroup    | job | name:text | | Resampling jobs.
TProcessingUnit     | set | name:text | | Resampling sets.
TSensorGroup        | group | name:text | | Sensor groups.
TTrigger            | trigger | name:text value_2 | | Triggers.
TApplicationSignal  | signal | name:text | | Application signals: sensors and process values.
TSignalUnit         | unit | name:text | | Signal units.
TAliasType          | type | name:text | | Gearbox types that this file serves.
TAliasBench         | bench | name:text | | Test benches that run this file.
TModeProperty       | mode>TMode | physical_mode>TPhysMode? flags:uint value_3 value_4 | | Physical mode and flags of each test step. Flag 1024 hides a step from the operator.
TModeTranslate      | name:text | mode>TMode | | Names by which the bench control asks for test steps.
TChannelProperty    | channel>TChannel | flags:uint value_2 | | Channel flags: 1 synchronous, 2 mix, 4 fixed.
TChannelInheritance | channel>TChannel mode>TMode? | parent>TChannel | | From which channel a channel takes its flags; mode -1 stands for every step without a row of its own.
TLocationProperty   | location>TLocation | flags value_2 value_3 | | Location flags: with 4 the place is shown in the channel's stead.
TRotorSpeed         | physical_mode>TPhysMode rotor>TLocation | ratio:double numerator denominator | | Speed of each rotor for one turn of the input shaft; a minus means that it turns against its forward sense.
TBaseOrder          | gear>TLocation | base_order:float | | Events in one turn of the gear's rotor: teeth, or rolling elements passing.
TGearDiameter       | gear>TLocation | diameter:float | | Pitch diameter in mm, at the shaft distance as built.
TVirtual2PhysGear   | physical_mode>TPhysMode gear>TLocation | physical_gear>TLocation | | Which wheel stands behind 'engaged gear' in each physical mode.
TSpeedSource        | speed_source>TLocation | signal>TApplicationSignal | | Rotors with a speed pick-up, and the signal of it.
TRotorSpeedSource   | physical_mode>TPhysMode rotor>TLocation | speed_source>TSpeedSource | | The speed pick-up that drives the analysis of a rotor.
TRotorSpeedReference | physical_mode>TPhysMode rotor>TLocation | speed_source>TSpeedSource | | The speed pick-up to fall back on.
TOrderSource2Rotor  | order_source>TLocation physical_mode>TPhysMode | rotor>TLocation | | On which rotor a wheel or a bearing race makes its orders: a loose wheel becomes one with its shaft when engaged.
TTEMeasurement      | measurement | name:text value_2 value_3 value_4 value_5 value_6 value_7 | | Transmission error measurements.
TTEOperation        | operation | value_1 value_2 | | Operations on transmission error measurements.
TSensorGroupList    | group>TSensorGroup | value_1 value_2 | | Members of the sensor groups, one row for each member.
TResamplingM        | job>TResamplingGroup set>TProcessingUnit | value_1 value_2 value_3 value_4:uint value_5:uint value_6:float value_7 value_8:float value_9 | | Settings of each resampling job in each set.
TAppSignalProperty  | signal>TApplicationSignal | type unit:text value_3:float unit_code unit_prefix | | Type (4 is the time signal) and unit of each application signal.
TTpSensorConfig     | configuration | name:text | | Sensor configurations.
TTpSensorConfigProperty | configuration>TTpSensorConfig bench>TAliasBench signal>TApplicationSignal | value_1 | | Input of each sensor in each configuration and bench.
TSignalDispatch     | signal>TApplicationSignal | value_1 | | Dispatching of the signals.
TTriggerParam       | mode>TMode trigger>TTrigger dimension | kind value_2:uint start:float stop:float step:float value_6:float value_7 value_8 value_9 value_10 | | Field of each trigger in each test step. Kind 1 holds still, 2 rises, 3 falls.
TAutoModeParamOrder | order | signal>TApplicationSignal | | Order of the parameters of the virtual-mode grid.
TAutoModeParam      | signal>TApplicationSignal | start:float stop:float step:float value_4:float value_5:float value_6:float state value_8:float value_9:uint | | The virtual-mode grid: range and width of its intervals.
TAutoModeSequence   | position | value_1 | | Sequence in which the bench walks through the test steps.
TIpParamAndStore    | {FULL_KEY} | value_1 value_2:float value_3:float value_4 value_5:float | | What is measured and stored: one row for each complete key.
TIpSpectralValue    | parameter>TInstrumentParam | {SPECTRAL} | 1001 | Spectral values: level of an order band.
TIpSpectralTrack    | parameter>TInstrumentParam | {SPECTRAL} | 2001 | Spectral tracks: level of an order band over the trigger.
TIpResidualTrack    | parameter>TInstrumentParam | {SPECTRAL} | 2007 | Residual tracks: what is left when the bands are taken out.
TIpCrest            | parameter>TInstrumentParam | {TIME_VALUE} | 1002 | Crest factors.
TIpRms              | parameter>TInstrumentParam | {TIME_VALUE} | 1003 | RMS values.
TIpPeak             | parameter>TInstrumentParam | {TIME_VALUE} | 1004 | Peak values.
TIpKurtosis         | parameter>TInstrumentParam | {TIME_VALUE} | 1005 | Kurtosis values.
TIpHoelder          | parameter>TInstrumentParam | {TIME_VALUE} power | 1008 | Hoelder means.
TIpRatioTest        | parameter>TInstrumentParam | trigger>TTrigger? | 1050 | Ratio tests: the gear engaged is the gear asked for.
TIpDiffTest         | parameter>TInstrumentParam | trigger>TTrigger? | 1051 | Difference tests.
TIpSP               | parameter>TInstrumentParam | shifting_evaluation | 1060 | Shifting evaluations.
TIpSgArea           | parameter>TInstrumentParam | calculation definition:text {SOURCE} value_5:float trigger>TTrigger? accumulation | 1700 | Values of an area of a spectrogram.
TIpCrestTrack       | parameter>TInstrumentParam | trigger>TTrigger? calculation | 2002 | Crest factor tracks.
TIpRmsTrack         | parameter>TInstrumentParam | trigger>TTrigger? calculation | 2003 | RMS tracks.
TIpPeakTrack        | parameter>TInstrumentParam | trigger>TTrigger? calculation | 2004 | Peak tracks.
TIpKurtosisTrack    | parameter>TInstrumentParam | trigger>TTrigger? calculation | 2005 | Kurtosis tracks.
TIpHoelderTrack     | parameter>TInstrumentParam | value_1 trigger>TTrigger? value_3 | 2008 | Hoelder mean tracks.
TIpModulationTrack  | parameter>TInstrumentParam | trigger>TTrigger? calculation | 2006 | Modulation tracks.
TIpVarAreaTrack     | parameter>TInstrumentParam | calculation trigger>TTrigger? source_location>TLocation {SOURCE} polygon>TIpPolygon polygon_2>TIpPolygon | 2012 | Tracks of a spectrogram area between two polygons.
TIpSgAreaTrack      | parameter>TInstrumentParam | trigger>TTrigger? calculation definition:text {SOURCE} | 2070 | Tracks of a spectrogram area.
TIpCatCurve         | parameter>TInstrumentParam | calculation value_2 | 2100 | Category curves.
TIpSpectrum         | parameter>TInstrumentParam | trigger>TTrigger? accumulation decay:float value_4 | 2500 | Spectra. Accumulation: 20 maximum, 21 average, 22 last, 0 none.
TIpModSpectrogram   | parameter>TInstrumentParam | trigger>TTrigger? accumulation decay:float value_4 | 3700 | Modulation spectrograms. Accumulation as with spectra.
TIpTimeSignal       | parameter>TInstrumentParam | trigger>TTrigger? | 2600 | Time signals.
TIpSgSection        | parameter>TInstrumentParam | calculation definition:text {SOURCE} trigger>TTrigger? accumulation | 2700 | Sections through a spectrogram. Accumulation as with spectra.
TIpSpectralDev      | parameter>TInstrumentParam | source_parameter>TInstrumentParam detection averaging:float deviation:float x_start:float x_end:float | 2800 | Deviations of a spectrogram from its mean.
TIpCepstrum         | parameter>TInstrumentParam | trigger>TTrigger? | 2900 | Cepstra.
TIpSpectrogram      | parameter>TInstrumentParam | trigger>TTrigger? | 3500 | Spectrograms.
TIpSFTrack          | parameter>TInstrumentParam | trigger>TTrigger? | 5000 | Shift force tracks.
TIpSFTimeSignal     | parameter>TInstrumentParam | trigger>TTrigger? | 5001 | Shift force time signals.
TIpTrackInterval    | parameter>TInstrumentParam | calculation {SOURCE} x_start:float x_end:float special | 10000 | Values of a track inside an interval.
TIpCurveMax         | parameter>TInstrumentParam | value_1 source_parameter>TInstrumentParam | 10100 | Maxima of a curve.
TIpCurvePolygon     | parameter>TInstrumentParam | interpretation value_2 source_parameter>TInstrumentParam polygon>TIpPolygon offset:float deviation:float | 10101 | A curve held against a polygon.
TIpSvCurve          | parameter>TInstrumentParam | calculation source_parameter>TInstrumentParam | 10102 | Single values of a curve.
TIpSvTrend          | parameter>TInstrumentParam | {TREND} | 10202 | Trends of single values.
TIpTrackTransform   | parameter>TInstrumentParam | transformation {SOURCE} trigger>TTrigger? | 11000 | Transformed tracks.
TIpCurveTrend       | parameter>TInstrumentParam | {TREND} | 12202 | Trends of curves.
TIpCurveTrackTrend  | parameter>TInstrumentParam | {TREND} | 13202 | Trends of curves over a track.
TIpTrackRegression  | parameter>TInstrumentParam | source_parameter>TInstrumentParam time link source transform show_mode | 16000 | Regressions through a track.
TIpCvValue          | parameter>TInstrumentParam | trigger>TTrigger? calculation | 20000 | Control values: process values that the bench has to keep.
TIpSvBinOp          | parameter>TInstrumentParam | {BINARY} | 10201 | Two single values made into one.
TIpTrackBinOp       | parameter>TInstrumentParam | {BINARY} | 11201 | Two tracks made into one.
TIpCvTrack          | parameter>TInstrumentParam | trigger>TTrigger? | 21000 | Control value tracks.
TIpSignalGuard      | parameter>TInstrumentParam | calculation value_2 | 3000 | Signal guards: is the sensor alive.
TIpTrackPolygon     | {OPEN_KEY} | polygon>TIpPolygon? value_2 interpretation source_parameter>TInstrumentParam offset:float mode x_start:float x_end:float y_start:float y_end:float | 10001 | Tracks held against a polygon (mode 0) or a line between two points (mode 1); -1 in the key is any.
TIpRunTest          | parameter>TInstrumentParam | value_1 | 9000 | Run tests: did the test step come to its end.
TLimSValue          | {FULL_KEY} | value_1 value_2:float value_3:float | | Limits of single values.
TLimCValue          | {FULL_KEY} | value_1 value_2 value_3 value_4 value_5 | | Limits of curves.
TIpPolygon          | polygon | value_1 name:text | | Polygons.
TIpPolygonValue     | polygon>TIpPolygon x:float | y:float | | Points of the polygons.
TIpPolygonProperty  | polygon>TIpPolygon | value_1 value_2 | | Properties of the polygons.
TLimArea            | {FULL_KEY} | value_1 value_2:float value_3:float | | Limits of areas.
TRelativeLimit      | {OPEN_KEY} | value_1:float value_2:float | | Limits relative to the learnt level; -1 in the key is any.
TErrorCode          | code | value_1 text:text value_3 value_4 value_5 | | Error codes that go to the production line.
TExternalError      | error | value_1 value_2 value_3 value_4 value_5 value_6 value_7 | | Errors that the bench control reports to the analysis.
TErrorGroup         | group | result value_2 text:text text_2:text | | Error groups and the result that each leads to, 0 to 3.
TShadowGroupProperty | group | value_1 | | Properties of the shadow groups.
TRetype             | type>TAliasType | tested_as>TAliasType | | Types that are tested with the parameters of another one.
TClavisUserNames    | instrument>TInstrument channel>TChannel signal>TApplicationSignal location>TLocation parameter>TInstrumentParam | text:text value_2 value_3 | | Names of a customer's own for single results.
TAuxStrings         | name:text | text:text | | Texts for reports and screens.
TLearnProcedures    | procedure | value_1 value_2:uint value_3:float name:text value_5:float | | Learn procedures.
TIpLearnParams      | {FULL_KEY} | value_1 value_2:int64 value_3:uint value_4:int64 | | Learn state of each limit.
TExternalName       | parameter>TInstrumentParam | text:text | 9500 | Names under which other systems send values.
"""

WITH_REPEATED_KEYS = {"TSensorGroupList"}


@dataclass(frozen=True)
class Column:
    name: str
    type: str
    refers_to: str | None
    may_be_none: bool


@dataclass(frozen=True)
class Table:
    name: str
    key: tuple[Column, ...]
    row: tuple[Column, ...]
    instrument: int | None
    title: str

    @property
    def tag(self) -> str:
        return f"<{self.name}>"

    @property
    def columns(self) -> tuple[Column, ...]:
        return self.key + self.row

    @property
    def keys_are_unique(self) -> bool:
        return self.name not in WITH_REPEATED_KEYS


def _column(text: str) -> Column:
    match = re.fullmatch(r"(\w+)(?::(\w+))?(?:>(\w+))?(\?)?", text)
    if match is None:
        raise ValueError(f"column {text!r} does not read as name:type>table?")
    name, kind, refers_to, may_be_none = match.groups()
    return Column(name, kind or "int", refers_to, may_be_none is not None)


def _table(line: str) -> Table:
    name, key, row, instrument, title = (part.strip() for part in line.split("|"))
    return Table(name, tuple(map(_column, key.split())), tuple(map(_column, row.split())),
                 int(instrument) if instrument else None, title)


TABLES: dict[str, Table] = {table.name: table for table in map(_table, LINES.strip().splitlines())}
