"""Tries the changes that mutants.py finds. See tools/mutation/mutate, which calls this."""
import argparse
import collections
import json
import os
import pathlib
import random
import re
import signal
import subprocess
import sys
import time

import mutants as finder

WORK = pathlib.Path("build/mutation").resolve()
BASE = WORK / "base"  # the sources, in which one place at a time is changed
BUILD = WORK / "build"
LOG = WORK / "results.tsv"
EQUIVALENTS = pathlib.Path("tools/mutation/equivalents.md")
NOT_ASKED = {"Architecture"}  # it asks the compiler
RESULTS = KILLED, SURVIVED, EQUIVALENT, UNCOMPILABLE = (
    "killed", "survived", "equivalent", "uncompilable")
# A failure ends a test, as does a function that takes much longer than any does.
ENVIRONMENT = os.environ | {
    "QTEST_FATAL_FAIL": "1", "QTEST_FUNCTION_TIMEOUT": "60000", "QTEST_DISABLE_STACK_DUMP": "1",
    "TMPDIR": str(WORK / "tmp")}


def run(*command):
    """Status and output; ends what the command has left running."""
    with subprocess.Popen(command, env=ENVIRONMENT, text=True, errors="replace",
                          stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                          stderr=subprocess.STDOUT, start_new_session=True) as process:
        try:
            output = process.communicate()[0]
        finally:
            try:
                os.killpg(process.pid, signal.SIGKILL)
            except ProcessLookupError:
                pass
    return process.returncode, output


class Judge:
    """Builds and tests one change after the other, those of one file in succession."""

    def __init__(self, workers):
        self.workers = str(workers)
        self.changed = None  # the file of the last change, what it was, and what was built of it
        self.killers = collections.defaultdict(collections.Counter)
        self.unsteady = collections.Counter()
        self.seconds = {}
        self.folders = {}
        listed = json.loads(run("ctest", "--test-dir", BUILD, "--show-only=json-v1")[1])
        for entry in listed["tests"]:
            place = re.fullmatch(f"{BUILD}/tests/(\\w+)/tst_\\w+", entry.get("command", [""])[0])
            labels = [each for each in entry["properties"] if each["name"] == "LABELS"]
            if place and not labels and entry["name"] not in NOT_ASKED:
                self.folders[entry["name"]] = place[1]
        if not self.folders:
            raise SystemExit("mutate: there is no test to ask")

    def ask(self, *tests):
        """The first function or test that fails twice; None where all pass."""
        status, output = run(
            "ctest", "--test-dir", BUILD, "-R", f"^({'|'.join(tests)})$", "-j", self.workers,
            "--output-on-failure", "--stop-on-failure", "--repeat", "until-pass:2")
        rows = re.findall(r" Test +#\d+: (\w+) \.*(.*?) +([0-9.]+) sec", output)
        if status == 0:
            self.unsteady.update(name for name, result, _ in rows if "Passed" not in result)
            self.seconds |= {name: float(seconds) for name, _, seconds in rows}
            return None
        # With several at a time, others may have failed once, and passed.
        failed = re.findall(r"^\t *\d+ - (\w+) \((.+)\)", output, re.M)
        if not failed:
            raise SystemExit(f"mutate: the tests do not run:\n{output}")
        test, how = failed[0]
        self.killers[self.changed and self.changed[0]][test] += 1
        functions = re.findall(rf"^(?:FAIL!|XPASS) +: (tst_{test}::\S+?)\(", output, re.M)
        return functions[0] if functions else f"{test}: {how}"

    def check(self):
        self.restore()
        failure = self.ask(*self.folders)
        if failure:
            raise SystemExit(f"mutate: without a change, this fails: {failure}")
        print(f"{len(self.folders)} tests pass without a change, in "
              f"{sum(self.seconds.values()):.0f} seconds taken together.", flush=True)

    def judge(self, mutant):
        """How the change ends, and by what."""
        source = BASE / mutant.path
        if self.changed and self.changed[0] != source:
            self.restore()
        if not self.changed:
            self.changed = [source, source.read_bytes(), source.stat(), None]
        original = self.changed[1]
        source.write_bytes(original[:mutant.offset] + mutant.replacement + original[mutant.end:])
        self.changed[3] = "src/all" if mutant.sources_only else "all"
        if not self.build("src/all"):
            return UNCOMPILABLE, ""
        if not self.build(self.changed[3]):
            return KILLED, "a test does not compile"
        killers = self.killers[source]

        def promise(test):
            prior = 0.5 if self.folders[test] == mutant.path.split("/")[1] else 0.1
            return (killers[test] + prior) / (self.seconds[test] + 0.2)

        tests = sorted(self.folders, key=promise, reverse=True)
        # Most are killed by one of the first; only then it is worth running several at a time.
        for asked in (tests[:1], tests[1:2], tests[2:3], tests[3:]):
            if asked and (failure := self.ask(*asked)):
                return KILLED, failure
        return SURVIVED, ""

    def build(self, target):
        return run("ninja", "-C", BUILD, "-j", self.workers, target)[0] == 0

    def restore(self):
        """The changed file, built, as if it had never changed."""
        if self.changed:
            source, original, status, target = self.changed
            source.write_bytes(original)
            self.build(target)
            os.utime(source, ns=(status.st_atime_ns, status.st_mtime_ns))
            self.changed = None


