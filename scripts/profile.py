#!/usr/bin/python3
"""Adds up two of callgrind's files by library, for scripts/profile.

    profile.py FLOOR VELMORA DIVISOR

Prints millions of instructions, divided by DIVISOR, and the ratio of the two sums. Libraries
with less than a hundredth of Velmora's sum in either are one row.
"""

import collections
import os
import re
import sys


def by_library(path):
    """Instructions of every library's own code. A name is written once, with a number that
    stands for it from then on; what follows a line of calls is the cost of what was called."""
    names = {}
    spent = collections.Counter()
    library = None
    is_call = False
    with open(path, encoding="utf-8", errors="replace") as file:
        for line in file:
            if match := re.match(r"(c?ob)=\((\d+)\)(?: (.*))?$", line):
                if match[3]:
                    names[match[2]] = os.path.basename(match[3])
                if match[1] == "ob":
                    library = names[match[2]]
            elif line.startswith("calls="):
                is_call = True
            elif match := re.match(r"[-+*\d]\S* (\d+)$", line):
                if not is_call:
                    spent[library] += int(match[1])
                is_call = False
    return spent


def main():
    divisor = int(sys.argv[3]) * 1e6
    floor, velmora = (by_library(path) for path in sys.argv[1:3])
    # Each program's own code is one row.
    for spent, name in ((floor, "velmora_floor"), (velmora, "velmora")):
        spent["its own code"] = spent.pop(name, 0)
    whole = [sum(spent.values()) for spent in (floor, velmora)]

    rest = [0, 0]
    print(f"{'millions of instructions':32}{'floor':>10}{'Velmora':>10}{'more':>10}")
    for name in sorted(set(floor) | set(velmora), key=lambda name: floor[name] - velmora[name]):
        pair = floor[name], velmora[name]
        if max(pair) < whole[1] / 100 and name != "its own code":
            rest = [a + b for a, b in zip(rest, pair)]
            continue
        print_row(name, *pair, divisor)
    print_row("others", *rest, divisor)
    print_row("all", *whole, divisor)
    print(f"ratio {whole[1] / whole[0]:.2f}")


def print_row(name, floor, velmora, divisor):
    print(f"{name:32}{floor / divisor:10.2f}{velmora / divisor:10.2f}"
          f"{(velmora - floor) / divisor:10.2f}")


if __name__ == "__main__":
    main()
