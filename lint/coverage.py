"""Prints by folder what the tests ran: lines, and branches but for those that an exception takes.
Usage: coverage.py SUMMARY, which gcovr --json-summary writes"""
import json
import sys
from collections import Counter
from pathlib import PurePosixPath


def by_folder(files):
    """Lines and branches, covered and in all, of each folder; "" is the whole."""
    folders = {"": Counter()}
    for file in files:
        counts = Counter({kind: file[kind] for kind in (
            "line_covered", "line_total", "branch_covered", "branch_total")})
        for folder in (str(PurePosixPath(file["filename"]).parent), ""):
            folders.setdefault(folder, Counter()).update(counts)
    return folders


def percent(covered, total):
    return f"{covered:6} of {total:6} {100 * covered / total:6.1f} %" if total else "none"


def main(summary):
    with open(summary, encoding="utf-8") as text:
        folders = by_folder(json.load(text)["files"])
    print(f"{'folder':<24}{'lines':>25}{'branches':>28}")
    for folder, counts in sorted(folders.items(), key=lambda item: (item[0] == "", item[0])):
        print(f"{folder or 'all':<24}"
              f"{percent(counts['line_covered'], counts['line_total']):>25}"
              f"{percent(counts['branch_covered'], counts['branch_total']):>28}")


if __name__ == "__main__":
    main(*sys.argv[1:])
