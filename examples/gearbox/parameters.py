"""The instrument parameters: what is measured where, and how it is calculated."""

from __future__ import annotations

from collections.abc import Iterable, Sequence
from itertools import product

import bench
import drive_train as train
from bench import (ACC_DIFFERENTIAL, ACC_INPUT, ACC_OUTPUT, FIELD_TRIGGER, FINE_SPEED_TRIGGER, FIX, FIX_ENVELOPE,
                   MICROPHONE, MIX_ENGAGED, RAW, SPEED_TRIGGER, SYNC, SYNC_DIFFERENTIAL, SYNC_OUTPUT, TIME_TRIGGER)
from catalogue import TABLES
from drive_train import DriveTrain
from lake_text import Cell, Rows, Tables

INSTRUMENTS = {
    1001: "Spectral value", 1002: "Crest", 1003: "RMS", 1004: "Peak", 1005: "Kurtosis", 1008: "Hölder mean",
    1050: "Ratio test", 1051: "Difference test", 1060: "Shifting evaluation", 1700: "Spectrogram area",
    2001: "Spectral track", 2002: "Crest track", 2003: "RMS track", 2004: "Peak track", 2005: "Kurtosis track",
    2006: "Modulation track", 2007: "Residual track", 2008: "Hölder mean track", 2012: "Variable area track",
    2070: "Spectrogram area track", 2100: "Category curve", 2500: "Spectrum", 2600: "Time signal",
    2700: "Spectrogram section", 2800: "Spectral deviation", 2900: "Cepstrum", 3000: "Signal guard",
    3500: "Spectrogram", 3700: "Modulation spectrogram", 5000: "Shift force track", 5001: "Shift force time signal",
    9000: "Run test", 9500: "External value", 10000: "Track interval", 10001: "Track polygon",
    10100: "Curve maximum", 10101: "Curve polygon", 10102: "Curve value", 10201: "Value operation",
    10202: "Value trend", 11000: "Track transformation", 11201: "Track operation", 12202: "Curve trend",
    13202: "Curve track trend", 16000: "Track regression", 20000: "Control value", 21000: "Control value track",
}

MAXIMUM, AVERAGE, LOG_AVERAGE, POSITION = 2, 3, 4, 7         # calculations
END_MAXIMUM, END_AVERAGE, END_LAST = 20, 21, 22              # accumulations
SUBTRACT, RELATIVE_MAGNITUDE, DIVIDE = 2, 4, 7               # operations
BAND_MAXIMUM, BAND_SUM = 6, 8                                # interpretations of a band
VIBRATION, INPUT_SIDE, OUTPUT_SIDE = (ACC_INPUT, ACC_OUTPUT), (ACC_INPUT,), (ACC_OUTPUT,)
ALL_SENSORS = (ACC_INPUT, ACC_OUTPUT, ACC_DIFFERENTIAL, MICROPHONE)

# The place of a fixed channel is that of its sensor.
AT_SENSOR = -1
PLACES = {ACC_INPUT: bench.PLACE_INPUT, ACC_OUTPUT: bench.PLACE_OUTPUT, ACC_DIFFERENTIAL: bench.PLACE_DIFFERENTIAL,
          MICROPHONE: bench.PLACE_AIR, bench.SHIFT_FORCE: bench.PLACE_LEVER, bench.SHIFT_TRAVEL: bench.PLACE_LEVER}

# Spots: a channel with the object that it looks at.
Spot = tuple[int, int]
INPUT, OUTPUT = (SYNC, train.INPUT_SHAFT), (SYNC_OUTPUT, train.OUTPUT_SHAFT)
FINAL = (SYNC_DIFFERENTIAL, train.DIFFERENTIAL)
MESH = (MIX_ENGAGED, train.ENGAGED_DRIVING)
FIXED, ENVELOPE, UNTREATED = (FIX, AT_SENSOR), (FIX_ENVELOPE, AT_SENSOR), (RAW, AT_SENSOR)

BEARING_BAND = "H1-L1;H1+L1;H2-L1;H2+L1;H3-L1;H3+L1"

# Harmonics and side bands of a wheel, orders of its shaft, and bands of fixed frequency.
MESH_BANDS = (
    ("H1", "H1-L2;H1+L2", BAND_MAXIMUM), ("H2", "H2-L2;H2+L2", BAND_MAXIMUM), ("H3", "H3-L2;H3+L2", BAND_MAXIMUM),
    ("H1 side bands", "H1-M1-L1;H1-M1+L1;H1+M1-L1;H1+M1+L1", BAND_SUM),
    ("H2 side bands", "H2-M2-L1;H2-M1+L1;H2+M1-L1;H2+M2+L1", BAND_SUM),
    ("harmonics", "HX-M0.5;HX+M0.5", BAND_SUM),
    ("between H1 and H2", "H1+M2.5;H2-M2.5", BAND_SUM),
)
FINAL_BANDS = (("H1", "H1-L2;H1+L2", BAND_MAXIMUM),
               ("H1 side bands", "H1-M1-L1;H1-M1+L1;H1+M1-L1;H1+M1+L1", BAND_SUM))
