# What scripts/compare-instructions does; the usage stands there.
import concurrent.futures
import json
import os
import re
import subprocess
import sys
import tempfile

SOURCE = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
KEPT = os.path.join(SOURCE, "benchmarks", "instructions.json")
MOST_GROWTH = 0.03
COUNTED = "benchmarks::CountedWork(*)"

# The C library picks its functions for memory, texts and logarithms by what the processor can do. These settings make
# it pick the same ones everywhere.
TUNABLES = ":".join([
    "glibc.cpu.hwcaps=" + ",".join("-" + name for name in (
        "AVX512F", "AVX512VL", "AVX512BW", "AVX2", "AVX", "AVX_Fast_Unaligned_Load", "FMA", "FMA4", "ERMS", "FSRM",
        "RTM", "BMI1", "BMI2", "LZCNT", "MOVBE", "SSE4_1", "SSE4_2", "SSSE3")),
    "glibc.cpu.x86_data_cache_size=32768",
    "glibc.cpu.x86_shared_cache_size=1048576",
    "glibc.cpu.x86_non_temporal_threshold=786432",
])


def version_of(*command):
    """What a program tells of itself, without the name by which it was called."""
    told = subprocess.run(command, check=True, stdout=subprocess.PIPE, text=True).stdout
    return told.splitlines()[0].split(" ", 1)[1]


def environment_of(build):
    """What the number of instructions depends on beside the sources."""
    with open(os.path.join(build, "CMakeCache.txt"), encoding="utf-8") as file:
        cache = dict(re.findall(r"^(\w+):\w+=(.*)$", file.read(), re.MULTILINE))
    kind = cache["CMAKE_BUILD_TYPE"]
    flags = f"{cache['CMAKE_CXX_FLAGS']} {cache['CMAKE_CXX_FLAGS_' + kind.upper()]}".strip()
    return {
        "compiler": version_of(cache["CMAKE_CXX_COMPILER"], "--version"),
        "flags": flags,
        "unity build": cache["PARAMDB_UNITY_BUILD"],
        "protections": cache.get("PARAMDB_HARDEN", "OFF"),
        "C library": version_of("ldd", "--version"),
    }


def count(program, work):
    with tempfile.TemporaryDirectory() as folder:
        figures = os.path.join(folder, "figures")
        command = ["valgrind", "--tool=callgrind", "--toggle-collect=" + COUNTED, "--callgrind-out-file=" + figures,
                   program, work]
        # An environment of its own, since its length moves the stack.
        run = subprocess.run(command, env={"PATH": os.environ["PATH"], "GLIBC_TUNABLES": TUNABLES, "TMPDIR": "/tmp"},
                             stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True, check=False)
        if run.returncode != 0:
            raise SystemExit(f"{program} {work} has failed:\n{run.stdout}")
        with open(figures, encoding="utf-8", errors="replace") as file:
            for line in file:
                if line.startswith("totals:"):
                    return int(line.split()[1])
    raise SystemExit(f"{program} {work} has no figure")


def measure(build):
    program = os.path.join(os.path.abspath(build), "benchmarks", "instruction_work")
    works = subprocess.run([program, "--list"], check=True, stdout=subprocess.PIPE, text=True).stdout.split()
    with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
        counts = pool.map(lambda work: count(program, work), works)
        return {"environment": environment_of(build), "instructions": dict(zip(works, counts))}


def compare(before, after):
    """The lines to print, and whether a work has grown too much."""
    lines = [f"{'work':<20} {'before':>14} {'after':>14} {'growth':>8}"]
    has_grown = False
    has_shrunk = False
    for work in dict.fromkeys([*before["instructions"], *after["instructions"]]):
        old = before["instructions"].get(work)
        new = after["instructions"].get(work)
        line = f"{work:<20} {'' if old is None else f'{old:,}':>14} {'' if new is None else f'{new:,}':>14}"
        if old is not None and new is not None:
            line += f" {new / old - 1:>+8.1%}"
            if new > old * (1 + MOST_GROWTH):
                has_grown = True
                line += "  grown"
            has_shrunk = has_shrunk or new < old * (1 - MOST_GROWTH)
        lines.append(line)
    differences = [name for name in before["environment"]
                   if before["environment"][name] != after["environment"].get(name)]
    for name in differences:
        lines.append(f"Another {name}: {before['environment'][name]!r} before, {after['environment'].get(name)!r} now")
    if differences:
        lines.append("The figures are not of one kind, so growth says nothing.")
    elif has_grown:
        lines.append(f"A work takes more than {MOST_GROWTH:.0%} more instructions than before.")
    elif has_shrunk:
        lines.append("A work takes fewer instructions than before; once that is to stay, keep the new figures.")
    return lines, has_grown and not differences


def keep(figures, path):
    with open(path, "w", encoding="utf-8") as file:
        json.dump(figures, file, indent=2)
        file.write("\n")


def main(arguments):
    release = os.path.join(SOURCE, "build", "release")
    options = [argument for argument in arguments if argument.startswith("-")]
    builds = [argument for argument in arguments if not argument.startswith("-")]
    if options == ["--keep"] and len(builds) <= 1:
        keep(measure(*builds or [release]), KEPT)
        return 0
    if options == ["--kept"] and len(builds) <= 1:
        with open(KEPT, encoding="utf-8") as file:
            before = json.load(file)
        after = measure(*builds or [release])
    elif not options and len(builds) == 2:
        before, after = map(measure, builds)
    else:
        print("usage: scripts/compare-instructions BUILD-A BUILD-B | --kept [BUILD] | --keep [BUILD]", file=sys.stderr)
        return 2
    lines, has_grown = compare(before, after)
    print("\n".join(lines))
    return 1 if has_grown else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
