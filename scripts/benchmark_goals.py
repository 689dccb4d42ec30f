# What scripts/benchmark tells: the goals, and what the programs have measured.
#   benchmark_goals.py FOLDER [JSON-FILE]
# The folder holds a JSON file of each program.
import json
import os
import sys
from dataclasses import dataclass

SIZES = ("rows", "lines", "keys", "parameters")


@dataclass
class Goal:
    """A ratio, or bytes for each row, of one work at one size."""

    text: str
    program: str
    work: str
    size: int
    column: str
    limit: float
    at_least: bool = False  # else at most
    against: str = ""  # the work by whose value that of this one is divided
    told: str = ""  # the column in which the program tells the limit itself

    def is_met(self, value):
        return value >= self.limit if self.at_least else value <= self.limit


def goals():
    hundred_thousand, million = 100_000, 1_000_000
    times = "paramdb / this"
    for size, limit in ((10_000, 0.9), (hundred_thousand, 0.75), (million, 0.75)):
        yield Goal("load, time / simdjson", "load", "simdjson", size, times, limit)
    for size in (hundred_thousand, million):
        yield Goal("load, time / SQLite", "load", "SQLite", size, times, 0.6)
    for size in (hundred_thousand, million):
        yield Goal("load, time / plain model", "load", "plain model", size, times, 0.25)
    for size in (hundred_thousand, million):
        yield Goal("load, random order / sorted", "load", "paramdb, random order", size, "ms", 2, against="paramdb")
    yield Goal("load to ready, time / plain model", "ready", "plain model", million, times, 0.1)
    yield Goal("bytes/row kept, with the lake", "load", "paramdb", million, "bytes/row", 160)
    yield Goal("bytes/row kept, tables alone", "load", "paramdb", million, "bytes/row of tables", 80)
    yield Goal("peak memory / simdjson", "load", "paramdb", million, "peak bytes/row", 0.8, against="simdjson")
    for work, limit in (("name to id, hit", 1.1), ("id to name, hit", 1.0)):
        for size in (1_000, hundred_thousand):
            yield Goal(f"{work}, time / flat_hash_map", "query", work, size, "paramdb / flat_hash_map", limit,
                       told="at most")
    for size, limit in ((100, 10), (8_000, 100), (80_000, 1_000)):
        yield Goal("nice text of a key, times faster than counting", "text", "nice text of a key", size,
                   "times faster", limit, at_least=True, told="goal")
    for size, rows, limit in ((3_900, 30, 4), (39_000, 308, 15), (388_000, 3086, 40)):
        yield Goal(f"{rows} rows with wildcards, times faster than loops", "derive", f"wildcards, {rows} rows", size,
                   "times faster", limit, at_least=True, told="goal")
    for modes in ("alike", "differ"):
        yield Goal(f"channels, modes {modes}, times faster than loops", "derive", f"channels, modes {modes}", million,
                   "times faster", 50, at_least=True, told="goal")
    yield Goal("merge 100 files, time / reading", "merge", "read and merge 100 files", million, "times reading", 3,
               told="at most")


def row_of(figures, work, size):
    for row in figures:
        if row["work"] == work and size in (row.get(name) for name in SIZES):
            return row
    return None


def measured(goal, figures):
    """The value, or None where the work was not measured. A program that tells another goal is an error."""
    row = row_of(figures, goal.work, goal.size)
    if row is None or goal.column not in row:
        return None
    if goal.told and row.get(goal.told) != goal.limit:
        raise SystemExit(f"{goal.program}_benchmark tells another goal for: {goal.work}, {goal.size}")
    if not goal.against:
        return row[goal.column]
    other = row_of(figures, goal.against, goal.size)
    return row[goal.column] / other[goal.column] if other is not None else None


def results(figures_of_programs):
    """An object for each goal, as it stands in the JSON file."""
    found = []
    for goal in goals():
        value = measured(goal, figures_of_programs[goal.program])
        found.append({
            "goal": goal.text,
            "size": goal.size,
            "value": value,
            "at least" if goal.at_least else "at most": goal.limit,
            "met": None if value is None else goal.is_met(value),
        })
    return found


def number(value):
    return f"{value:,.0f}" if value >= 100 else f"{value:.2f}"


def table(found):
    lines = [("work", "size", "measured", "goal", "met")]
    for result in found:
        value = result["value"]
        at_least = "at least" in result
        limit = number(result["at least" if at_least else "at most"])
        lines.append((
            result["goal"],
            f"{result['size']:,}",
            "not measured" if value is None else number(value),
            f"{'at least' if at_least else 'at most'} {limit}",
            "" if value is None else "yes" if result["met"] else "no",
        ))
    widths = [max(len(line[column]) for line in lines) for column in range(5)]
    texts = []
    for line in lines:
        cells = [text.ljust(width) if column in (0, 4) else text.rjust(width)
                 for column, (text, width) in enumerate(zip(line, widths))]
        texts.append("| " + " | ".join(cells) + " |")
    rule = [("-" * (width + 2)) if column in (0, 4) else "-" * (width + 1) + ":" for column, width in enumerate(widths)]
    texts.insert(1, "|" + "|".join(rule) + "|")
    return "\n".join(texts)


def main(folder, json_file=None):
    figures = {}
    for program in ("lake", "load", "ready", "reload", "merge", "derive", "query", "text"):
        with open(os.path.join(folder, program + ".json"), encoding="utf-8") as file:
            figures[program] = json.load(file)
    found = results(figures)
    print(table(found))
    if json_file is not None:
        with open(json_file, "w", encoding="utf-8") as file:
            json.dump({"goals": found, "figures": figures}, file, indent=1)
            file.write("\n")


if __name__ == "__main__":
    main(*sys.argv[1:])
