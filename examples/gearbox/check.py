"""Reads a finished parameter file back from its text and finds what a load would stumble over."""

from __future__ import annotations

import math
import re
from collections import Counter

from catalogue import OPEN_KEY, TABLES, Table
from lake_text import ENCODING, Cell, Tables, read_back, read_row

MAX_FINDINGS = 20
TOKEN = re.compile(r"[FOMLH](?:[0-9]+(?:\.[0-9]+)?|X)")
TERM = re.compile(rf"[+-]?{TOKEN.pattern}(?:[+-]{TOKEN.pattern})*")


class Faults(Exception):
    """The file is not fit to be written."""


def check(file_name: str, text: str, under: Tables | None = None) -> Tables:
    """The tables of the text, or Faults. `under` holds the tables of the file that this one is merged over."""
    faults: list[str] = []
    try:
        text.encode(ENCODING)
    except UnicodeEncodeError as error:
        faults.append(f"{text[error.start]!r} cannot be written in {ENCODING}")
    if "\r" in text or not text.endswith("\n"):
        faults.append("lines do not end with LF")
    lake = read_back(text)
    faults += lake.faults
    tables: Tables = {}
    for tag, lines in lake.sections.items():
        table = TABLES.get(tag.strip("<>"))
        if table is None:
            faults.append(f"there is no table {tag}")
            continue
        tables[table.name] = []
        for line in lines:
            try:
                tables[table.name].append(read_row(line, table))
            except ValueError as error:
                faults.append(f"{tag}: {error}: {line}")
    if not faults:
        merged = (under or {}) | tables
        for name, rows in tables.items():
            faults += _check_order(TABLES[name], rows)
            faults += _check_references(TABLES[name], rows, merged)
        faults = faults or _check_sense(merged)
    if faults:
        more = [f"... and {len(faults) - MAX_FINDINGS} more"] if len(faults) > MAX_FINDINGS else []
        raise Faults("\n".join(f"{file_name}: {fault}" for fault in faults[:MAX_FINDINGS] + more))
    return tables


def _check_order(table: Table, rows: list[tuple[Cell, ...]]) -> list[str]:
    width = len(table.key)
    keys = [row[:width] for row in rows]
    faults = [f"{table.tag}: key {after} stands behind {before}"
              for before, after in zip(keys, keys[1:]) if after < before]
    if table.keys_are_unique:
        faults += [f"{table.tag}: key {key} stands {count} times"
                   for key, count in Counter(keys).items() if count > 1]
    if not rows:
        faults.append(f"{table.tag}: no rows")
    return faults


def _check_references(table: Table, rows: list[tuple[Cell, ...]], tables: Tables) -> list[str]:
    faults = []
    for place, column in enumerate(table.columns):
        if column.refers_to is None:
            continue
        known = {row[0] for row in tables.get(column.refers_to, [])}
        if column.may_be_none:
            known.add(-1)
        faults += [f"{table.tag}: {column.name} {row[place]} is not in <{column.refers_to}>: {row}"
                   for row in rows if row[place] not in known]
    names = [column.name for column in table.columns]
    instrument_of = {row[0]: row[1] for row in tables["TInstrumentParam"]}
    for suffix in ("", "_2"):
        if f"source_instrument{suffix}" in names:
            first, second = names.index(f"source_instrument{suffix}"), names.index(f"source_parameter{suffix}")
            faults += [f"{table.tag}: the source parameter {row[second]} is not one of instrument {row[first]}"
                       for row in rows if row[second] != -1 and instrument_of.get(row[second]) != row[first]]
    if "instrument" in names and "parameter" in names:
        first, second = names.index("instrument"), names.index("parameter")
        faults += [f"{table.tag}: the parameter {row[second]} is not one of instrument {row[first]}"
                   for row in rows
                   if -1 not in (row[first], row[second]) and instrument_of.get(row[second]) != row[first]]
    return faults


def _check_sense(tables: Tables) -> list[str]:
    missing = [f"<{name}> is not there" for name in TABLES if name not in tables]
    if missing:
        return missing
    return [fault for rule in (_signals, _parameters, _sources, _definitions, _limits, _polygons, _channels, _triggers,
                               _rotors, _virtual_modes, _codes) for fault in rule(tables)]


def _signals(tables: Tables) -> list[str]:
    properties = tables["TAppSignalProperty"]
    faults = []
    if [row[0] for row in tables["TApplicationSignal"]] != [row[0] for row in properties]:
        faults.append("<TApplicationSignal> and <TAppSignalProperty> do not hold the same ids")
    if sum(row[1] == 4 for row in properties) != 1:
        faults.append("<TAppSignalProperty>: one signal must be the time signal")
    return faults


