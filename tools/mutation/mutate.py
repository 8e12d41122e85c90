"""Builds, tests and counts the mutants of src/. See tools/mutation/mutate, which calls this."""
import argparse
import collections
import hashlib
import json
import os
import pathlib
import pickle
import queue
import random
import re
import resource
import shlex
import shutil
import signal
import subprocess
import sys
import threading
import time

import mutants as finder

PROJECT = pathlib.Path(__file__).resolve().parents[2]
WORK = PROJECT / "build/mutation"
BASE = WORK / "base"  # the sources as they are
BUILD = WORK / "build"
LOG = WORK / "results.tsv"
EQUIVALENTS = PROJECT / "tests/mutation-equivalents.md"

# The folders of tests from what depends on nothing to what depends on all.
FOLDERS = ["timer", "core", "output", "update", "settings", "docs", "control"]
# It asks the compiler.
NOT_ASKED = {"Architecture"}
TESTS_AT_ONCE = 3

KILLED, TIMED_OUT, SURVIVED, UNCOMPILABLE, EQUIVALENT = (
    "killed", "timed out", "survived", "uncompilable", "equivalent")


class Test:
    def __init__(self, entry):
        self.name = entry["name"]
        self.executable = os.path.relpath(entry["command"][0], BUILD)
        self.folder = self.executable.split("/")[1]
        properties = {each["name"]: each["value"] for each in entry["properties"]}
        self.environment = dict(
            each.split("=", 1) for each in properties.get("ENVIRONMENT", []) if each)
        self.directory = properties["WORKING_DIRECTORY"]
        self.seconds = 1.0

    def time_out(self):
        return 20 + 8 * self.seconds


class Build:
    """What is compiled and linked from what, as Ninja knows it."""

    def __init__(self):
        self.compile = {}
        for entry in json.loads((BUILD / "compile_commands.json").read_text(encoding="utf-8")):
            command = shlex.split(entry["command"])
            self.compile[command[command.index("-o") + 1]] = command
        self.objects_of = collections.defaultdict(set)
        current = None
        for line in run("ninja", "-C", BUILD, "-t", "deps").splitlines():
            if not line.startswith(" "):
                current = line.split(":")[0]
            elif line.startswith(f"    {BASE}/src/") and "mocs_compilation" not in current:
                self.objects_of[line.strip()[len(str(BASE)) + 1 :]].add(current)
        self.link = {}
        archives = {}
        for line in run("ninja", "-C", BUILD, "-t", "commands", "all").splitlines():
            words = line.split()
            if line.startswith(": && ") and "-o" in words and "-c" not in words:
                self.link[words[words.index("-o") + 1]] = line
            archive = re.search(r" qc (\S+\.a) +(.*?) +&&", line)
            if archive:
                archives[archive[1]] = archive[2].split()
        self.inputs = {}
        for target, line in self.link.items():
            self.inputs[target] = set(line.split())
            for name in self.inputs[target] & archives.keys():
                self.inputs[target] |= set(archives[name])
        listed = json.loads(run("ctest", "--test-dir", BUILD, "--show-only=json-v1"))
        self.tests = [Test(entry) for entry in listed["tests"] if is_asked(entry)]

    def libraries(self, objects):
        return [each for each in self.link if each.endswith(".so") and self.inputs[each] & objects]

    def affected_tests(self, objects):
        changed = objects | set(self.libraries(objects))
        return [test for test in self.tests if self.inputs[test.executable] & changed]


def is_asked(entry):
    labels = [each["value"] for each in entry["properties"] if each["name"] == "LABELS"]
    executable = os.path.relpath(entry["command"][0], BUILD)
    return (not labels and entry["name"] not in NOT_ASKED
            and re.fullmatch(r"tests/\w+/tst_\w+", executable) is not None
            and executable.split("/")[1] in FOLDERS)


def run(*command):
    return subprocess.run([str(word) for word in command], check=True, text=True,
                          stdout=subprocess.PIPE).stdout


