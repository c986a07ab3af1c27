"""What the check of documents finds in small ones, and what it lets pass."""
import tempfile
import unittest
from pathlib import Path

from documents import check

# All that a document may have, with nothing stale.
GOOD = """
```text
a picture
```
```sh greet.sh
echo 2026/11/22 21:06:59.901 here
echo "took 0.016 s in $PWD"
```
<!--
```console
$ mkdir sub
```
-->
```console
$ cd sub && sh ../greet.sh
2001/01/01 00:00:00.000 here
took 12.5 s in /home/line/sub
$ false
$ echo $?; echo to the end >&2
1
to the end
```
```console
$ pwd; seq 9
/home/line
1
...
8
9
```
```console not run: takes a year
$ sleep 1y
slept
```
"""

# What is changed in it, and the first line that the check then prints.
STALE = {
    "a letter": ("to the end\n", "to the End\n", "x.md:19: $ echo $?; echo to the end >&2"),
    "a line too few": ("8\n9", "8", "x.md:24: $ pwd; seq 9"),
    "a line too many": ("8\n9", "8\n9\n10", "x.md:24: $ pwd; seq 9"),
    "an order": ("8\n9", "9\n8", "x.md:24: $ pwd; seq 9"),
    "output of a silent command": ("$ mkdir sub", "$ mkdir sub\nmade", "x.md:11: $ mkdir sub"),
    "another folder": ("/home/line\n", "/home/other\n", "x.md:24: $ pwd; seq 9"),
    "a file": ("took 0", "lasted 0", "x.md:15: $ cd sub && sh ../greet.sh"),
    "the shell's end": ("$ false", "$ exit 3", "x.md:18: the shell ended in: $ exit 3"),
    "a command in a picture": ("a picture", "$ ls", "x.md:2: expected \"console\", "),
    "a mark without a reason": ("not run: takes a year", "not run", "x.md:31: expected "),
    "a block of no kind": ("```text", "```", "x.md:2: expected "),
    "a language alone": ("sh greet.sh", "sh", "x.md:5: expected "),
    "output alone": ("$ mkdir sub", "mkdir sub", "x.md:10: a console block begins with a command"),
    "a block without an end": ("slept\n```", "slept", "x.md:31: the block has no end"),
}


class DocumentsTest(unittest.TestCase):
    def test_lets_pass_what_is_current(self):
        self.assertEqual(self.check(GOOD), ([], 5))

    def test_finds_what_is_stale(self):
        for name, (old, new, line) in STALE.items():
            with self.subTest(name):
                self.assertIn(old, GOOD)
                wrong, _ = self.check(GOOD.replace(old, new))
                self.assertEqual(wrong[0][:len(line)], line)

    def check(self, text):
        with tempfile.TemporaryDirectory() as build:
            return check("x.md", text, Path(build))


if __name__ == "__main__":
    unittest.main()
