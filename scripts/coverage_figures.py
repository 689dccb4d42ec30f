# What scripts/coverage tells: the lines and branches that were run, for each folder.
#   coverage_figures.py SOURCE-FOLDER PROFILE-FOLDER ["missing"]
import collections
import json
import os
import sys

LEAST = {"lines": 98, "branches": 90}


def read_lines(path):
    """file -> line -> how often it was run, of all functions and instantiations together."""
    lines = collections.defaultdict(dict)
    for text in open(path, encoding="utf-8"):
        if text.startswith("SF:"):
            file = text[3:].strip()
        elif text.startswith("DA:"):
            line, count = text[3:].split(",")[:2]
            lines[file][int(line)] = max(int(count), lines[file].get(int(line), 0))
    return lines


def read_branches(path):
    """file -> place of a condition -> how often it was true and false, of all instantiations together."""
    branches = collections.defaultdict(dict)
    for data in json.load(open(path, encoding="utf-8"))["data"]:
        for file in data["files"]:
            known = branches[file["filename"]]
            for line, column, end_line, end_column, was_true, was_false, *_ in file["branches"]:
                place = (line, column, end_line, end_column)
                before = known.get(place, (0, 0))
                known[place] = (before[0] + was_true, before[1] + was_false)
    return branches


def folder_of(file):
    parts = file.split("/")
    return "/".join(parts[1:3]) if parts[1] == "platform" and len(parts) > 3 else parts[1] if len(parts) > 2 else "."


def figures(row):
    parts = []
    for done, all_ in (row[:2], row[2:]):
        parts.append(f"{done:6} of {all_:6} {100 * done / all_ if all_ else 100:6.1f} %")
    return "   ".join(parts)


def main():
    root, profiles = sys.argv[1:3]
    lines = read_lines(profiles + "/all.lcov")
    branches = read_branches(profiles + "/all.text")
    folders = collections.defaultdict(lambda: [0, 0, 0, 0])
    missing = []
    seen = set()
    for path in sorted(lines):
        file = os.path.relpath(path, root)
        if not file.startswith("paramdb/") or file.startswith("paramdb/views/"):
            continue
        seen.add(file)
        row = folders[folder_of(file)]
        for line, count in sorted(lines[path].items()):
            row[0] += count > 0
            row[1] += 1
            if not count:
                missing.append(f"{file}:{line}: not run")
        for (line, column, _, _), counts in sorted(branches[path].items()):
            if counts == (0, 0) and lines[path].get(line, 0):
                continue  # known when compiling: no condition at all
            for count, outcome in zip(counts, ("true", "false")):
                row[2] += count > 0
                row[3] += 1
                if not count:
                    missing.append(f"{file}:{line}:{column}: never {outcome}")

    print(f"{'Folder':20} {'Lines':>25}   {'Branches':>25}")
    total = [sum(row[i] for row in folders.values()) for i in range(4)]
    for name in sorted(folders):
        print(f"{name:20} {figures(folders[name])}")
    print(f"{'All':20} {figures(total)}")
    if sys.argv[3:] == ["missing"]:
        print(*missing, sep="\n")

    # A source that no test program holds would not be told of at all.
    absent = [source for source in open(profiles + "/sources", encoding="utf-8").read().split() if source not in seen]
    for source in absent:
        print(f"{source}: in no test program", file=sys.stderr)
    low = [name for name, done, all_ in (("lines", *total[:2]), ("branches", *total[2:]))
           if 100 * done < LEAST[name] * all_]
    for name in low:
        print(f"Fewer {name} than {LEAST[name]} %", file=sys.stderr)
    sys.exit(1 if low or absent else 0)


main()
