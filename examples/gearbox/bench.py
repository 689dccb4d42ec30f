"""The bench itself: test steps, channels, sensors, triggers, rotors - everything but the instrument parameters."""

from __future__ import annotations

from dataclasses import dataclass

import drive_train as train
from drive_train import DriveTrain
from lake_text import Rows, Tables

# Test steps. A gear has the ten's digit to itself.
IDLE, WARM_UP, SHIFTING, CALIBRATION = 1, 2, 3, 100
DRIVE, COAST, CONSTANT_LOW, CONSTANT_HIGH = 1, 2, 3, 4       # plus ten times the gear
REVERSE_UP, REVERSE_DOWN = 91, 92

HIDDEN, IS_DRIVE, IS_COAST, IS_CONSTANT = 1024, 1, 2, 4      # flags of a test step

# Channels
SYNC, MIX, FIX, RAW = 1, 2, 3, 4
SYNC_OUTPUT, SYNC_DIFFERENTIAL, SYNC_IDLER, MIX_ENGAGED, FIX_ENVELOPE = 11, 12, 13, 21, 31
BANK_CHANNELS, BANK_PARAMETERS = 100, 100_000                # distance of ids from bank to bank

# Measuring places, beside the objects of the drive train
WHOLE_GEARBOX, PLACE_INPUT, PLACE_OUTPUT, PLACE_DIFFERENTIAL, PLACE_AIR, PLACE_LEVER = 200, 201, 202, 203, 204, 205

# Application signals
ACC_INPUT, ACC_OUTPUT, ACC_DIFFERENTIAL, MICROPHONE = 1, 2, 3, 4
SPEED_IN, SPEED_OUT, TORQUE_IN, TORQUE_LEFT, TORQUE_RIGHT, OIL_TEMPERATURE = 10, 11, 12, 13, 14, 15
SHIFT_FORCE, SHIFT_TRAVEL, TIME, CLUTCH = 20, 21, 30, 40

# Triggers
SPEED_TRIGGER, FIELD_TRIGGER, TIME_TRIGGER, FINE_SPEED_TRIGGER = 1, 2, 3, 4
HOLDS, RISES, FALLS = 1, 2, 3

# Codes of the common units; a unit that has none goes by its text with UNIT_TEXT.
UNIT_TEXT = 1
UNITS = {"m/s²": 2, "g": 3, "Pa": 4, "Hz": 6, "1/min": 7, "Nm": 8, "N": 9, "°C": 10, "mm": 13, "s": 15, "%": 17}

SIGNALS: tuple[tuple[int, str, int, str, float], ...] = (    # id, name, type, unit, full scale
    (ACC_INPUT, "Accelerometer input side", 1, "m/s²", 500.0),
    (ACC_OUTPUT, "Accelerometer output side", 1, "m/s²", 500.0),
    (ACC_DIFFERENTIAL, "Accelerometer differential", 1, "m/s²", 500.0),
    (MICROPHONE, "Microphone near field", 2, "Pa", 20.0),
    (SPEED_IN, "Speed input shaft", 3, "1/min", 8000.0),
    (SPEED_OUT, "Speed drive flange", 3, "1/min", 2500.0),
    (TORQUE_IN, "Torque input shaft", 3, "Nm", 400.0),
    (TORQUE_LEFT, "Torque drive flange left", 3, "Nm", 2000.0),
    (TORQUE_RIGHT, "Torque drive flange right", 3, "Nm", 2000.0),
    (OIL_TEMPERATURE, "Oil temperature", 3, "°C", 150.0),
    (SHIFT_FORCE, "Shift force", 3, "N", 500.0),
    (SHIFT_TRAVEL, "Shift travel", 3, "mm", 30.0),
    (TIME, "Time", 4, "s", 600.0),
    (CLUTCH, "Clutch actuator counts", 3, "counts", 65535.0),
)


@dataclass(frozen=True)
class Step:
    """A test step: its names, its gear, and how speed and torque go in it."""
    mode: int
    name: str
    customer_name: str
    bench_name: str
    physical_mode: int
    flags: int
    start: float = 0.0                                       # speed of the input shaft, 1/min
    stop: float = 0.0
    torque: float = 0.0                                      # Nm

    @property
    def kind(self) -> int:
        if self.start == self.stop:
            return HOLDS
        return RISES if self.start < self.stop else FALLS


