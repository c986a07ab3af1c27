"""Holds every #include of the tree against layers.toml; a line for whatever is against it."""
import graphlib
import re
import sys
import tomllib
from pathlib import Path

from includes import include_graph, includes_of, read_tree

SYSTEM_QUESTION = re.compile(
    r"^\s*#\s*(if|elif).*\b(_?WIN(32|64)|__MINGW\w+|__CYGWIN__|_MSC_VER|__linux__|__unix__|"
    r"__APPLE__)\b")


def findings(rules, tree):
    """All that is wrong in a tree, which is a text for each path."""
    try:
        layers = Layers(rules, tree)
    except graphlib.CycleError as error:
        return ["layers.toml: a circle of layers: " + " stands below ".join(error.args[1])]
    found = layers.unknown_names()
    for path, text in tree.items():
        found += [f"{path}:{line}: {wrong}" for line, wrong in layers.wrong_lines(path, text)]
    return found + layers.unused_names() + circles(tree)


def circles(tree):
    """One circle of files that include each other, if there is any."""
    try:
        graphlib.TopologicalSorter(include_graph(tree)).prepare()
    except graphlib.CycleError as error:
        return ["a circle of files: " + " is included by ".join(error.args[1])]
    return []


class Layers:
    """The rules, and which of the names in them were of use so far."""

    def __init__(self, rules, tree):
        self.tree = tree
        self.stands_on = rules["stands_on"]
        self.features = tuple(rules["features"]["folders"])
        self.neighbours = rules["features"]["neighbours"]
        self.system = tuple(rules["system"]["folders"])
        self.used = set()
        self.reach = {}
        for layer in graphlib.TopologicalSorter(self.stands_on).static_order():
            below = self.stands_on.get(layer, [])
            self.reach[layer] = set(below).union(*(self.reach[name] for name in below))

    def layer_of(self, path):
        """The longest name in the rules that covers a file, or none."""
        names = [name for name in self.stands_on
                 if path == name or name.endswith("/") and path.startswith(name)]
        return max(names, key=len, default=None)

    def wrong_lines(self, path, text):
        """Yields line and text of whatever is wrong in a file."""
        if self.layer_of(path) is None:
            yield 1, "stands in no layer"
            return
        for line, in_quotes, name in includes_of(text):
            if wrong := self.wrong_include(path, in_quotes, name):
                yield line, wrong
        if not path.startswith(self.system):
            for line, code in enumerate(text.splitlines(), start=1):
                if SYSTEM_QUESTION.match(code):
                    yield line, ("asks for the system, which only " + " and ".join(self.system) +
                                 " may")

    def wrong_include(self, path, in_quotes, name):
        """What is wrong with one include, or none."""
        if in_quotes != (name in self.tree):
            return (f"there is no {name}; files are named from the top of the tree" if in_quotes
                    else f"{name} is a file of the tree and stands in quotes")
        if not in_quotes:
            return None
        if path.startswith(self.features) and name.startswith(self.features):
            return self.wrong_neighbour(path, name)
        return self.wrong_direction(path, name)

    def wrong_neighbour(self, path, name):
        if path == name.removesuffix("h") + "cpp":
            return None
        self.used.add((path, name))
        if self.neighbours.get(path, {}).get(name):
            return None
        return f"may not include its neighbour {name} without a reason in layers.toml"

    def wrong_direction(self, path, name):
        layer, other = self.layer_of(path), self.layer_of(name)
        if other is None or other == layer or other in self.reach[layer]:
            return None
        if name in self.reach[layer]:
            self.used.add(name)
            return None
        direction = "upward" if layer in self.reach[other] else "sideways"
        below = " and ".join(self.stands_on[layer]) or "nothing"
        return f"{name} lies {direction}: {layer} stands on {below}"

    def unknown_names(self):
        """Names of the rules that no file has."""
        names = [*self.stands_on, *self.features, self.system, *self.single_files()]
        return [f"layers.toml: there is no {name}" for name in names
                if not any(path == name or path.startswith(name) for path in self.tree)]

    def unused_names(self):
        """What the rules allow though nobody needs it."""
        pairs = [(path, name) for path, names in self.neighbours.items() for name in names]
        return ([f"layers.toml: {path} does not include its neighbour {name}"
                 for path, name in pairs if (path, name) not in self.used] +
                [f"layers.toml: nobody above includes {name}"
                 for name in self.single_files() if name not in self.used])

    def single_files(self):
        """Files that stand on the right, where all others are layers."""
        return [name for below in self.stands_on.values() for name in below
                if name not in self.stands_on]


if __name__ == "__main__":
    wrong = findings(
        tomllib.loads(Path(__file__).with_name("layers.toml").read_text("utf-8")), read_tree())
    print("\n".join(wrong), end="\n" if wrong else "", file=sys.stderr)
    sys.exit(1 if wrong else 0)
