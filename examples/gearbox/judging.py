"""How results are judged: polygons, limits, learning, and the errors that follow."""

from __future__ import annotations

import bench
import drive_train as train
from drive_train import DriveTrain
from lake_text import Cell, Rows, Tables

# Lower and upper limit of a single value by its instrument, and how far the upper one grows from gear to gear.
VALUE_LIMITS: dict[int, tuple[float, float, float]] = {
    1001: (0, 82, 1.5), 1002: (1, 6, 0.1), 1003: (0.05, 4, 0.25), 1004: (0.2, 22, 1), 1005: (1.5, 4.5, 0.05),
    1008: (0, 12, 0), 1051: (-40, 40, 0), 1060: (0, 180, 0), 1700: (0, 74, 1), 3000: (0.05, 40, 0), 9000: (1, 1, 0),
    9500: (0, 5, 0), 10000: (0, 80, 1.5), 10001: (0, 30, 0), 10100: (0, 6, 0), 10101: (0, 45, 0), 10102: (0, 96, 1),
    10201: (-30, 10, 0), 10202: (-3, 3, 0), 16000: (-2, 2, 0),
}
RATIO_TEST, CONTROL_VALUE = 1050, 20000                      # their limits follow from the gear and the test step
RATIO_TOLERANCE, TORQUE_TOLERANCE = 0.01, 15.0
COAST_BONUS = 3.0                                            # coast runs quieter: so many steps of growth lower

# The polygon that a curve is held against, by its instrument.
CURVE_POLYGONS: dict[int, int] = {
    2001: 1, 2002: 4, 2003: 1, 2004: 1, 2005: 4, 2006: 1, 2007: 1, 2008: 1, 2012: 1, 2070: 1, 2100: 3, 2500: 3, 2700: 3,
    2900: 3, 5000: 5, 11000: 1, 11201: 1, 12202: 3, 21000: 5,
}
AREAS = (2800, 3500, 3700, 13202)

LEARNT = (1001, 10000)                                       # instruments whose limits are learnt
FIRST_LEARNT = 1_700_000_000_000                             # ms since 1970

RELATIVE = {"Mesh H1": (3.0, 6.0), "Mesh H2": (3.0, 6.0), "Rattle area": (2.5, 5.0), "Knock": (2.0, 4.0)}
USER_NAMES = {"Mesh H1": "Whine, first harmonic", "Mesh H2": "Whine, second harmonic",
              "Final drive H1": "Final drive whine"}


def polygon_tables(gearbox: DriveTrain) -> Tables:
    speeds = range(500, 6501, 500)
    shapes: dict[int, tuple[str, list[tuple[float, float]]]] = {
        1: ("Mesh level", [(x, 64 + x / 250) for x in speeds]),
        2: ("Mesh second harmonic", [(x, 58 + x / 250) for x in speeds]),
        3: ("Spectrum", [(0.5, 60.0), *((order, 92 - order / 5) for order in range(4, 201, 4))]),
        4: ("Crest", [(x, 5 + x / 5000) for x in speeds]),
        5: ("Torque window", [(500, 140), (4500, 140), (6500, 120)]),
        6: ("Resonance, lower edge", [(500, 900), (2500, 1100), (6500, 1250)]),
        7: ("Resonance, upper edge", [(500, 1300), (2500, 1500), (6500, 1800)]),
    }
    for gear in gearbox.gear_numbers:
        for offset, word, level in ((100, "drive", 66), (150, "coast", 63)):
            shapes[offset + gear] = (f"Mesh level gear {gear} {word}", [(x, level - gear + x / 250) for x in speeds])
    return {"TIpPolygon": [(polygon, 1, name) for polygon, (name, _) in shapes.items()],
            "TIpPolygonValue": [(polygon, x, y) for polygon, (_, points) in shapes.items() for x, y in points],
            "TIpPolygonProperty": [(polygon, 0, 1) for polygon in shapes]}


