"""Runs each command that a document shows and holds what it prints against what stands there.

    documents.py BUILD_FOLDER DOCUMENT...

What the word behind a block's fence says:

    console               commands behind "$ ", each with all that it prints beneath it
    console not run: WHY  the same, for what would change the machine or take too long
    LANGUAGE FILE         a file, which lies there for the commands that follow
    text                  a picture or a form: no command with its output

"..." on a line of its own stands for any lines. What only a test has to see, such as what brings
another process into the picture, stands in a comment around a block. A document's commands run in
one shell, from a fresh folder that looks like a checkout with its release build; `jighost` is in
the PATH, and cmake does nothing.
"""
import difflib
import itertools
import os
import re
import shlex
import subprocess
import sys
import tempfile
from pathlib import Path
from typing import NamedTuple

ROOT = Path(__file__).resolve().parents[2]
HOME = "/home/line"  # the fresh folder, in documents
SECONDS = 300  # for one document
MOST_LINES = 30  # shown of a command that differs
END = "\n--- end of a command ---\n"

# What differs from run to run, and what stands for it in the comparison.
VARYING = [
    (re.compile(r"\d{4}/\d\d/\d\d \d\d:\d\d:\d\d\.\d{3}"), "<moment>"),
    (re.compile(r" *\b\d+\.\d+ m?s\b"), " <time>"),
    (re.compile(r"\d{4}-\d\d-\d\dT\d\d:\d\d:\d\d[+-]\d\d:\d\d"), "<moment>"),
    (re.compile(r"\d{4}-\d\d-\d\d \d\d:\d\d:\d\d\.\d{3}"), "<moment>"),
    (re.compile(r"\d{4}-\d\d-\d\dT\d{6}(?=-)"), "<moment>"),
    (re.compile(r"\d{4}-\d\d-\d\dT\d\d:\d\d:\d\d\.\d{3}[+-]\d\d:\d\d"), "<moment>"),
    (re.compile(r"\b[0-9a-f]{8}(-[0-9a-f]{4}){3}-[0-9a-f]{12}\b"), "<number>"),
    (re.compile(r"\b[0-9a-f]{64}\b"), "<hash>"),
    (re.compile(r'"jighost": ".*"'), '"jighost": <version>'),
    (re.compile(r"\d{8}_\d{6}_[\w.-]+_\d+\.jsonl"), "<recording>"),
    (re.compile(r"\bprocess \d+( on [\w.-]+)?"), "process <number>"),
    (re.compile(r'"(at|started_at)": ?\d+'), r'"\1":<moment>'),
    (re.compile(r'"(start|time)_ms": ?[\d.e-]+'), r'"\1_ms":<time>'),
    (re.compile(r"^commit \S+$", re.MULTILINE), "commit <commit>"),
    (re.compile(r"^build .* bits$", re.MULTILINE), "build <compiler>"),
    (re.compile(r" +$", re.MULTILINE), ""),
]


class Wrong(Exception):
    """A document that can't be checked."""


class Block(NamedTuple):
    kind: str  # the words behind the fence
    line: int  # of the fence
    lines: list


class Command(NamedTuple):
    place: str  # DOCUMENT:LINE
    text: str
    expected: str


def blocks_of(document, text):
    """The fenced blocks of a document, in their order."""
    block = None
    for number, line in enumerate(text.splitlines(), 1):
        if block is not None and line.strip() == "```":
            yield block
            block = None
        elif block is not None:
            block.lines.append(line)
        elif line.strip().startswith("```"):
            block = Block(line.strip()[3:], number, [])
    if block is not None:
        raise Wrong(f"{document}:{block.line}: the block has no end")


def commands_of(document, block):
    """The commands of a console block, each with the output that stands beneath it."""
    places = [i for i, line in enumerate(block.lines) if line.startswith("$ ")]
    if not places or places[0] != 0:
        raise Wrong(f"{document}:{block.line}: a console block begins with a command")
    for begin, end in zip(places, [*places[1:], len(block.lines)]):
        yield Command(f"{document}:{block.line + 1 + begin}", block.lines[begin][2:],
                      "\n".join(block.lines[begin + 1:end]))