def sample(found, count, seed):
    """As many of each file as is its share, at least one; and again the same for the same seed."""
    files = collections.defaultdict(list)
    for mutant in found:
        files[mutant.path].append(mutant)
    chosen = []
    for path in sorted(files):
        share = max(1, round(count * len(files[path]) / len(found)))
        chosen += random.Random(f"{seed} {path}").sample(files[path], min(share, len(files[path])))
    return chosen


def read_equivalents():
    """The changes that no test can tell from the original: place and change, and their lines."""
    entries = {}
    for line in EQUIVALENTS.read_text(encoding="utf-8").splitlines():
        if line.startswith("## "):
            path, _, function = line[3:].partition(", ")
        elif match := re.match(r"- `(.+?)` → (?:`(.+?)`|(removed)):", line):
            entries[path, function, match[1], match[2] or match[3]] = line
    return entries


def equivalent_keys(mutant):
    """What it may be listed as: in its function, or anywhere in its file."""
    return {(mutant.path, function, mutant.before, mutant.after)
            for function in (mutant.function, "")}


def report(chosen, results):
    """Prints a row for each file, and returns how many were killed and their share."""
    table = collections.defaultdict(collections.Counter)
    for mutant in chosen:
        for row in (mutant.path, "~All"):  # behind all others
            table[row][results[mutant.key]] += 1
    print(f"\n{'File':<44}{'changes':>9}" + "".join(f"{result:>14}" for result in RESULTS))
    for path, row in sorted(table.items()):
        print(f"{path.strip('~'):<44}{sum(row.values()):>9}"
              + "".join(f"{row[result]:>14}" for result in RESULTS))
    survivors = [str(each) for each in chosen if results[each.key] == SURVIVED]
    print(*["\nSurvivors:", *survivors] if survivors else [], sep="\n")
    counted = row[KILLED] + row[SURVIVED]
    share = 100 * row[KILLED] / counted if counted else 100.0
    print(f"Killed: {row[KILLED]} of {counted}, {share:.1f} %")
    return row[KILLED], share


def main():
    parser = argparse.ArgumentParser(prog="tools/mutation/mutate", add_help=False)
    parser.add_argument("--sample", type=int, default=400)
    parser.add_argument("--seed", default="1")
    for name in ("--all", "--list", "--resume", "--equivalents"):
        parser.add_argument(name, action="store_true")
    for name in ("--file", "--kind"):
        parser.add_argument(name, action="append", default=[])
    parser.add_argument("--match", default="")
    parser.add_argument("--workers", type=int, default=os.cpu_count())
    parser.add_argument("--minimum", type=float, default=95)
    options = parser.parse_args()

    found = finder.find(BASE, BUILD)
    equivalents = read_equivalents()
    known = set().union(*map(equivalent_keys, found))
    stale = [line for key, line in equivalents.items() if key not in known]
    for line in stale:
        print(f"{EQUIVALENTS} lists what is no change of src/ any more: {line}")
    listed = {each.key for each in found if equivalents.keys() & equivalent_keys(each)}
    files = [path.removeprefix("./") for path in options.file]
    chosen = [each for each in found
              if (not files or each.path in files) and options.match in str(each)
              and (not options.kind or each.operator in options.kind)
              and (not options.equivalents or each.key in listed)]
    if not chosen:
        raise SystemExit("mutate: there is nothing to change")
    if not (options.all or files or options.match or options.equivalents):
        chosen = sample(chosen, options.sample, options.seed)
    if options.list:
        print(*chosen, f"{len(chosen)} of {len(found)} changes", sep="\n")
        return 0

    results = {}
    if options.resume and LOG.exists():
        for line in LOG.read_text(encoding="utf-8").splitlines():
            result, _, path, _, *rest, _ = line.split("\t")
            if result in (KILLED, UNCOMPILABLE):
                results["\t".join((path, *rest))] = result
    if not options.equivalents:
        results |= {key: EQUIVALENT for key in listed}
    waiting = [mutant for mutant in chosen if mutant.key not in results]
    # What only sources see comes first, so that the tests are built again for the others only.
    waiting.sort(key=lambda each: (each.path, not each.sources_only, each.offset))

    signal.signal(signal.SIGTERM, signal.default_int_handler)
    judge = Judge(options.workers)
    with open(LOG, "a" if options.resume else "w", encoding="utf-8") as log:
        judge.check()
        for mutant in waiting:
            begin = time.monotonic()
            result, by = judge.judge(mutant)
            results[mutant.key] = result
            print(result, by, mutant.path, mutant.line, mutant.operator, mutant.before,
                  mutant.after, mutant.number, f"{time.monotonic() - begin:.1f}", sep="\t",
                  file=log, flush=True)
            if result == SURVIVED:
                print(f"survived: {mutant}", flush=True)
    for name, count in judge.unsteady.most_common():
        print(f"Failed once and passed when run again, so not counted: {name} ({count} times)")
    killed, share = report(chosen, results)
    if options.equivalents:
        return 1 if killed or stale else 0
    return 1 if share < options.minimum or stale else 0


if __name__ == "__main__":
    sys.exit(main())
