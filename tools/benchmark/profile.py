#!/usr/bin/python3
"""Adds up two files by library, for tools/benchmark/profile.

    profile.py instructions FLOOR VELMORA DIVISOR    of callgrind, in millions, over DIVISOR
    profile.py memory FLOOR VELMORA                  of /proc/PID/smaps, resident, in MiB

Prints the sums of the libraries, of both, and the ratio. Libraries with less than a hundredth of
Velmora's sum in either are one row.
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


def resident(path):
    """Resident memory, in KiB: of each file that is mapped, and of the rest."""
    memory = collections.Counter()
    name = None
    with open(path, encoding="utf-8", errors="replace") as file:
        for line in file:
            if match := re.match(r"[0-9a-f]+-[0-9a-f]+ \S+ \S+ \S+ \d+\s*(.*)$", line):
                name = os.path.basename(match[1]) if match[1].startswith("/") else "anonymous"
                if match[1] in ("[heap]", "[stack]"):
                    name = match[1].strip("[]")
            elif match := re.match(r"Rss:\s+(\d+) kB", line):
                memory[name] += int(match[1])
    return memory


def print_row(name, floor, velmora, divisor):
    print(f"{name:32}{floor / divisor:10.2f}{velmora / divisor:10.2f}"
          f"{(velmora - floor) / divisor:10.2f}")


def print_table(heading, floor, velmora, divisor):
    # Each program's own file is one row.
    for spent, name in ((floor, "velmora_floor"), (velmora, "velmora")):
        spent["its own code"] = spent.pop(name, 0)
    whole = [sum(spent.values()) for spent in (floor, velmora)]

    rest = [0, 0]
    print(f"{heading:32}{'floor':>10}{'Velmora':>10}{'more':>10}")
    for name in sorted(set(floor) | set(velmora), key=lambda name: floor[name] - velmora[name]):
        pair = floor[name], velmora[name]
        if max(pair) < whole[1] / 100 and name != "its own code":
            rest = [a + b for a, b in zip(rest, pair)]
            continue
        print_row(name, *pair, divisor)
    print_row("others", *rest, divisor)
    print_row("all", *whole, divisor)
    print(f"ratio {whole[1] / whole[0]:.2f}")


def main():
    what, floor, velmora = sys.argv[1:4]
    if what == "memory":
        print_table("MiB", resident(floor), resident(velmora), 1024)
    else:
        print_table("millions of instructions", by_library(floor), by_library(velmora),
                    int(sys.argv[4]) * 1e6)


if __name__ == "__main__":
    main()
