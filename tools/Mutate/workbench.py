# SPDX-FileCopyrightText: The Loadscope authors
# SPDX-License-Identifier: MIT
"""The copy of the tree in build/mutate, its build, and runs of its tests that can do no harm outside of it."""

import glob
import os
import re
import shutil
import signal
import subprocess
import tempfile
import time
from pathlib import Path

SHARDS = 4  # most tests of processes wait
BUILD_SECONDS = 1200
# A shell stands between, because the first process of a namespace inherits orphans; a test that takes all of the
# memory is the first to go.
INIT = 'ulimit -c 0; ulimit -v 12000000; echo 1000 2>/dev/null >/proc/self/oom_score_adj; "$@"; exit $?'


class Workbench:
    def __init__(self, root, with_app):
        self.root = Path(root)
        self.tree = self.root / "build/mutate/tree"
        self.build_folder = self.root / "build/mutate/build"
        self.with_app = with_app
        self.scratch = None
        self.running = []
        self.namespace = self.find_namespace()

    def __enter__(self):
        self.scratch = Path(tempfile.mkdtemp(prefix="loadscope-mutate-"))
        self.scratch.chmod(0o755)  # some tests become another user
        return self

    def __exit__(self, *_):
        self.end_running()
        shutil.rmtree(self.scratch, ignore_errors=True)

    @staticmethod
    def find_namespace():
        """A way to run a process so that signals of it reach nobody else, and that nothing of it stays."""
        own = ["unshare", "--pid", "--fork", "--kill-child", "--mount-proc"]
        for prefix in (own, [own[0], "--user", "--map-current-user", *own[1:]]):
            try:
                if subprocess.run([*prefix, "true"], stderr=subprocess.DEVNULL, check=False).returncode == 0:
                    return prefix
            except OSError:
                break
        return []

    def copy_tree(self):
        """Makes the copy the same as the checkout, with what is not committed; files that are the same stay."""
        listed = subprocess.run(
            ["git", "ls-files", "-co", "--exclude-standard", "-z"], cwd=self.root, check=True, capture_output=True
        ).stdout.decode()
        wanted = {name for name in listed.split("\0") if name and (self.root / name).is_file()}
        for name in wanted:
            source, target = self.root / name, self.tree / name
            if not target.is_file() or source.read_bytes() != target.read_bytes():
                target.parent.mkdir(parents=True, exist_ok=True)
                shutil.copyfile(source, target)
            shutil.copymode(source, target)
        for folder, _, names in os.walk(self.tree):
            for name in names:
                path = Path(folder, name)
                if str(path.relative_to(self.tree)) not in wanted:
                    path.unlink()

    def configure(self):
        linkers = [name for name in ("mold", "lld") if shutil.which(name) or shutil.which(f"ld.{name}")]
        options = {
            "CMAKE_BUILD_TYPE": "Debug",
            "CMAKE_CXX_FLAGS_DEBUG": "-O0",
            "CMAKE_EXE_LINKER_FLAGS": f"-fuse-ld={linkers[0]}" if linkers else "",
            "CMAKE_GTEST_DISCOVER_TESTS_DISCOVERY_MODE": "PRE_TEST",
            "LOADSCOPE_WERROR": "OFF",
            "LOADSCOPE_BUILD_APP": "ON" if self.with_app else "OFF",
        }
        command = ["cmake", "-G", "Ninja", "-S", str(self.tree), "-B", str(self.build_folder)]
        return self.finished(command + [f"-D{name}={value}" for name, value in options.items()], os.environ)

    def build(self, targets, mutant):
        """Nothing of a mutant goes into ccache, but what it left as it was may come from there."""
        environment = {**os.environ, "CCACHE_READONLY": "1"} if mutant else os.environ
        return self.finished(["ninja", "-C", str(self.build_folder), *targets], environment)

    def finished(self, command, environment):
        """Nothing when the command succeeds, else the end of what it said."""
        log = self.scratch / "log"
        with open(log, "wb") as out:
            self.running = [self.start(command, environment, out)]
            code = self.wait(time.monotonic() + BUILD_SECONDS)
        return None if code == 0 else log.read_text(errors="replace")[-3000:]

    def objects_of(self, name):
        """What a source was compiled to; empty for a header."""
        first, _, rest = name.partition("/")
        folder = self.build_folder / first / "CMakeFiles"
        return [path.read_bytes() for path in sorted(folder.glob(f"*.dir/{glob.escape(rest)}.o"))]

    def test(self, program, test_filter, limit):
        """Runs tests until the first that fails: (what became of them, seconds, the failed test, the log's end)."""
        home = self.scratch / "home"
        shutil.rmtree(home, ignore_errors=True)
        (home / "tmp").mkdir(parents=True)
        path = str(self.build_folder / "bin" / program)
        command = [path, "--gtest_fail_fast", "--gtest_brief=1", f"--gtest_filter={test_filter}"]
        environment = {
            **os.environ,
            "HOME": str(home),
            "TMPDIR": str(home / "tmp"),
            "QT_QPA_PLATFORM": "offscreen",
            "GTEST_TOTAL_SHARDS": str(SHARDS),
        }
        begin = time.monotonic()
        with open(self.scratch / "log", "wb") as out:
            for shard in range(SHARDS):
                own = {**environment, "GTEST_SHARD_INDEX": str(shard)}
                self.running.append(self.start([*self.namespace, "sh", "-c", INIT, "sh", *command], own, out))
            code = self.wait(begin + limit)
        said = (self.scratch / "log").read_text(errors="replace")
        failed = re.search(r"^\[  FAILED  \] ([^ ,\n]+)", said, re.MULTILINE)
        outcome = {None: "hung", 0: "passed"}.get(code, "failed")
        return outcome, time.monotonic() - begin, failed.group(1) if failed else "", said[-3000:]

    @staticmethod
    def start(command, environment, out):
        null, both = subprocess.DEVNULL, subprocess.STDOUT
        return subprocess.Popen(command, env=environment, stdin=null, stdout=out, stderr=both, start_new_session=True)

    def wait(self, deadline):
        """The first exit status that is not 0, or 0; nothing at the deadline. Nobody runs on then."""
        try:
            while time.monotonic() < deadline:
                codes = [process.poll() for process in self.running]
                failed = [code for code in codes if code]
                if failed or None not in codes:
                    return failed[0] if failed else 0
                time.sleep(0.02)
            return None
        finally:
            self.end_running()

    def end_running(self):
        """A build ends its compilers itself and leaves no half of a file; a namespace goes with its first process."""
        for process in self.running:
            try:
                if process.poll() is None and process.args[0] in ("cmake", "ninja"):
                    process.terminate()
                    process.wait(10)
            except subprocess.TimeoutExpired:
                pass
            if process.poll() is None:
                os.killpg(process.pid, signal.SIGKILL)
                process.wait()
        self.running = []

    def write(self, name, text):
        """Always newer than what was built from the text before."""
        (self.tree / name).write_text(text)