def _value_limits(gearbox: DriveTrain, step: bench.Step, instrument: int, signal: int) -> tuple[float, float] | None:
    if instrument == RATIO_TEST:
        ratio = abs(float(1 / gearbox.rotor_speeds(step.physical_mode)[train.DIFFERENTIAL]))
        return round(ratio * (1 - RATIO_TOLERANCE), 4), round(ratio * (1 + RATIO_TOLERANCE), 4)
    if instrument == CONTROL_VALUE:
        if signal == bench.TORQUE_IN:
            return step.torque - TORQUE_TOLERANCE, step.torque + TORQUE_TOLERANCE
        return 30.0, 90.0
    if instrument not in VALUE_LIMITS:
        return None
    lower, upper, growth = VALUE_LIMITS[instrument]
    gear = step.physical_mode if step.physical_mode in gearbox.gear_numbers else 0
    quieter = COAST_BONUS * growth if step.flags & bench.IS_COAST else 0
    return lower, round(upper + growth * gear - quieter, 2)


def limit_tables(gearbox: DriveTrain, tables: Tables) -> Tables:
    """Limits for the stored keys, and learn parameters for the levels of the input side."""
    step_of = {step.mode: step for step in bench.steps(gearbox)}
    result: Tables = {"TLimSValue": [], "TLimCValue": [], "TLimArea": [], "TIpLearnParams": [], "TRelativeLimit": []}
    for key in (row[:6] for row in tables["TIpParamAndStore"]):
        mode, instrument, _, _, parameter, signal = map(int, key)
        limits = _value_limits(gearbox, step_of[mode], instrument, signal)
        if limits is not None:
            result["TLimSValue"].append((*key, 1, *limits))
        if instrument in CURVE_POLYGONS:
            result["TLimCValue"].append((*key, 1, CURVE_POLYGONS[instrument], -1, 0, 1))
        if instrument in AREAS:
            result["TLimArea"].append((*key, 1, 0.0, 96.0 + mode // 10))
        if instrument in LEARNT and signal == bench.ACC_INPUT:
            learnt = FIRST_LEARNT + 60_000 * ((parameter * 31 + mode * 7) % 10_000)
            result["TIpLearnParams"].append((*key, 1 + parameter % 3, 250, 1, learnt))
    for parameter, instrument, name, *_ in tables["TInstrumentParam"]:
        if name in RELATIVE:
            result["TRelativeLimit"].append((-1, instrument, -1, -1, parameter, -1, *RELATIVE[str(name)]))
    return result


def error_tables(gearbox: DriveTrain) -> Tables:
    """Error codes for every object that can be at fault."""
    codes: Rows = []
    for location, name in gearbox.object_names().items():
        if train.CAGE <= location <= train.ENGAGED_DRIVEN:
            continue
        symptoms = ["too loud", "modulated"] + (["nick on a tooth"] if location in gearbox.teeth() else [])
        for number, symptom in enumerate(symptoms, 1):
            codes.append((location * 10 + number, 2 if number < 3 else 3, f"{name}: {symptom}", location, number, 1))
    codes += [(9001, 4, "Sensor without signal", bench.WHOLE_GEARBOX, 0, 1),
              (9002, 4, "Wrong gear engaged", bench.WHOLE_GEARBOX, 0, 1),
              (9003, 5, "Test step not completed", bench.WHOLE_GEARBOX, 0, 0)]
    groups: Rows = [(1, 0, 1, "In order", "No finding"), (2, 1, 2, "Noise", "Levels above limit"),
                    (3, 1, 3, "Damage", "Teeth or bearings damaged; dismantle"),
                    (4, 2, 4, "Bench", "Repeat the test"), (5, 3, 5, "System", "Call the bench engineer")]
    return {"TErrorCode": codes, "TErrorGroup": groups}


def user_names(tables: Tables) -> Rows:
    """Names of a customer's own, for each channel, sensor and object at which a parameter is measured."""
    text_of = {row[0]: USER_NAMES[str(row[2])] for row in tables["TInstrumentParam"] if row[2] in USER_NAMES}
    places: set[tuple[Cell, ...]] = {row[1:6] for row in tables["TIpParamAndStore"] if row[4] in text_of}
    return [(instrument, channel, signal, location, parameter, text_of[parameter], 1, 0)
            for instrument, channel, location, parameter, signal in places]


def judging_tables(gearbox: DriveTrain, tables: Tables) -> Tables:
    """All tables by which the parameters of `tables` are judged."""
    return polygon_tables(gearbox) | limit_tables(gearbox, tables) | error_tables(gearbox) | {
        "TClavisUserNames": user_names(tables),
        "TLearnProcedures": [(1, 1, 250, 3.0, "Mean and three sigma", 0.05),
                             (2, 1, 500, 4.0, "Mean and four sigma", 0.02),
                             (3, 2, 100, 0.99, "Quantile of the last hundred", 0.1)],
    }
