"""Prints by folder what the tests ran: lines, and both ways of each condition.
Usage: coverage.py SUMMARY, which llvm-cov export -summary-only writes"""
import json
import sys
from collections import Counter
from pathlib import Path

ROOT = Path(__file__).resolve().parents[1]


def by_folder(files):
    """Lines and branches, covered and in all, of each folder with all below it; "." is the whole."""
    folders = {}
    for file in files:
        counts = Counter({(kind, part): file["summary"][kind][part]
                          for kind in ("lines", "branches") for part in ("covered", "count")})
        for folder in Path(file["filename"]).resolve().relative_to(ROOT).parents:
            folders.setdefault(str(folder), Counter()).update(counts)
    return folders


def percent(counts, kind):
    covered, total = counts[kind, "covered"], counts[kind, "count"]
    return f"{covered:6} of {total:6} {100 * covered / total:6.1f} %" if total else "none"


def main(summary):
    with open(summary, encoding="utf-8") as text:
        folders = by_folder(json.load(text)["data"][0]["files"])
    print(f"{'folder':<24}{'lines':>25}{'branches':>28}")
    for folder, counts in sorted(folders.items(), key=lambda item: (item[0] == ".", item[0])):
        print(f"{'all' if folder == '.' else folder:<24}"
              f"{percent(counts, 'lines'):>25}{percent(counts, 'branches'):>28}")


if __name__ == "__main__":
    main(*sys.argv[1:])