class Runner:
    """Runs tests, each in a process group of its own, which ends with its first failure."""

    def __init__(self, folder, libraries):
        self.folder = folder
        self.libraries = libraries
        self.running = {}
        self.stopped = False
        self.lock = threading.Lock()

    def run(self, test, executable, *arguments):
        """What failed, or None when nothing did; "" when it took too long or was stopped."""
        temporary = self.folder / "tmp" / test.name
        temporary.mkdir(parents=True, exist_ok=True)
        environment = os.environ | test.environment | {
            "TMPDIR": str(temporary), "LD_LIBRARY_PATH": str(self.libraries),
            # Otherwise every test that has a player would look through all plug-ins anew.
            "GST_REGISTRY": str(WORK / "gstreamer-registry"),
            # A test that is ended while it looks for this server leaves a lock for all that follow.
            "GST_PLUGIN_FEATURE_RANK": "jackaudiosink:NONE,jackaudiosrc:NONE"}
        with self.lock:
            if self.stopped:
                return ""
            process = subprocess.Popen(
                [executable, *arguments], cwd=test.directory, env=environment,
                stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, stderr=subprocess.STDOUT,
                start_new_session=True)
            self.running[process.pid] = process
        late = threading.Event()

        def end_late():
            late.set()
            end_group(process)

        timer = threading.Timer(test.time_out(), end_late)
        timer.start()
        failure = None
        for line in process.stdout:
            match = re.match(rb"(FAIL!|XPASS) +: (\S+?)\(", line)
            if match:
                failure = match[2].decode()
                break
        timer.cancel()
        if failure:
            end_group(process)
        process.stdout.close()
        status = process.wait()
        end_group(process)  # what it started
        with self.lock:
            del self.running[process.pid]
            stopped = self.stopped
        shutil.rmtree(temporary, ignore_errors=True)
        if failure:
            return failure
        if late.is_set() or stopped:
            return ""
        return None if status == 0 else f"exit status {status}"

    def stop(self):
        with self.lock:
            self.stopped = True
            for process in self.running.values():
                end_group(process)


def end_group(process):
    try:
        os.killpg(process.pid, signal.SIGKILL)
    except ProcessLookupError:
        pass