def _parameters(tables: Tables) -> list[str]:
    faults = [f"<TInstrumentParam>: the name '{name}' stands {count} times"
              for name, count in Counter(row[2] for row in tables["TInstrumentParam"]).items() if count > 1]
    by_class: dict[Cell, set[Cell]] = {}
    for parameter, instrument, *_ in tables["TInstrumentParam"]:
        by_class.setdefault(instrument, set()).add(parameter)
    for table in TABLES.values():
        if table.instrument is not None:
            place = [column.name for column in table.key].index("parameter")
            unpaired = {row[place] for row in tables[table.name]} ^ by_class.get(table.instrument, set())
            if unpaired:
                faults.append(f"{table.tag}: {sorted(unpaired)} should be both in this table and among the parameters "
                              f"of instrument {table.instrument}")
    return faults


def _sources(tables: Tables) -> list[str]:
    """A parameter can only be made where its source is measured: in the same test step, with the same sensor."""
    measured: dict[Cell, set[tuple[Cell, Cell]]] = {}
    for mode, _, _, _, parameter, signal, *_ in tables["TIpParamAndStore"]:
        measured.setdefault(parameter, set()).add((mode, signal))
    faults = []
    for table in TABLES.values():
        names = [column.name for column in table.columns]
        for source in ("source_parameter", "source_parameter_2"):
            if source not in names:
                continue
            for row in tables[table.name]:
                parameter, origin = row[names.index("parameter")], row[names.index(source)]
                if origin != -1 and not measured[parameter] <= measured[origin]:
                    mode, signal = min(measured[parameter] - measured[origin])
                    faults.append(f"{table.tag}: parameter {parameter} is measured in mode {mode} with signal "
                                  f"{signal}, its source {origin} is not")
    return faults


def positions(definition: str) -> int | None:
    """Number of positions of an order definition, None for a bad one."""
    terms = definition.replace(" ", "").replace(",", ".").split(";")
    series = ["HX" in term for term in terms]
    for term in terms:
        letters = re.findall("[FOMLH]", term)
        if not TERM.fullmatch(term) or len(letters) != len(set(letters)):
            return None
        if "F" in letters and {"H", "M"} & set(letters):
            return None
    if any(series):
        group = series.count(True)
        if series != sorted(series):
            return None
        return len(terms) + (32 - len(terms)) // group * group
    return len(terms)


def _definitions(tables: Tables) -> list[str]:
    faults = []
    for table in TABLES.values():
        names = [column.name for column in table.columns]
        if "definition" in names:
            for row in tables[table.name]:
                definition = str(row[names.index("definition")])
                count = positions(definition)
                if count is None or count > 32 or (count > 1 and count % 2):
                    faults.append(f"{table.tag}: '{definition}' is no order definition with one or an even number "
                                  "of positions")
    for name in ("TIpSpectralValue", "TIpSpectralTrack", "TIpResidualTrack"):
        faults += [f"<{name}>: interpretation {row[3]} is out of use" for row in tables[name] if row[3] in (1, 2, 3, 4)]
    return faults


def _limits(tables: Tables) -> list[str]:
    stored = {row[:6] for row in tables["TIpParamAndStore"]}
    return [f"<{name}>: {row[:6]} is judged but not stored"
            for name in ("TLimSValue", "TLimCValue", "TLimArea", "TIpLearnParams")
            for row in tables[name] if row[:6] not in stored]


def _polygons(tables: Tables) -> list[str]:
    points = Counter(row[0] for row in tables["TIpPolygonValue"])
    faults = [f"<TIpPolygon>: polygon {row[0]} has fewer than two points"
              for row in tables["TIpPolygon"] if points[row[0]] < 2]
    wildcard = tables["TIpTrackPolygon"]
    used = [0] * len(wildcard)
    width = len(OPEN_KEY.split())
    for key in (row[:6] for row in tables["TIpParamAndStore"] if row[1] == 10001):
        hits = [place for place, row in enumerate(wildcard)
                if all(mine in (-1, theirs) for mine, theirs in zip(row[:width], key))]
        for place in hits:
            used[place] += 1
        if len(hits) > 1:
            faults.append(f"<TIpTrackPolygon>: {len(hits)} rows match the key {key}")
    faults += [f"<TIpTrackPolygon>: {row[:6]} matches no stored key"
               for row, count in zip(wildcard, used) if count == 0]
    faults += [f"<TIpTrackPolygon>: {row[:6]} goes by a polygon but names none"
               for row in wildcard if row[11] == 0 and row[6] == -1]
    return faults


