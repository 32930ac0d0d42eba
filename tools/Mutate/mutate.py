# SPDX-FileCopyrightText: The Loadscope authors
# SPDX-License-Identifier: MIT
"""Plants small mistakes, one at a time, and tells which of them no test notices. Started by tools/mutate."""

import argparse
import fcntl
import random
import re
import signal
import sys
from pathlib import Path

from changes import line_of, planted, shown, sites
from workbench import Workbench

ROOT = Path(__file__).resolve().parents[2]
PROGRAMS = {
    "LoadscopeCore": ["LoadscopeCoreTests", "LoadscopeCLITests"],
    "LoadscopeCLI": ["LoadscopeCLITests"],
    "LoadscopeApp": ["LoadscopeAppTests"],
}
SIGNALLING = re.compile(r"\bkill(pg)?\(")


def main():
    parser = argparse.ArgumentParser(prog="tools/mutate", description=__doc__)
    parser.add_argument("folder", metavar="FOLDER", help="LoadscopeCore/History, LoadscopeCLI, a file, or FILE:LINE")
    parser.add_argument("count", metavar="COUNT", type=int, nargs="?", default=20, help="how many that compile (20)")
    parser.add_argument("--seed", metavar="S", type=int, default=1, help="chooses them (1)")
    options = parser.parse_args()
    for name in (signal.SIGINT, signal.SIGTERM, signal.SIGHUP):
        signal.signal(name, lambda number, _frame: sys.exit(128 + number))

    name, _, line = options.folder.partition(":")
    path = (ROOT / name).resolve()
    part = path.relative_to(ROOT).parts[0] if path.is_relative_to(ROOT) and path != ROOT else ""
    if part not in PROGRAMS or not path.exists():
        parser.error(f"{name} is not in one of " + ", ".join(PROGRAMS))

    (ROOT / "build/mutate").mkdir(parents=True, exist_ok=True)
    with open(ROOT / "build/mutate/lock", "w", encoding="utf-8") as lock:
        try:
            fcntl.flock(lock, fcntl.LOCK_EX | fcntl.LOCK_NB)
        except OSError:
            sys.exit("Another tools/mutate works in this checkout.")
        with Workbench(ROOT, part == "LoadscopeApp") as bench:
            bench.copy_tree()
            chosen = choice(bench, path.relative_to(ROOT), int(line or 0), options.seed)
            run(bench, PROGRAMS[part], chosen, options)


def choice(bench, path, line, seed):
    """(file, change) in random order: one change of each place. With a line all changes of that line."""
    path = bench.tree / path
    files = [path] if path.is_file() else sorted(p for p in path.rglob("*") if p.suffix in (".cpp", ".h"))
    places = []
    for file in files:
        text = file.read_text()
        name = str(file.relative_to(bench.tree))
        if not bench.namespace and SIGNALLING.search(text):
            print(f"Left out, for its signals could reach other processes: {name}", file=sys.stderr)
            continue
        for changes in sites(text):
            if line:
                places += [[(name, c)] for c in changes if line_of(text, c) == line]
            else:
                places.append([(name, c) for c in changes])
    order = random.Random(seed)
    order.shuffle(places)
    return [order.choice(changes) for changes in places]


class Stages:
    """The tests of a mutant in the order in which they most likely notice it, each stage with its time limit."""

    def __init__(self, bench, programs):
        self.bench = bench
        self.programs = programs
        self.limits = {}
        self.objects = {}

    def of(self, name):
        """(program, filter): the tests of the file's own folder, then the others, then those of the command."""
        first = self.programs[0]
        folder = Path(name).parent
        suites = set()
        while len(folder.parts) > 1 and not suites:
            for test in sorted((self.bench.tree / "tests" / folder).rglob("*.cpp")):
                suites.update(re.findall(r"^TEST(?:_[FP])?\((\w+),", test.read_text(), re.MULTILINE))
            folder = folder.parent
        own = ":".join(f"{suite}.*:*/{suite}.*" for suite in sorted(suites))
        stages = [(first, own), (first, f"-{own}")] if own else [(first, "*")]
        return stages + [(program, "*") for program in self.programs[1:]]

    def fails(self, name):
        """What noticed the mutant, or nothing."""
        for program, test_filter in self.of(name):
            if complaint := self.bench.build([program], mutant=True):
                return "does not compile", complaint
            if self.objects[name] and self.objects[name] == self.bench.objects_of(name):
                return "compiles to the same", ""
            outcome, _, failed, _ = self.bench.test(program, test_filter, self.limits[program])
            if outcome != "passed":
                return "caught", "the time limit" if outcome == "hung" else failed or "its end"
        return "survived", ""

    def check(self, names):
        """Builds and tests the copy as it is; a mutant may take some times as long."""
        if complaint := self.bench.configure() or self.bench.build(self.programs, mutant=False):
            sys.exit(f"{complaint}\nThe copy in build/mutate does not build.")
        self.objects = {name: self.bench.objects_of(name) for name in names}
        for program in self.programs:
            outcome, seconds, _, said = self.bench.test(program, "*", 900)
            if outcome != "passed":
                sys.exit(f"{said}\n{program} does not pass without a change ({outcome}).")
            self.limits[program] = 30 + 4 * seconds


def run(bench, programs, chosen, options):
    print("Building build/mutate and running its tests…", file=sys.stderr)
    stages = Stages(bench, programs)
    stages.check({name for name, _ in chosen})
    counts = {"caught": 0, "survived": 0, "does not compile": 0, "compiles to the same": 0}
    survivors = []
    for name, change in chosen:
        done = counts["caught"] + counts["survived"]
        if done == options.count:
            break
        text = (bench.tree / name).read_text()
        try:
            bench.write(name, planted(text, change))
            verdict, by = stages.fails(name)
        finally:
            bench.write(name, text)
        counts[verdict] += 1
        where = f"{name}:{line_of(text, change)}"
        told = f" by {by}" if verdict == "caught" else ""
        print(f"{done + (verdict in ('caught', 'survived')):4} {verdict}{told}: {where} ({change.kind})", flush=True)
        if verdict == "survived":
            survivors.append(f"{where}: {shown(text, change)}")
    if survivors:
        print("\nNo test noticed:\n" + "\n".join(survivors))
    counted = counts["caught"] + counts["survived"]
    share = f" ({100 * counts['caught'] / counted:.0f}%)" if counted else ""
    print(f"\nCaught {counts['caught']} of {counted}{share} in {options.folder}, seed {options.seed};", end=" ")
    print(f"{counts['does not compile']} more did not compile, {counts['compiles to the same']} changed nothing here.")


if __name__ == "__main__":
    main()