class Worker:
    """Makes mutants in a copy of the sources, with libraries and programs of its own."""

    def __init__(self, number, build, killers, unsteady):
        self.build = build
        self.killers = killers
        self.unsteady = unsteady
        self.folder = WORK / f"worker-{number}"
        shutil.rmtree(self.folder, ignore_errors=True)
        self.sources = self.folder / "sources"
        self.runner = Runner(self.folder, self.folder / "libraries")
        for name in ("src", "tests"):
            shutil.copytree(BASE / name, self.sources / name)

    def judge(self, mutant):
        """How the mutant ends, and by what."""
        source = self.sources / mutant.path
        original = source.read_bytes()
        source.write_bytes(original[: mutant.offset] + mutant.replacement + original[mutant.end :])
        try:
            return self.judge_written(mutant)
        finally:
            source.write_bytes(original)
            for name in ("objects", "libraries", "programs", "tmp"):
                shutil.rmtree(self.folder / name, ignore_errors=True)

    def judge_written(self, mutant):
        objects = self.build.objects_of[mutant.path]
        if mutant.sources_only:
            objects = {name for name in objects if name.startswith("src/")}
        self.made = {}
        self.made_lock = threading.Lock()
        libraries = self.build.libraries(objects)
        tests = self.ordered(mutant, self.build.affected_tests(objects))
        # What no library holds, main.cpp, has to be tried here.
        needed = {each for library in libraries for each in objects & self.build.inputs[library]}
        if not libraries and tests:
            needed = objects & self.build.inputs[tests[0].executable]
        if not all(self.compiled(each) for each in sorted(needed)):
            return UNCOMPILABLE, ""
        for library in libraries:
            if not self.linked(library, "libraries", objects):
                return UNCOMPILABLE, ""
        return self.test(mutant, tests, objects)

    def ordered(self, mutant, tests):
        folder = mutant.path.split("/")[1]
        killers = self.killers[mutant.path]

        def promise(test):
            prior = 0.5 if test.folder == folder else 0.1
            return (killers[test.name] + prior) / (test.seconds + 0.2)

        return sorted(tests, key=promise, reverse=True)

    def compiled(self, name):
        with self.made_lock:
            if name not in self.made:
                target = self.folder / "objects" / name
                target.parent.mkdir(parents=True, exist_ok=True)
                command = [word.replace(f"{BASE}/", f"{self.sources}/")
                           for word in self.build.compile[name]]
                command[command.index("-o") + 1] = str(target)
                made = subprocess.run([*command, "-w"], cwd=BUILD, check=False,
                                      stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
                self.made[name] = target if made.returncode == 0 else None
            return self.made[name]

    def linked(self, target, kind, objects):
        """The target with what is compiled anew in place of the rest's, or in front of it where
        that is in an archive: the archive's own is then left in there."""
        result = self.folder / kind / os.path.basename(target)
        result.parent.mkdir(parents=True, exist_ok=True)
        words = self.build.link[target].split()
        for name in sorted(objects & self.build.inputs[target]):
            if not self.compiled(name):
                return None
            if name in words:
                words[words.index(name)] = str(self.made[name])
            else:
                words.insert(words.index("-o"), str(self.made[name]))
        words[words.index("-o") + 1] = str(result)
        made = subprocess.run(" ".join(words), shell=True, cwd=BUILD, check=False,
                              stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        return result if made.returncode == 0 else None

    def test(self, mutant, tests, objects):
        runner = self.runner = Runner(self.folder, self.folder / "libraries")
        outcome = []
        waiting = collections.deque(tests)

        def take():
            while waiting and not outcome:
                try:
                    test = waiting.popleft()
                except IndexError:
                    return
                found = self.try_test(test, objects, runner)
                if found and not outcome:
                    outcome.append(found)
                    self.killers[mutant.path][test.name] += 1
                    runner.stop()

        # Most are killed by one of the first; only then it is worth running several at a time.
        for _ in range(min(2, len(waiting))):
            test = waiting.popleft()
            found = self.try_test(test, objects, runner)
            if found:
                self.killers[mutant.path][test.name] += 1
                return found
        threads = [threading.Thread(target=take) for _ in range(TESTS_AT_ONCE)]
        for thread in threads:
            thread.start()
        for thread in threads:
            thread.join()
        return outcome[0] if outcome else (SURVIVED, "")

    def try_test(self, test, objects, runner):
        executable = BUILD / test.executable
        if objects & self.build.inputs[test.executable]:
            executable = self.linked(test.executable, "programs", objects)
            if not executable:
                return KILLED, f"{test.name} (does not compile)"
        failure = runner.run(test, executable)
        if failure is None or runner.stopped:
            return None
        # A loaded machine can fail a test, too; then it does not fail again.
        function = failure.partition("::")[2]
        again = runner.run(test, executable, function) if function else None
        if again is None:
            again = runner.run(test, executable)
        if runner.stopped:
            return None
        if again is None:
            self.unsteady[failure or f"{test.name} took too long"] += 1
            return None
        if again == "":
            return TIMED_OUT, test.name
        return KILLED, again if "::" in again else f"{test.name}: {again}"


def update_base():
    """The sources as git knows them, with what is changed but not committed; what is the same
    keeps its time, so that it is not built again."""
    listed = run("git", "-C", PROJECT, "ls-files", "-z", "--cached", "--others",
                 "--exclude-standard").split("\0")
    wanted = {name for name in listed if name and (PROJECT / name).is_file()}
    for path in [each for each in BASE.rglob("*") if each.is_file()]:
        if str(path.relative_to(BASE)) not in wanted:
            path.unlink()
    for name in wanted:
        path = BASE / name
        if not path.exists() or path.read_bytes() != (PROJECT / name).read_bytes():
            path.parent.mkdir(parents=True, exist_ok=True)
            shutil.copy(PROJECT / name, path)


def build_base():
    log = WORK / "build.log"
    commands = [
        ["cmake", "-S", BASE, "-B", BUILD, "-G", "Ninja", "-DCMAKE_BUILD_TYPE=Debug",
         "-DCMAKE_CXX_FLAGS_DEBUG=-O0", "-DCMAKE_CXX_COMPILER=clang++",
         "-DCMAKE_EXE_LINKER_FLAGS=-fuse-ld=lld", "-DCMAKE_SHARED_LINKER_FLAGS=-fuse-ld=lld",
         "-DVELMORA_SHARED_SUBSYSTEMS=ON", "-DVELMORA_UPDATE_HOST=0.0.0.0",
         f"-DCMAKE_PROJECT_INCLUDE={BASE}/tools/mutation/mutate.cmake"],
        ["cmake", "--build", BUILD],
    ]
    with open(log, "w", encoding="utf-8") as output:
        for command in commands:
            if subprocess.run([str(word) for word in command], stdout=output,
                              stderr=subprocess.STDOUT, check=False).returncode != 0:
                sys.stderr.write("".join(log.read_text(encoding="utf-8").splitlines(True)[-30:]))
                raise SystemExit(f"mutate: the sources do not build; see {log}")


def candidates():
    """All mutants, kept until the sources or the finder change: to find them takes a minute."""
    digest = hashlib.sha256()
    sources = [*(BASE / "src").rglob("*.cpp"), *(BASE / "src").rglob("*.h")]
    for path in sorted(sources) + [PROJECT / "tools/mutation/mutants.py"]:
        digest.update(path.read_bytes())
    kept = WORK / f"candidates-{digest.hexdigest()[:16]}"
    if kept.exists():
        return pickle.loads(kept.read_bytes())
    for old in WORK.glob("candidates-*"):
        old.unlink()
    found = finder.find(BASE, BUILD)
    kept.write_bytes(pickle.dumps(found))
    return found


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
    """The changes that no test can tell from the original, with their reasons."""
    entries = {}
    place = None
    for line in EQUIVALENTS.read_text(encoding="utf-8").splitlines():
        if line.startswith("## "):
            path, _, function = line[3:].partition(", ")
            place = path, function
        match = re.match(r"- `(.+?)` → (?:`(.+?)`|(removed)):", line)
        if match:
            entries[(*place, match[1], match[2] or match[3])] = line
    return entries


def equivalent_keys(mutant):
    """What it may be listed as: in its function, or anywhere in its file."""
    change = mutant.before, mutant.after
    return {(mutant.path, mutant.function, *change), (mutant.path, "", *change)}


def read_log():
    known = {}
    if LOG.exists():
        for line in LOG.read_text(encoding="utf-8").splitlines():
            fields = line.split("\t")
            known["\t".join((fields[2], fields[4], fields[5], fields[6], fields[7]))] = fields
    return known


def check_base(build):
    """Every test passes, and how long each takes."""
    runner = Runner(WORK / "unchanged", BUILD / "src")
    waiting = queue.SimpleQueue()
    for test in build.tests:
        waiting.put(test)
    failed = []

    def take():
        while True:
            try:
                test = waiting.get_nowait()
            except queue.Empty:
                return
            began = time.monotonic()
            test.seconds = 100.0
            failure = runner.run(test, BUILD / test.executable)
            if failure is not None:
                failure = runner.run(test, BUILD / test.executable)
            test.seconds = time.monotonic() - began
            if failure is not None:
                failed.append(f"{test.name}: {failure or 'took too long'}")

    threads = [threading.Thread(target=take) for _ in range(TESTS_AT_ONCE + 1)]
    for thread in threads:
        thread.start()
    for thread in threads:
        thread.join()
    if failed:
        raise SystemExit("mutate: without a change, these fail:\n" + "\n".join(failed))
    total = sum(test.seconds for test in build.tests)
    print(f"{len(build.tests)} tests pass without a change, in {total:.0f} seconds taken together.",
          flush=True)


def judge_all(chosen, build, workers, log, results):
    killers = collections.defaultdict(collections.Counter)
    unsteady = collections.Counter()
    waiting = queue.SimpleQueue()
    for mutant in chosen:
        waiting.put(mutant)
    lock = threading.Lock()
    crew = [Worker(number, build, killers, unsteady) for number in range(1, workers + 1)]
    ended = threading.Event()

    def take(worker):
        while not ended.is_set():
            try:
                mutant = waiting.get_nowait()
            except queue.Empty:
                return
            began = time.monotonic()
            try:
                result, by = worker.judge(mutant)
            except BaseException:
                ended.set()
                raise
            with lock:
                if ended.is_set():
                    return
                results[mutant.key] = result, by
                log.write("\t".join((result, by, mutant.path, str(mutant.line), mutant.operator,
                                     mutant.before, mutant.after, str(mutant.number),
                                     f"{time.monotonic() - began:.1f}")) + "\n")
                log.flush()
                if result == SURVIVED:
                    print(f"survived: {describe(mutant)}", flush=True)
                if sys.stderr.isatty():
                    sys.stderr.write(f"\r{len(results)} done, {waiting.qsize()} waiting  ")

    threads = [threading.Thread(target=take, args=(worker,)) for worker in crew]
    for thread in threads:
        thread.start()
    try:
        for thread in threads:
            thread.join()
    finally:
        # Where it is interrupted, no test is left behind.
        if any(thread.is_alive() for thread in threads):
            ended.set()
            for worker in crew:
                worker.runner.stop()
    if ended.is_set():
        raise SystemExit("mutate: a worker failed; see above")
    for name, count in unsteady.most_common():
        print(f"Failed once and passed when run again, so not counted: {name} ({count} times)")


def describe(mutant):
    return f"{mutant.path}:{mutant.line}  {mutant.operator}  {mutant.before}  →  {mutant.after}"


def report(chosen, results):
    kinds = (KILLED, TIMED_OUT, SURVIVED, EQUIVALENT, UNCOMPILABLE)
    table = collections.defaultdict(collections.Counter)
    for mutant in chosen:
        table[mutant.path][results[mutant.key][0]] += 1
    print(f"\n{'File':<44}{'mutants':>9}" + "".join(f"{kind:>14}" for kind in kinds))
    total = collections.Counter()
    for path in sorted(table):
        total += table[path]
        print(f"{path:<44}{sum(table[path].values()):>9}"
              + "".join(f"{table[path][kind]:>14}" for kind in kinds))
    print(f"{'All':<44}{sum(total.values()):>9}" + "".join(f"{total[kind]:>14}" for kind in kinds))
    survivors = [each for each in chosen if results[each.key][0] == SURVIVED]
    if survivors:
        print("\nSurvivors:")
    for mutant in survivors:
        print(describe(mutant))
    killed = total[KILLED] + total[TIMED_OUT]
    counted = killed + total[SURVIVED]
    share = 100 * killed / counted if counted else 100.0
    print(f"\nEquivalent, with a reason: {total[EQUIVALENT]}. "
          f"Not compilable: {total[UNCOMPILABLE]}.")
    print(f"Killed: {killed} of {counted}, {share:.1f} %")
    return killed, share


def arguments():
    parser = argparse.ArgumentParser(prog="tools/mutation/mutate", add_help=False)
    parser.add_argument("--sample", type=int, default=400)
    parser.add_argument("--seed", default="1")
    parser.add_argument("--all", action="store_true")
    parser.add_argument("--file", action="append")
    parser.add_argument("--kind", action="append")
    parser.add_argument("--match")
    parser.add_argument("--list", action="store_true")
    parser.add_argument("--resume", action="store_true")
    parser.add_argument("--equivalents", action="store_true")
    parser.add_argument("--workers", type=int, default=os.cpu_count())
    parser.add_argument("--minimum", type=float, default=95)
    return parser.parse_args()


def choose(options, found):
    if options.file:
        files = [path.removeprefix("./") for path in options.file]
        found = [mutant for mutant in found if mutant.path in files]
    if options.kind:
        found = [mutant for mutant in found if mutant.operator in options.kind]
    if options.match:
        found = [mutant for mutant in found if options.match in describe(mutant)]
    if not found:
        raise SystemExit("mutate: there is nothing to change")
    if options.all or options.file or options.match or options.equivalents:
        return found
    return sample(found, options.sample, options.seed)


def main():
    options = arguments()
    signal.signal(signal.SIGTERM, signal.default_int_handler)
    # A mutant may ask for all memory there is, and crashes often: it leaves no core.
    resource.setrlimit(resource.RLIMIT_CORE, (0, 0))
    resource.setrlimit(resource.RLIMIT_AS, (16 << 30, 16 << 30))
    WORK.mkdir(parents=True, exist_ok=True)
    update_base()
    build_base()
    found = candidates()
    equivalents = read_equivalents()
    known = set().union(*(equivalent_keys(mutant) for mutant in found))
    stale = [line for key, line in equivalents.items() if key not in known]
    for line in stale:
        print(f"{EQUIVALENTS.relative_to(PROJECT)} lists what is no change of src/ any more: "
              f"{line}")

    def is_equivalent(mutant):
        return not equivalents.keys().isdisjoint(equivalent_keys(mutant))

    if options.equivalents:
        found = [mutant for mutant in found if is_equivalent(mutant)]
    chosen = choose(options, found)
    if options.list:
        for mutant in chosen:
            print(describe(mutant))
        print(f"{len(chosen)} of {len(found)} changes")
        return 0

    results = {}
    if options.resume:
        log_of = read_log()
        for mutant in chosen:
            fields = log_of.get(mutant.key)
            if fields and fields[0] in (KILLED, UNCOMPILABLE):
                results[mutant.key] = fields[0], fields[1]
    if not options.equivalents:
        results |= {each.key: (EQUIVALENT, "") for each in chosen if is_equivalent(each)}
    build = Build()
    check_base(build)
    with open(LOG, "a" if options.resume else "w", encoding="utf-8") as log:
        left = [mutant for mutant in chosen if mutant.key not in results]
        # From all files in turn, so that what is found first tells of all.
        random.Random(options.seed).shuffle(left)
        judge_all(left, build, options.workers, log, results)
    killed, share = report(chosen, results)
    if options.equivalents:
        if killed:
            print("Listed as equivalent, and noticed:")
            print("\n".join(describe(each) for each in chosen
                            if results[each.key][0] in (KILLED, TIMED_OUT)))
        return 1 if killed or stale else 0
    return 1 if share < options.minimum or stale else 0


if __name__ == "__main__":
    sys.exit(main())