def _channels(tables: Tables) -> list[str]:
    parents = {row[:2]: row[2] for row in tables["TChannelInheritance"]}
    faults = []
    for mode in (row[0] for row in tables["TMode"]):
        for channel in (row[0] for row in tables["TChannel"]):
            seen: list[Cell] = []
            current: Cell = channel
            while current != -1 and current not in seen:
                seen.append(current)
                current = parents.get((current, mode), parents.get((current, -1), -1))
            if current != -1:
                faults.append(f"<TChannelInheritance>: a circle in mode {mode}: {[*seen, current]}")
    return faults


def _triggers(tables: Tables) -> list[str]:
    faults = []
    for mode, trigger, dimension, kind, _, start, stop, step, *_ in tables["TTriggerParam"]:
        way = float(stop) - float(start)
        if dimension not in (1, 2, 3, 4) or kind not in (1, 2, 3) or float(step) <= 0:
            faults.append(f"<TTriggerParam>: {(mode, trigger, dimension)} is no usable dimension")
        if (kind == 2 and way <= 0) or (kind == 3 and way >= 0):
            faults.append(f"<TTriggerParam>: {(mode, trigger, dimension)} runs the other way than its kind")
    fields = {row[:2] for row in tables["TTriggerParam"]}
    trigger_of: dict[Cell, Cell] = {}
    for table in TABLES.values():
        names = [column.name for column in table.columns]
        if table.instrument is not None and "trigger" in names:
            trigger_of |= {row[0]: row[names.index("trigger")] for row in tables[table.name]}
    faults += [f"<TTriggerParam>: no field of trigger {trigger} in mode {mode}, where parameter {parameter} is measured"
               for mode, parameter, trigger in sorted({(row[0], row[4], trigger_of.get(row[4], -1))
                                                       for row in tables["TIpParamAndStore"]})
               if trigger != -1 and (mode, trigger) not in fields]
    return faults


def _rotors(tables: Tables) -> list[str]:
    turning = {row[:2] for row in tables["TRotorSpeed"]}
    with_order = {row[0] for row in tables["TBaseOrder"]}
    engaged = {row[:2]: row[2] for row in tables["TVirtual2PhysGear"]}
    faults = [f"<TRotorSpeed>: {ratio} is not {above} / {below}" for *_, ratio, above, below in tables["TRotorSpeed"]
              if float(ratio) != int(above) / int(below) or math.gcd(int(above), int(below)) != 1]
    for source, physical_mode, rotor in tables["TOrderSource2Rotor"]:
        if (physical_mode, rotor) not in turning:
            faults.append(f"<TOrderSource2Rotor>: rotor {rotor} stands still in physical mode {physical_mode}")
        if engaged.get((physical_mode, source), source) not in with_order:
            faults.append(f"<TOrderSource2Rotor>: order source {source} has no base order")
    return faults


def _virtual_modes(tables: Tables) -> list[str]:
    faults = []
    bits = 0
    for signal, start, stop, step, *_, state, _, _ in tables["TAutoModeParam"]:
        count = (float(stop) - float(start)) / float(step)
        if math.log2(count).is_integer():
            faults.append(f"<TAutoModeParam>: the {count:.0f} intervals of signal {signal} leave no code for 'none'")
        bits += math.ceil(math.log2(count)) + (2 if state else 0)
    if 2 ** (31 - bits) <= max(int(row[0]) for row in tables["TMode"]):
        faults.append(f"<TAutoModeParam>: {bits} bits leave too few for the test steps")
    if {row[1] for row in tables["TAutoModeParamOrder"]} != {row[0] for row in tables["TAutoModeParam"]}:
        faults.append("<TAutoModeParamOrder> and <TAutoModeParam> do not hold the same signals")
    return faults


def _codes(tables: Tables) -> list[str]:
    faults = [f"<TErrorGroup>: result {row[1]} is not one of 0 to 3"
              for row in tables["TErrorGroup"] if row[1] not in (0, 1, 2, 3)]
    for name in ("TIpSpectrum", "TIpModSpectrogram", "TIpSgSection"):
        columns = [column.name for column in TABLES[name].columns]
        for row in tables[name]:
            accumulation = row[columns.index("accumulation")]
            if accumulation not in (0, 20, 21, 22):
                faults.append(f"<{name}>: accumulation {accumulation} is out of use")
            if accumulation == 21 and "decay" in columns and float(row[columns.index("decay")]) < 1000:
                faults.append(f"<{name}>: the decay of parameter {row[0]} is below 1000")
    return faults