SHAFT_BANDS = (("O1", "O1-L1;O1+L1", BAND_MAXIMUM), ("O2", "O2-L1;O2+L1", BAND_MAXIMUM),
               ("low orders", "O0.5;O8", BAND_SUM))
FIXED_BANDS = (("200 Hz to 2 kHz", "F200;F2000", BAND_SUM), ("2 kHz to 8 kHz", "F2000;F8000", BAND_SUM))


class Bank:
    """One bank of parameters.

    Every parameter gets its row in the table of its instrument, and a key for each test step, spot and sensor. The ids
    follow the order of the calls: a source stands before what is made from it."""

    def __init__(self, number: int, tables: Tables, all_steps: list[bench.Step]) -> None:
        self._number = number
        self._tables = tables
        self._steps = all_steps
        self._next = 1001 + number * bench.BANK_PARAMETERS
        self._id_of: dict[str, int] = {}
        self._ramps = [step.mode for step in all_steps if step.flags & (bench.IS_DRIVE | bench.IS_COAST)]
        self._drives = [step.mode for step in all_steps if step.flags & bench.IS_DRIVE]
        self._held = [step.mode for step in all_steps if step.flags & bench.IS_CONSTANT and step.physical_mode > 0]
        self._running = sorted(self._ramps + self._held)
        self._neutral = [bench.IDLE, bench.WARM_UP]

    def _add(self, table: str, name: str, row: Sequence[Cell], modes: Iterable[int], spots: Sequence[Spot],
             signals: Sequence[int] = VIBRATION) -> int:
        parameter, self._next = self._next, self._next + 1
        instrument = TABLES[table].instrument
        assert instrument is not None, table
        self._id_of[name] = parameter
        suffix = f", bank {self._number + 1}" if self._number else ""
        self._tables["TInstrumentParam"].append((parameter, instrument, name + suffix, 0, 1, 0))
        if table != "TIpTrackPolygon":                       # its rows are keyed otherwise: see _add_track_polygons
            self._tables[table].append((parameter, *row))
        for mode, (channel, location), signal in product(modes, spots, signals):
            place = PLACES.get(signal, bench.WHOLE_GEARBOX) if location == AT_SENSOR else location
            key = (mode, instrument, channel + self._number * bench.BANK_CHANNELS, place, parameter, signal)
            self._tables["TIpParamAndStore"].append((*key, 1, 0.0, 0.0, 0, 1.0))
        return parameter

    def add_all(self) -> None:
        self._add_spectra()
        self._add_areas()
        self._add_levels()
        self._add_bearings()
        self._add_time_values()
        self._add_intervals()
        self._add_track_polygons()
        self._add_curves()
        self._add_trends()
        self._add_operations()
        self._add_shifting()
        self._add_run()

    def _add_spectra(self) -> None:
        ramps, held = self._ramps, self._held

        def spectrum(name: str, trigger: int, accumulation: int, decay: float, modes: Sequence[int],
                     spots: Sequence[Spot], signals: Sequence[int] = VIBRATION) -> None:
            self._add("TIpSpectrum", name, (trigger, accumulation, decay, 0), modes, spots, signals)

        spectrum("Order spectrum", SPEED_TRIGGER, END_AVERAGE, 1000.0, self._running, [INPUT, OUTPUT])
        spectrum("Peak spectrum", SPEED_TRIGGER, END_MAXIMUM, 0.0, ramps, [INPUT])
        spectrum("Idle spectrum", TIME_TRIGGER, END_AVERAGE, 2000.0, self._neutral, [FIXED], (ACC_INPUT, MICROPHONE))
        spectrum("Last spectrum", SPEED_TRIGGER, END_LAST, 0.0, held, [FIXED], (MICROPHONE,))
        spectrum("Raw spectrum", TIME_TRIGGER, 0, 0.0, [bench.CALIBRATION], [UNTREATED], ALL_SENSORS)
        self._add("TIpSpectrogram", "Spectrogram", (FINE_SPEED_TRIGGER,), ramps, [INPUT, FIXED])
        self._add("TIpModSpectrogram", "Modulation spectrogram", (SPEED_TRIGGER, END_AVERAGE, 1500.0, 0), ramps,
                  [ENVELOPE], OUTPUT_SIDE)
        self._add("TIpCepstrum", "Cepstrum", (SPEED_TRIGGER,), held, [INPUT], INPUT_SIDE)
        self._add("TIpTimeSignal", "Time signal", (TIME_TRIGGER,), self._neutral + held, [UNTREATED],
                  (ACC_INPUT, MICROPHONE))

    def _add_areas(self) -> None:
        """What is taken out of the spectrogram."""
        ramps, source = self._ramps, (3500, self._id_of["Spectrogram"])
        self._add("TIpSgSection", "Section along the mesh",
                  (MAXIMUM, "H1-L2;H1+L2", *source, FINE_SPEED_TRIGGER, END_MAXIMUM), self._drives, [MESH])
        self._add("TIpSpectralDev", "Deviation from mean", (source[1], 1, 0.1, 3.0, 200.0, 6000.0), ramps, [FIXED],
                  OUTPUT_SIDE)
        self._add("TIpSgArea", "Rattle area",
                  (LOG_AVERAGE, "F1000;F4000", *source, 0.0, FINE_SPEED_TRIGGER, END_AVERAGE), ramps, [FIXED])
        self._add("TIpSgAreaTrack", "Rattle track", (FINE_SPEED_TRIGGER, LOG_AVERAGE, "F1000;F4000", *source), ramps,
                  [FIXED], OUTPUT_SIDE)
        self._add("TIpVarAreaTrack", "Resonance track",
                  (MAXIMUM, FINE_SPEED_TRIGGER, bench.WHOLE_GEARBOX, *source, 6, 7), ramps, [FIXED], OUTPUT_SIDE)

    def _add_levels(self) -> None:
        """Levels of wheels, shafts and fixed bands, as values and as tracks."""
        families = (("Mesh", MESH_BANDS, train.ENGAGED_DRIVING, MESH, self._ramps, VIBRATION),
                    ("Final drive", FINAL_BANDS, train.FINAL_PINION, FINAL, self._ramps, VIBRATION),
                    ("Input shaft", SHAFT_BANDS, train.INPUT_SHAFT, INPUT, self._ramps, INPUT_SIDE),
                    ("Output shaft", SHAFT_BANDS[:2], train.OUTPUT_SHAFT, OUTPUT, self._ramps, OUTPUT_SIDE),
                    ("Band", FIXED_BANDS, bench.WHOLE_GEARBOX, FIXED, self._held, VIBRATION))
        spectrum, spectrogram = (2500, self._id_of["Order spectrum"]), (3500, self._id_of["Spectrogram"])
        for family, bands, reference, spot, modes, signals in families:
            for band, definition, interpretation in bands:
                name = f"{family} {band}"
                how = (reference, interpretation, definition)
                self._add("TIpSpectralValue", name, (SPEED_TRIGGER, *how, *spectrum), modes, [spot], signals)
                if interpretation == BAND_MAXIMUM:
                    self._add("TIpSpectralTrack", f"{name} track", (FINE_SPEED_TRIGGER, *how, *spectrogram),
                              self._ramps, [spot], signals)
        self._add("TIpSpectralValue", "Idle hum",
                  (TIME_TRIGGER, -1, BAND_SUM, "F80;F400", 2500, self._id_of["Idle spectrum"]), self._neutral, [FIXED],
                  (ACC_INPUT, MICROPHONE))
        self._add("TIpSpectralValue", "Clutch ghost order",
                  (SPEED_TRIGGER, train.INPUT_SHAFT, 0, "O1+F50-L2;O1+F50+L2", *spectrum), self._drives, [INPUT],
                  INPUT_SIDE)
        self._add("TIpResidualTrack", "Residual track",
                  (FINE_SPEED_TRIGGER, train.ENGAGED_DRIVING, 0, "HX-M0.5;HX+M0.5", *spectrogram), self._ramps, [INPUT])

    def _add_bearings(self) -> None:
        spectrum = (2500, self._id_of["Order spectrum"])
        for bearing in train.BEARINGS:
            for race, base in (("outer race", train.OUTER_RACE), ("inner race", train.INNER_RACE)):
                source = base + bearing.number
                self._add("TIpSpectralValue", f"Bearing {race}, {bearing.name}",
                          (SPEED_TRIGGER, source, BAND_SUM, BEARING_BAND, *spectrum), self._drives, [(SYNC, source)],
                          INPUT_SIDE)

    def _add_time_values(self) -> None:
        """Values and tracks of the time signal itself."""
        for name, table, calculation in (("Crest", "TIpCrest", MAXIMUM), ("RMS", "TIpRms", LOG_AVERAGE),
                                         ("Peak", "TIpPeak", MAXIMUM), ("Kurtosis", "TIpKurtosis", AVERAGE)):
            self._add(table, f"{name} synchronous", (SPEED_TRIGGER, calculation, 0.1), self._ramps, [INPUT], INPUT_SIDE)
            self._add(table, f"{name} fixed", (SPEED_TRIGGER, calculation, 0.125), self._held, [FIXED],
                      (ACC_DIFFERENTIAL,))
            self._add(f"{table}Track", f"{name} track", (FINE_SPEED_TRIGGER, calculation), self._ramps, [INPUT],
                      INPUT_SIDE)
        self._add("TIpHoelder", "Knock", (TIME_TRIGGER, AVERAGE, 0.05, 6), self._neutral, [FIXED])
        self._add("TIpHoelderTrack", "Knock track", (AVERAGE, SPEED_TRIGGER, 6), self._ramps, [FIXED], INPUT_SIDE)
        self._add("TIpModulationTrack", "Modulation track", (FINE_SPEED_TRIGGER, MAXIMUM), self._ramps, [ENVELOPE],
                  OUTPUT_SIDE)

    def _add_intervals(self) -> None:
        for name, spot in (("Mesh H1", MESH), ("Mesh H2", MESH), ("Final drive H1", FINAL)):
            for start, stop in ((1500, 2500), (2500, 4000)):
                self._add("TIpTrackInterval", f"{name}, {start} to {stop}",
                          (MAXIMUM, 2001, self._id_of[f"{name} track"], start, stop, 0), self._ramps, [spot],
                          INPUT_SIDE)
        self._add("TIpTrackInterval", "Rattle, upper tenth",
                  (AVERAGE, 2070, self._id_of["Rattle track"], 1200, 3500, 3), self._ramps, [FIXED], OUTPUT_SIDE)

    def _add_track_polygons(self) -> None:
        """Tracks against polygons: by a row for each step, by a wildcard row, and by a line between two points."""
        rows = self._tables["TIpTrackPolygon"]

        def add(name: str, spot: Spot, signals: Sequence[int] = VIBRATION) -> int:
            return self._add("TIpTrackPolygon", name, (), self._ramps, [spot], signals)

        mesh, source = add("Mesh H1 above polygon", MESH), self._id_of["Mesh H1 track"]
        for step in self._steps:
            if step.mode in self._ramps:
                coast = step.flags & bench.IS_COAST
                gear_polygon = (150 if coast else 100) + step.physical_mode
                polygon = 1 if step.physical_mode == train.REVERSE else gear_polygon
                rows.append((step.mode, 10001, -1, -1, mesh, -1, polygon, 0, 3, source, 0, 0, 0, 0, 0, 0))
        any_spot = (-1, 10001, -1, -1)
        second, source = add("Mesh H2 above polygon", MESH), self._id_of["Mesh H2 track"]
        rows.append((*any_spot, second, -1, 2, 0, 3, source, 1.5, 0, 0, 0, 0, 0))
        final, source = add("Final drive above line", FINAL), self._id_of["Final drive H1 track"]
        for signal, high in ((ACC_INPUT, 82), (ACC_OUTPUT, 86)):
            rows.append((*any_spot, final, signal, -1, 0, 6, source, 2, 1, 1000, 4500, 68, high))
        crest, source = add("Crest above polygon", INPUT, INPUT_SIDE), self._id_of["Crest track"]
        rows.append((*any_spot, crest, -1, 4, 0, 10, source, 0, 0, 0, 0, 0, 0))

    def _add_curves(self) -> None:
        held, of = self._held, self._id_of
        self._add("TIpCatCurve", "Classes of levels", (MAXIMUM, 0), held, [INPUT], INPUT_SIDE)
        self._add("TIpCurveMax", "Largest quefrency", (0, of["Cepstrum"]), held, [INPUT], INPUT_SIDE)
        self._add("TIpCurvePolygon", "Spectrum above polygon", (3, 0, of["Order spectrum"], 3, 2, 1), self._running,
                  [INPUT])
        self._add("TIpCurvePolygon", "Peaks above polygon", (10, 0, of["Peak spectrum"], 3, 6, 1), self._ramps, [INPUT])
        self._add("TIpSvCurve", "Section maximum", (MAXIMUM, of["Section along the mesh"]), self._drives, [MESH])
        self._add("TIpSvCurve", "Most frequent class", (POSITION, of["Classes of levels"]), held, [INPUT], INPUT_SIDE)

    def _add_trends(self) -> None:
        of = self._id_of
        self._add("TIpSvTrend", "Trend of mesh H1", (of["Mesh H1"], 1, -1, 1, 0, 1), self._ramps, [MESH], INPUT_SIDE)
        self._add("TIpCurveTrend", "Trend of the spectrum", (of["Order spectrum"], 1, -1, 2, 0, 1), self._held, [INPUT],
                  INPUT_SIDE)
        self._add("TIpCurveTrackTrend", "Trend of the spectrogram", (of["Spectrogram"], 1, 1, 2, 0, 1), self._drives,
                  [INPUT], INPUT_SIDE)
        self._add("TIpTrackRegression", "Slope of mesh H1", (of["Mesh H1 track"], 0, 0, 1, 0, 1), self._ramps, [MESH],
                  INPUT_SIDE)

    def _add_operations(self) -> None:
        ramps, of = self._ramps, self._id_of
        mesh, mesh_track = (1001, of["Mesh H1"]), (2001, of["Mesh H1 track"])
        self._add("TIpTrackTransform", "Mesh H1 smoothed", (2, *mesh_track, FINE_SPEED_TRIGGER), ramps, [MESH],
                  INPUT_SIDE)
        self._add("TIpSvBinOp", "Mesh H2 less H1", (SUBTRACT, 1001, of["Mesh H2"], *mesh, SPEED_TRIGGER), ramps, [MESH])
        self._add("TIpSvBinOp", "Side bands to H1",
                  (RELATIVE_MAGNITUDE, 1001, of["Mesh H1 side bands"], *mesh, SPEED_TRIGGER), ramps, [MESH])
        self._add("TIpTrackBinOp", "Residual less rattle",
                  (SUBTRACT, 2007, of["Residual track"], 2070, of["Rattle track"], FINE_SPEED_TRIGGER), ramps, [FIXED],
                  OUTPUT_SIDE)
        self._add("TIpTrackBinOp", "Modulation to mesh",
                  (DIVIDE, 2006, of["Modulation track"], *mesh_track, FINE_SPEED_TRIGGER), ramps, [ENVELOPE],
                  OUTPUT_SIDE)

    def _add_shifting(self) -> None:
        shifting = [bench.SHIFTING]
        self._add("TIpSP", "Shift force maximum", (2,), shifting, [FIXED], (bench.SHIFT_FORCE,))
        self._add("TIpSP", "Shift travel at end", (0,), shifting, [FIXED], (bench.SHIFT_TRAVEL,))
        self._add("TIpSFTrack", "Shift force over travel", (TIME_TRIGGER,), shifting, [FIXED], (bench.SHIFT_FORCE,))
        self._add("TIpSFTimeSignal", "Shift force over time", (TIME_TRIGGER,), shifting, [FIXED], (bench.SHIFT_FORCE,))

    def _add_run(self) -> None:
        """What watches the run: sensors, gear, torque, oil."""
        running = self._running
        self._add("TIpSignalGuard", "Sensor alive", (2, 0), self._neutral, [UNTREATED], ALL_SENSORS)
        self._add("TIpRatioTest", "Gear ratio", (SPEED_TRIGGER,), running, [FIXED], (bench.SPEED_OUT,))
        self._add("TIpDiffTest", "Torque left less right", (SPEED_TRIGGER,), running, [FIXED], (bench.TORQUE_LEFT,))
        self._add("TIpCvValue", "Input torque mean", (FIELD_TRIGGER, AVERAGE), running, [FIXED], (bench.TORQUE_IN,))
        self._add("TIpCvValue", "Oil temperature highest", (SPEED_TRIGGER, MAXIMUM), running, [FIXED],
                  (bench.OIL_TEMPERATURE,))
        self._add("TIpCvTrack", "Input torque track", (SPEED_TRIGGER,), self._ramps, [FIXED], (bench.TORQUE_IN,))
        self._add("TIpRunTest", "Step completed", (1,), running, [FIXED], (bench.TIME,))
        self._add("TExternalName", "Leak rate", ("LEAK_TEST/RATE",), [bench.IDLE], [FIXED], (bench.CLUTCH,))


def parameter_tables(gearbox: DriveTrain, scale: int) -> Tables:
    """All tables of instruments and their parameters, with what they are measured on."""
    all_steps = bench.steps(gearbox)
    tables: Tables = {table.name: [] for table in TABLES.values() if table.instrument is not None}
    tables |= {"TIpParamAndStore": [], "TInstrumentParam": [], "TInstrument": list(INSTRUMENTS.items())}
    for number in range(scale):
        Bank(number, tables, all_steps).add_all()
    return tables
