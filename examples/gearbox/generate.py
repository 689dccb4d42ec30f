#!/usr/bin/env python3
"""Writes the example parameter files gearbox.lake and customer.lake.

The first file describes a whole end-of-line test of a manual gearbox; the second is a customer's variant and replaces a
few of its tables. Both are made anew from the drive train, checked as a reader would see them, and only then written.
The same options always give the same bytes.
"""

from __future__ import annotations

import argparse
import sys
from collections.abc import Callable
from pathlib import Path

import bench
import drive_train as train
from catalogue import TABLES
from check import Faults, check
from drive_train import GEAR_TEETH, DriveTrain
from judging import judging_tables
from lake_text import ENCODING, Tables, comment, heading, section
from parameters import parameter_tables

# Headings before the first table of each group.
GROUPS = {
    "TMode": "Names",
    "TModeProperty": "Test steps, channels and objects",
    "TRotorSpeed": "Rotors",
    "TTEMeasurement": "Sensors, signals and resampling",
    "TTriggerParam": "Triggers and the virtual-mode grid",
    "TIpParamAndStore": "What is measured",
    "TIpSpectralValue": "Values from spectra and time signals",
    "TIpCrestTrack": "Tracks",
    "TIpCatCurve": "Spectra, spectrograms and time signals",
    "TIpTrackInterval": "Values made from tracks and curves",
    "TLimSValue": "Limits and polygons",
    "TErrorCode": "Errors, texts and learning",
}


def versions() -> str:
    return "<DbDesign.CacheVersion>: 216\n<DbDesign.CacheMinorVersion>: 1\n"


def gearbox_text(gearbox: DriveTrain, tables: Tables) -> str:
    parts = [
        comment([f"Parameters of the acceptance test of a {gearbox.gears}-speed manual gearbox, type TG-6031.",
                 "Made by generate.py from the data of the drive train: change that and make the file anew."]),
        "\n", versions(), "\n",
        '<QLearn><FLearnArcName>: "TG-6031 learn archive.arc"\n',
        "<QCalib><FCalibFileName>: bench_sensors.cal\n",
        "<QType><FBaseName>: TG-6031\n",
        '<QType><FAliasName>: "TG-6031 A"\n',
    ]
    for name, table in TABLES.items():
        if name in GROUPS:
            parts.append(heading(GROUPS[name]))
        if name == "TRotorSpeed":
            parts.append(comment(["", *gearbox.description(), ""]))
        parts.append(section(table, tables[name]))
    return "".join(parts)


def customer_tables(gearbox: DriveTrain, tables: Tables) -> Tables:
    """The tables in which the customer's variant differs, each of them whole."""
    all_steps = bench.steps(gearbox)
    ramps = {step.mode for step in all_steps if step.flags & (bench.IS_DRIVE | bench.IS_COAST)}
    forward = {step.mode for step in all_steps if step.physical_mode not in (train.NEUTRAL, train.REVERSE, -1)}
    limits = [(*row[:8], round(float(row[8]) - 2.5, 2)) for row in tables["TLimSValue"]
              if row[0] in ramps & forward and row[1] in (1001, 1700) and row[5] == bench.ACC_INPUT
              and row[4] < 1001 + bench.BANK_PARAMETERS and row[3] in (train.ENGAGED_DRIVING, train.DIFFERENTIAL)]
    return {
        "TMode": [(step.mode, step.customer_name) for step in all_steps],
        "TAliasType": [(1, "K7 Größe A"), (2, "K7 Größe B"), (3, "K7 Muster")],
        "TModeTranslate": [(prefix + step.bench_name, step.mode) for step in all_steps for prefix in ("", "K7_")],
        "TLimSValue": limits,
        "TErrorGroup": [(1, 0, 1, "In Ordnung", "Kein Befund"), (2, 1, 2, "Geräusch", "Pegel über der Grenze"),
                        (3, 1, 3, "Schaden", "Zähne oder Lager beschädigt; zerlegen"),
                        (4, 2, 4, "Prüfstand", "Prüfung wiederholen"),
                        (5, 3, 5, "System", "Prüfstandsbetreuer rufen")],
        "TAuxStrings": [("Report.Title", "Abnahmeprüfung Getriebe"), ("Report.Passed", "Bestanden"),
                        ("Report.Failed", "Nicht bestanden"), ("Report.Footer", "Pegel in dB; siehe Prüfanweisung"),
                        ("Screen.Wait", "Einlaufen: bitte warten"), ("Screen.Sensor", "Sensorkabel prüfen")],
    }


def customer_text(tables: Tables) -> str:
    parts = [comment(["Variant of a customer, type K7. To be merged over gearbox.lake:",
                      "each table here replaces the whole table there.",
                      "The lines outside of the tables hold only where gearbox.lake has none of their kind."]),
             "\n", versions(), "\n", '<QType><FAliasName>: "K7 Größe A"\n']
    parts += [section(TABLES[name], tables[name]) for name in TABLES if name in tables]
    return "".join(parts)


def build(gears: int, scale: int) -> dict[str, str]:
    """The checked text of every file by its name. Raises Faults."""
    gearbox = DriveTrain(gears)
    tables = bench.bench_tables(gearbox, scale) | parameter_tables(gearbox, scale)
    tables |= judging_tables(gearbox, tables)
    texts = {"gearbox.lake": gearbox_text(gearbox, tables)}
    base = check("gearbox.lake", texts["gearbox.lake"])
    texts["customer.lake"] = customer_text(customer_tables(gearbox, tables))
    check("customer.lake", texts["customer.lake"], under=base)
    return texts


def write(path: Path, text: str) -> None:
    """Writes beside the target and renames, so that a reader never meets half a file."""
    temporary = path.with_name(path.name + ".new")
    temporary.write_bytes(text.encode(ENCODING))
    temporary.replace(path)


def bounded(low: int, high: int) -> Callable[[str], int]:
    """A converter of an option's text that takes whole numbers from low to high."""
    def convert(text: str) -> int:
        value = int(text)
        if not low <= value <= high:
            raise argparse.ArgumentTypeError(f"{value} is not in {low} to {high}")
        return value
    convert.__name__ = "number"
    return convert


def main() -> int:
    parser = argparse.ArgumentParser(
        description="Writes gearbox.lake, the parameters of a whole gearbox test, and customer.lake, a variant to be "
                    "merged over it. The files are checked before they are written: ids, keys, order definitions, "
                    "polygons, triggers and ratios. The same options always give the same bytes.",
        epilog="Example: generate.py --gears 5 --scale 10 --output /tmp/large")
    parser.add_argument("--output", type=Path, default=Path(__file__).resolve().parent, metavar="DIR",
                        help="folder to write to, made if need be (default: beside this program)")
    parser.add_argument("--gears", type=bounded(1, len(GEAR_TEETH)), default=6, metavar="N",
                        help=f"number of forward gears, 1 to {len(GEAR_TEETH)} (default: 6)")
    parser.add_argument("--scale", type=bounded(1, 1000), default=1, metavar="K",
                        help="measure everything in K banks: K times the channels, parameters, keys and limits "
                             "(default: 1)")
    options = parser.parse_args()
    try:
        texts = build(options.gears, options.scale)
    except Faults as faults:
        print(faults, file=sys.stderr)
        return 1
    options.output.mkdir(parents=True, exist_ok=True)
    for name, text in texts.items():
        write(options.output / name, text)
        print(f"{options.output / name}: {text.count(chr(10))} lines")
    return 0


if __name__ == "__main__":
    sys.exit(main())
