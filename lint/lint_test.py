"""What the checks of this folder find in small trees, and what they let pass."""
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

from units import checks, touched_units

RULES = """
[stands_on]
"top/" = ["red/", "blue/"]
"beside/" = ["base/", "red/Open.h"]
"red/" = ["base/"]
"blue/" = ["base/"]
"base/" = []
[features]
folders = ["red/", "blue/"]
[features.neighbours."red/One.cpp"]
"blue/Two.h" = "it has one"
[system]
folders = ["base/"]
"""

# A tree in which all is well: each form of include that is allowed, and no rule without a use.
GOOD = {
    "top/Top.cpp": '#include <map>\n#include "red/One.h"\n#include "base/Base.h"\n',
    "beside/Beside.cpp": '#include "red/Open.h"\n',
    "red/One.cpp": '#include "red/One.h"\n#include "blue/Two.h"\n',
    "red/One.h": '#include "base/Base.h"\n',
    "red/Open.h": "",
    "blue/Two.h": "",
    "base/Base.h": '#ifdef _WIN32\n#endif\n  #  include "base/Deep.h"\n',
    "base/Deep.h": "",
}

# What is changed in the good tree, and how the one line begins that the check then prints.
BAD = {
    "upward": ({"base/Deep.h": '\n#include "red/Open.h"'},
               "base/Deep.h:2: red/Open.h lies upward: base/ stands on nothing"),
    "sideways": ({"beside/Beside.cpp": '#include "red/Open.h"\n#include "red/One.h"'},
                 "beside/Beside.cpp:2: red/One.h lies sideways: beside/ stands on base/ and red/"),
    "neighbour": ({"red/Open.h": '#include "red/One.h"'},
                  "red/Open.h:1: may not include its neighbour red/One.h"),
    "neighbour of another folder": ({"red/One.h": '#include "blue/Two.h"\n#include "base/Base.h"'},
                                    "red/One.h:1: may not include its neighbour blue/Two.h"),
    "circle": ({"base/Deep.h": '#include "base/Base.h"'}, "a circle of files: base/"),
    "no layer": ({"side/New.cpp": '#include "top/Top.cpp"'}, "side/New.cpp:1: stands in no layer"),
    "no file": ({"red/Open.h": '#include "Open.h"'}, "red/Open.h:1: there is no Open.h"),
    "angles": ({"top/Top.cpp": '#include <red/One.h>'}, "top/Top.cpp:1: red/One.h is a file of"),
    "unused neighbour": ({"red/One.cpp": '#include "red/One.h"'},
                         "layers.toml: red/One.cpp does not include its neighbour blue/Two.h"),
    "unused file": ({"beside/Beside.cpp": ""}, "layers.toml: nobody above includes red/Open.h"),
    "system": ({"top/Top.cpp": "\n#if defined(_WIN32)\n#endif"},
               "top/Top.cpp:2: asks for the system, which only base/ may"),
    "empty layer": ({"top/Top.cpp": None}, "layers.toml: there is no top/"),
}


def tree_with(changes):
    return {path: text for path, text in (GOOD | changes).items() if text is not None}


class LayersTest(unittest.TestCase):
    def check(self, rules, tree):
        """Runs the program as `./dev lint` does, in a tree of its own; gives its code and lines."""
        with tempfile.TemporaryDirectory() as folder:
            for program in Path(__file__).parent.glob("*.py"):
                tree = tree | {f"lint/{program.name}": program.read_text("utf-8")}
            for path, text in (tree | {"lint/layers.toml": rules}).items():
                file = Path(folder, path)
                file.parent.mkdir(exist_ok=True)
                file.write_text(text, "utf-8")
            subprocess.run(["git", "init", "-q"], cwd=folder, check=True)
            run = subprocess.run([sys.executable, "lint/layers.py"], cwd=folder,
                                 capture_output=True, text=True)
            return run.returncode, run.stderr.splitlines()

    def test_passes_what_is_allowed(self):
        self.assertEqual(self.check(RULES, GOOD), (0, []))

    def test_finds_each_kind(self):
        for kind, (changes, expected) in BAD.items():
            with self.subTest(kind):
                code, lines = self.check(RULES, tree_with(changes))
                self.assertEqual(code, 1)
                self.assertEqual([line[:len(expected)] for line in lines], [expected])

    def test_finds_faults_in_the_rules(self):
        for good, bad, expected in [
                ('"base/" = []', '"base/" = ["top/"]', "layers.toml: a circle of layers: "),
                ("it has one", "", "red/One.cpp:2: may not include its neighbour"),
                ("red/Open.h", "red/Gone.h", "layers.toml: there is no red/Gone.h")]:
            code, lines = self.check(RULES.replace(good, bad), GOOD)
            self.assertEqual(code, 1)
            self.assertEqual(lines[0][:len(expected)], expected)


class UnitsTest(unittest.TestCase):
    def test_follows_a_change_to_all_that_it_can_touch(self):
        units = {"batch": {"top/Top.cpp", "blue/Other.cpp"}, "single": {"beside/Beside.cpp"}}
        for changed, touched in [
                ({"base/Deep.h"}, ["batch"]),  # by Base.h and One.h
                ({"beside/Beside.cpp", "red/Open.h"}, ["single"]),
                ({"README.md"}, []),
                ({"base/CMakeLists.txt"}, ["batch", "single"]),
                ({"red/.clang-tidy"}, ["batch", "single"])]:
            self.assertEqual(touched_units(units, GOOD, changed), touched)

    def test_leaves_out_what_does_not_pay(self):
        for unit, inside, left_out in [
                ("Module.cpp", {"module/Module.cpp"}, False),
                ("main.cpp", {"jighost/main.cpp"}, True),
                ("unity_0.cxx", {"tests/Test.cpp", "link/Link.cpp"}, False),
                ("unity_1.cxx", {"tests/Test.cpp"}, True)]:
            self.assertEqual("-clang-analyzer-*" in checks(unit, inside), left_out)
            self.assertEqual("suspicious-include" in checks(unit, inside), unit.endswith(".cxx"))


if __name__ == "__main__":
    unittest.main()