def steps_of(document, text):
    """What a document has done: files, as pairs of name and content, and lists of commands."""
    for block in blocks_of(document, text):
        kind, _, rest = block.kind.partition(" ")
        if block.kind == "console":
            yield list(commands_of(document, block))
        elif kind == "console" and re.match(r"not run: \S", rest):
            pass
        elif block.kind == "text" and not any(line.startswith("$ ") for line in block.lines):
            pass
        elif kind not in ("", "console", "text") and re.fullmatch(r"[\w.]+", rest):
            yield rest, "".join(line + "\n" for line in block.lines)
        else:
            raise Wrong(f'{document}:{block.line}: expected "console", "console not run: WHY", '
                        f'"LANGUAGE FILE" or "text" without a command, got "{block.kind}"')


def script_of(steps):
    """One shell script for all steps: what stands between two ENDs is a command's output."""
    lines = []
    for step in steps:
        lines.append('cd "$HOME"')
        if isinstance(step, tuple):
            lines.append(f"printf %s {shlex.quote(step[1])} >{step[0]}")
        else:
            for command in step:
                lines += [f"eval {shlex.quote(command.text)}",
                          f"__status=$?; printf %s {shlex.quote(END)}; (exit $__status)"]
    return "\n".join(lines) + "\n"


def make_checkout(folder, build):
    """Links to all that a checkout has, and to programs, libraries and folders of the build, which
    may hold what former runs left. Both take new files."""
    (folder / "build/release").mkdir(parents=True)
    for entry in ROOT.iterdir():
        if entry.name != "build" and not entry.name.startswith("."):
            (folder / entry.name).symlink_to(entry)
    for entry in build.iterdir():
        if os.access(entry, os.X_OK):
            (folder / "build/release" / entry.name).symlink_to(entry)
    (folder / "build/host").symlink_to("release")


def own_blocks():
    """Words ahead of a command that give it shared blocks of its own, where the system can."""
    words = ["unshare", "--map-current-user", "--ipc"]
    allowed = subprocess.run([*words, "true"], stderr=subprocess.DEVNULL, check=False)
    return words if allowed.returncode == 0 else []


def run(script, build):
    """What a shell prints for the script, on its two outputs together."""
    with tempfile.TemporaryDirectory() as name:
        folder, tools = Path(name, "line"), Path(name, "tools")
        make_checkout(folder, build)
        tools.mkdir()
        (tools / "cmake").symlink_to("/bin/true")
        environment = {"HOME": str(folder), "LC_ALL": "C.UTF-8", "TERM": "dumb",
                       "PATH": f"{tools}:{build}:{os.environ['PATH']}"}
        Path(name, "script").write_text(script, encoding="utf-8")
        with open(Path(name, "output"), "w+", encoding="utf-8", errors="replace") as output:
            subprocess.run([*own_blocks(), "bash", str(Path(name, "script"))], cwd=folder,
                           env=environment, stdin=subprocess.DEVNULL, stdout=output,
                           stderr=subprocess.STDOUT, timeout=SECONDS, check=False)
            output.seek(0)
            return output.read().replace(str(folder), HOME)


def comparable(text):
    for pattern, replacement in VARYING:
        text = pattern.sub(replacement, text)
    return text.rstrip("\n")


def is_as_expected(expected, actual):
    pattern = "".join(r"(.*\n)*" if line == "..." else re.escape(line) + r"\n"
                      for line in expected.split("\n"))
    return re.fullmatch(pattern, actual + "\n") is not None


def difference(command, actual):
    """Lines that show what a command prints in place of what stands in the document, or none."""
    expected, actual = comparable(command.expected), comparable(actual)
    if is_as_expected(expected, actual):
        return []
    lines = difflib.unified_diff(expected.split("\n"), actual.split("\n"), "document", "printed",
                                 n=1, lineterm="")
    return [f"{command.place}: $ {command.text}", *itertools.islice(lines, MOST_LINES)]


def check(document, text, build):
    """All that is stale in a document, as lines; and how many commands were run."""
    try:
        steps = list(steps_of(document, text))
    except Wrong as error:
        return [str(error)], 0
    commands = [command for step in steps if isinstance(step, list) for command in step]
    outputs = run(script_of(steps), build).split(END)
    if len(outputs) != len(commands) + 1:
        stopped = commands[len(outputs) - 1]
        return [f"{stopped.place}: the shell ended in: $ {stopped.text}", outputs[-1]], 0
    wrong = [difference(command, actual) for command, actual in zip(commands, outputs)]
    return [line for lines in wrong for line in lines], len(commands)


def main(build, *documents):
    stale = False
    for document in documents:
        wrong, count = check(document, Path(document).read_text(encoding="utf-8"),
                             Path(build).resolve())
        print("\n".join([*wrong, f"{document}: {count} commands"]))
        stale = stale or bool(wrong)
    return 1 if stale else 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
