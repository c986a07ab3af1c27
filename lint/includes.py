"""The C++ files of the tree, and which of them includes which."""
import re
import subprocess
from pathlib import Path

INCLUDE = re.compile(r'^\s*#\s*include\s*(["<])([^">]+)[">]')


def read_tree():
    """The text of each C++ file that git knows or would add, by its path from the top."""
    listing = subprocess.run(
        ["git", "ls-files", "-z", "-co", "--exclude-standard", "*.cpp", "*.h"],
        check=True, capture_output=True, text=True).stdout
    paths = sorted(set(listing.split("\0")) - {""})
    return {path: Path(path).read_text("utf-8") for path in paths if Path(path).exists()}


def includes_of(text):
    """Yields the line's number, whether in quotes, and the name, of each include."""
    for number, line in enumerate(text.splitlines(), start=1):
        if match := INCLUDE.match(line):
            yield number, match[1] == '"', match[2]


def include_graph(tree):
    """The files of the tree that each of them includes."""
    return {path: {name for _, _, name in includes_of(text) if name in tree}
            for path, text in tree.items()}


def with_includers(graph, changed):
    """The changed files, and all that include one of them, at whatever remove."""
    found = set(changed)
    while more := {path for path, names in graph.items() if names & found} - found:
        found |= more
    return found
