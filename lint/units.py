"""Prints what clang-tidy has to look at, a line for its checks and a line for the file: each file
that a build compiles, or those alone that what has changed since a base can touch.
Usage: units.py BUILD [BASE]"""
import json
import subprocess
import sys
from pathlib import Path

from includes import include_graph, includes_of, read_tree, with_includers

# A change of one of these touches all.
RULES = (".clang-tidy", "CMakeLists.txt", "CMakePresets.json", "dev", ".cmake", ".py")

# The bench stands on the largest headers of others. Checks that walk through those headers' code take
# three quarters of its time; they are kept for what runs in somebody's host, which of traces has the
# writer alone.
BENCH = ("jighost/", "bodylnk/", "tests/", "bench/", "fuzz/", "trace/EntryReader.cpp",
         "trace/TraceReader.cpp")
LEFT_OUT = ["-clang-analyzer-*", "-performance-unnecessary-value-param"]

# Of a file that the build writes to compile several at a time.
TOGETHER = ["-bugprone-suspicious-include"]


def compiled_units(build):
    """The files of the tree in each file that the build compiles; some it writes itself."""
    units = {}
    for command in json.loads(Path(build, "compile_commands.json").read_text("utf-8")):
        file = Path(command["file"])
        inside = [file]
        if file.is_relative_to(Path(build).resolve()):
            inside = [Path(name) for _, _, name in includes_of(file.read_text("utf-8"))]
        units[str(file)] = {str(path.relative_to(Path.cwd())) for path in inside}
    return units


def touched_units(units, tree, changed):
    """The units that a change of these files touches."""
    if any(path.endswith(RULES) for path in changed):
        return list(units)
    touched = with_includers(include_graph(tree), changed)
    return [unit for unit, inside in units.items() if inside & touched]


def checks(unit, inside):
    """What a unit of these files adds to the checks of .clang-tidy."""
    return ",".join((LEFT_OUT if all(path.startswith(BENCH) for path in inside) else []) +
                    (TOGETHER if unit.endswith(".cxx") else []))


def changed_since(base):
    """Files that differ from where the base was left, and new ones that git does not know yet."""
    def lines(*command):
        run = subprocess.run(["git", *command], check=True, capture_output=True, text=True)
        return run.stdout.splitlines()
    return {*lines("diff", "--name-only", "--no-renames", "--merge-base", base),
            *lines("ls-files", "--others", "--exclude-standard")}


def main(build, base=None):
    units = compiled_units(build)
    found = touched_units(units, read_tree(), changed_since(base)) if base else list(units)
    # The largest, which the build compiles last, go first, so that no processor waits for them.
    for unit in reversed(found):
        print(f"--checks={checks(unit, units[unit])}\n{unit}")


if __name__ == "__main__":
    main(*sys.argv[1:])