def steps(gearbox: DriveTrain) -> list[Step]:
    result = [
        Step(IDLE, "Idle", "Leerlauf", "IDLE", train.NEUTRAL, IS_CONSTANT, 850, 850),
        Step(WARM_UP, "Warm up", "Einlaufen", "WARMUP", train.NEUTRAL, IS_CONSTANT, 2000, 2000),
        Step(SHIFTING, "Shifting", "Schaltprüfung", "SHIFT", -1, 0),
        Step(REVERSE_UP, "R drive", "Rückwärtsgang Zug", "R_UP", train.REVERSE, IS_DRIVE, 800, 3000, 80),
        Step(REVERSE_DOWN, "R coast", "Rückwärtsgang Schub", "R_DOWN", train.REVERSE, IS_COAST, 3000, 800, -40),
        Step(CALIBRATION, "Calibration", "Kalibrierung", "CALIB", -1, HIDDEN),
    ]
    for gear in gearbox.gear_numbers:
        low, high = 1000 + 50 * gear, 4000 + 200 * min(gear, 5)
        first, name, german = 10 * gear, f"{gear}. gear", f"{gear}. Gang"
        result += [
            Step(first + DRIVE, f"{name} drive", f"{german} Zug", f"G{gear}_UP", gear, IS_DRIVE, low, high, 150),
            Step(first + COAST, f"{name} coast", f"{german} Schub", f"G{gear}_DOWN", gear, IS_COAST, high, low, -60),
            Step(first + CONSTANT_LOW, f"{name} constant 1500", f"{german} konstant 1500", f"G{gear}_C15", gear,
                 IS_CONSTANT, 1500, 1500, 100),
            Step(first + CONSTANT_HIGH, f"{name} constant 3000", f"{german} konstant 3000", f"G{gear}_C30", gear,
                 IS_CONSTANT, 3000, 3000, 100),
        ]
    return sorted(result, key=lambda step: step.mode)


def channel_rows(all_steps: list[Step], scale: int) -> Tables:
    names = {SYNC: "Synchronous input shaft", MIX: "Mix", FIX: "Fixed", RAW: "Raw",
             SYNC_OUTPUT: "Synchronous output shaft", SYNC_DIFFERENTIAL: "Synchronous differential",
             SYNC_IDLER: "Synchronous reverse idler", MIX_ENGAGED: "Mix engaged gear",
             FIX_ENVELOPE: "Fixed envelope"}
    flags = {SYNC: 1, MIX: 2, FIX: 4, SYNC_OUTPUT: 0, MIX_ENGAGED: 2, FIX_ENVELOPE: 0}
    parents = {(SYNC_OUTPUT, -1): SYNC, (SYNC_DIFFERENTIAL, -1): SYNC_OUTPUT, (FIX_ENVELOPE, -1): FIX,
               (SYNC_IDLER, REVERSE_UP): SYNC, (SYNC_IDLER, REVERSE_DOWN): SYNC}
    # The engaged gear is followed synchronously in the ramps and stays a plain mix everywhere else.
    parents |= {(MIX_ENGAGED, step.mode): SYNC for step in all_steps if step.flags & (IS_DRIVE | IS_COAST)}
    parents |= {(MIX_ENGAGED, -1): MIX}
    result: Tables = {"TChannel": [], "TChannelProperty": [], "TChannelInheritance": []}
    for bank in range(scale):
        shift = bank * BANK_CHANNELS
        suffix = f", bank {bank + 1}" if bank else ""
        result["TChannel"] += [(channel + shift, name + suffix) for channel, name in names.items()]
        result["TChannelProperty"] += [(channel + shift, value, bank) for channel, value in flags.items()]
        result["TChannelInheritance"] += [(channel + shift, mode, parent + shift)
                                          for (channel, mode), parent in parents.items()]
    return result


def rotor_rows(gearbox: DriveTrain) -> Tables:
    result: Tables = {name: [] for name in ("TRotorSpeed", "TVirtual2PhysGear", "TRotorSpeedSource",
                                            "TRotorSpeedReference", "TOrderSource2Rotor")}
    for physical_mode in gearbox.physical_modes:
        for rotor, speed in gearbox.rotor_speeds(physical_mode).items():
            result["TRotorSpeed"].append((physical_mode, rotor, float(speed), speed.numerator, speed.denominator))
        sources, references = gearbox.speed_sources(physical_mode)
        result["TRotorSpeedSource"] += [(physical_mode, rotor, source) for rotor, source in sources.items()]
        result["TRotorSpeedReference"] += [(physical_mode, rotor, source) for rotor, source in references.items()]
        result["TVirtual2PhysGear"] += [(physical_mode, virtual, wheel)
                                        for virtual, wheel in gearbox.engaged_wheels(physical_mode).items()]
        result["TOrderSource2Rotor"] += [(source, physical_mode, rotor)
                                         for source, rotor in gearbox.order_sources(physical_mode).items()]
    result["TBaseOrder"] = list(gearbox.base_orders().items())
    result["TGearDiameter"] = list(gearbox.diameters().items())
    result["TSpeedSource"] = [(train.INPUT_SHAFT, SPEED_IN), (train.DIFFERENTIAL, SPEED_OUT)]
    return result


def location_rows(gearbox: DriveTrain) -> Tables:
    places = {WHOLE_GEARBOX: "Gearbox", PLACE_INPUT: "Bearing cover input side",
              PLACE_OUTPUT: "Bearing cover output side", PLACE_DIFFERENTIAL: "Differential housing",
              PLACE_AIR: "Near field, 0.5 m", PLACE_LEVER: "Shift lever"}
    objects = gearbox.object_names()
    rotors = {train.INPUT_SHAFT, train.OUTPUT_SHAFT, train.REVERSE_IDLER, train.DIFFERENTIAL}
    properties: Rows = [(location, 1 if location in rotors else 2, 0, 0) for location in objects if location < 140]
    properties += [(location, 4, 0, 0) for location in places]
    return {"TLocation": [*objects.items(), *places.items()], "TLocationProperty": properties}


def trigger_rows(all_steps: list[Step]) -> Tables:
    rows: Rows = []

    def field_of(step: Step, trigger: int, dimension: int, kind: int, signal: int, start: float, stop: float,
                 width: float) -> None:
        rows.append((step.mode, trigger, dimension, kind, signal, start, stop, width, 0.0, 0, 0, 0, 0))

    for step in all_steps:
        field_of(step, TIME_TRIGGER, 1, RISES, TIME, 0, 12, 0.1)
        if step.flags & HIDDEN or step.mode == SHIFTING:
            continue
        slack = 25 if step.kind == HOLDS else 0              # a step at constant speed keeps a window around it
        start, stop = step.start - slack, step.stop + slack
        field_of(step, SPEED_TRIGGER, 1, step.kind, SPEED_IN, start, stop, 50)
        field_of(step, FINE_SPEED_TRIGGER, 1, step.kind, SPEED_IN, start, stop, 10)
        field_of(step, FIELD_TRIGGER, 1, step.kind, SPEED_IN, start, stop, 50)
        field_of(step, FIELD_TRIGGER, 2, HOLDS, TORQUE_IN, step.torque - 10, step.torque + 10, 20)
    return {"TTrigger": [(SPEED_TRIGGER, "Speed", 1), (FIELD_TRIGGER, "Speed and torque", 2),
                         (TIME_TRIGGER, "Time", 1), (FINE_SPEED_TRIGGER, "Speed, fine", 1)],
            "TTriggerParam": rows}


def signal_rows() -> Tables:
    vibration = (ACC_INPUT, ACC_OUTPUT, ACC_DIFFERENTIAL)
    process = [signal for signal, _, kind, _, _ in SIGNALS if kind == 3]
    return {
        "TApplicationSignal": [(signal, name) for signal, name, *_ in SIGNALS],
        "TAppSignalProperty": [(signal, kind, unit, scale, UNITS.get(unit, UNIT_TEXT), 0)
                               for signal, _, kind, unit, scale in SIGNALS],
        "TSignalUnit": [(number, unit) for number, unit in enumerate(dict.fromkeys(row[3] for row in SIGNALS), 1)],
        "TSignalDispatch": [(signal, 1 if kind < 3 else 0) for signal, _, kind, _, _ in SIGNALS],
        "TSensorGroup": [(1, "Vibration"), (2, "Sound"), (3, "Process values")],
        "TSensorGroupList": [(1, signal, 1) for signal in vibration] + [(2, MICROPHONE, 1)]
                            + [(3, signal, 0) for signal in process],
        "TTpSensorConfig": [(1, "Standard"), (2, "Without microphone")],
        "TTpSensorConfigProperty": [(configuration, bench, signal, number)
                                    for configuration in (1, 2) for bench in (1, 2)
                                    for number, signal in enumerate((*vibration, MICROPHONE)[:5 - configuration], 1)],
        "TAutoModeParamOrder": [(0, SPEED_IN), (1, TORQUE_IN)],
        "TAutoModeParam": [(SPEED_IN, 0, 6000, 500, 1, 0, 1, 1, 1, 1), (TORQUE_IN, -100, 250, 50, 1, 0, 1, 1, 1, 1)],
    }


def resampling_rows() -> Tables:
    jobs = ((1, "Input shaft", train.INPUT_SHAFT, 2048), (2, "Output shaft", train.OUTPUT_SHAFT, 2048),
            (3, "Differential", train.DIFFERENTIAL, 1024), (4, "Fixed 25.6 kHz", WHOLE_GEARBOX, 4096))
    return {
        "TResamplingGroup": [(job, name) for job, name, *_ in jobs],
        "TProcessingUnit": [(1, "Ramps"), (2, "Constant speed")],
        "TResamplingM": [(job, unit, location, SPEED_IN, 0, lines, lines // 2, 0.5, unit, 1.0, 0)
                         for job, _, location, lines in jobs for unit in (1, 2)],
    }


def bench_tables(gearbox: DriveTrain, scale: int) -> Tables:
    """All tables of the bench."""
    all_steps = steps(gearbox)
    last_gear = gearbox.gears
    result: Tables = {
        "TMode": [(step.mode, step.name) for step in all_steps],
        "TPhysMode": [(train.NEUTRAL, "Neutral"), *((gear, f"Gear {gear}") for gear in gearbox.gear_numbers),
                      (train.REVERSE, "Reverse")],
        "TModeProperty": [(step.mode, step.physical_mode, step.flags, 0, 0) for step in all_steps],
        "TModeTranslate": [(step.bench_name, step.mode) for step in all_steps],
        "TAliasType": [(1, "TG-6031 A"), (2, "TG-6031 B"), (3, "TG-6031 S")],
        "TAliasBench": [(1, "Bench 1"), (2, "Bench 2")],
        "TRetype": [(3, 1)],
        "TAutoModeSequence": [(position, step.mode) for position, step in enumerate(all_steps)
                              if not step.flags & HIDDEN],
        "TTEMeasurement": [(gear, f"Transmission error gear {gear}", train.DRIVING_WHEEL + gear,
                            train.DRIVEN_WHEEL + gear, SPEED_IN, SPEED_OUT, 1, 0) for gear in gearbox.gear_numbers],
        "TTEOperation": [(gear, gear, 1) for gear in gearbox.gear_numbers],
        "TExternalError": [(1, 1, SHIFTING, -1, -1, -1, -1, 901), (2, 1, IDLE, -1, -1, -1, -1, 902),
                           (3, 2, 10 * last_gear + DRIVE, -1, -1, -1, -1, 903)],
        "TShadowGroupProperty": [(1, 0), (2, 1)],
        "TAuxStrings": [("Report.Title", "Gearbox acceptance test"), ("Report.Passed", "Passed"),
                        ("Report.Failed", "Failed"), ("Report.Footer", "Levels in dB re 1E-6 m/s²; see test manual"),
                        ("Screen.Wait", "Warming up: please wait"), ("Screen.Sensor", "Check sensor cable")],
    }
    parts = (channel_rows(all_steps, scale), location_rows(gearbox), rotor_rows(gearbox), trigger_rows(all_steps),
             signal_rows(), resampling_rows())
    for part in parts:
        result |= part
    return result
