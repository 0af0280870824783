"""What the scripts of the torture share: device roots, runs of programs, and what went wrong."""

import os
import pathlib
import resource
import shutil
import signal
import subprocess
import sys
import tempfile
import time

SETTINGS = "var/mobile/Library/Preferences/com.quorvin.sentrel.plist"
PROTECTED = "com.example.notes"

if len(sys.argv) < 2:
    sys.exit(f"usage: {sys.argv[0]} PROGRAMS [quick]")
PROJECT = pathlib.Path(__file__).resolve().parents[3]
PROGRAMS = pathlib.Path(sys.argv[1]).resolve()
QUICK = "quick" in sys.argv[2:]
FAULTS = str(PROGRAMS.parent / "lib" / "libsentrel_torture_faults.so")

_faults = []


def complain(what):
    """Something that must not be."""
    _faults.append(what)
    print(f"  WRONG: {what}", flush=True)


def finish(figures):
    name = pathlib.Path(sys.argv[0]).stem
    print(f"{name}: {figures}: {len(_faults)} wrong", flush=True)
    sys.exit(1 if _faults else 0)


class Root:
    """A device root whose settings protect one application. Gone in the end."""

    def __init__(self, create=True, like=None):
        """`like`: a folder of the project that it begins as."""
        self.path = tempfile.mkdtemp(prefix="sentrel-torture-")
        if like:
            shutil.copytree(PROJECT / like, self.path, dirs_exist_ok=True)
        if create:
            self.tool("create")
            self.tool("set", "SentrelEnabled", "YES")
            self.tool("add", "SentrelApplications", PROTECTED)

    def __enter__(self):
        return self

    def __exit__(self, *_):
        shutil.rmtree(self.path, ignore_errors=True)

    @property
    def settings(self):
        return os.path.join(self.path, SETTINGS)

    def tool(self, *arguments, **how):
        done = run("sentrelctl", "--root", self.path, *arguments, **how)
        if done.returncode != 0:
            raise RuntimeError(f"sentrelctl {arguments}: {done.stderr}")
        return done

    def items(self):
        """The protected applications that the file holds."""
        done = run("sentrelctl", "--root", self.path, "get", "SentrelApplications")
        return done.stdout.replace(",", "\n").split() if done.returncode == 0 else None


def environment(fault=None, **more):
    """With a fault (kinds, at, error, mode): the program runs into it."""
    env = {key: value for key, value in os.environ.items() if not key.startswith("SENTREL_")}
    if fault or more:
        env["LD_PRELOAD"] = FAULTS
    if fault:
        env["SENTREL_FAULT"] = " ".join(map(str, fault))
    env.update(more)
    return env


def run(program, *arguments, fault=None, descriptors=None, mask=None, text="", limit=20, **more):
    """Runs a program to its end; one that does not end in time hangs, and that is wrong."""

    def prepare():
        if descriptors is not None:
            resource.setrlimit(resource.RLIMIT_NOFILE, (descriptors, descriptors))
        if mask is not None:
            os.umask(mask)

    needs_preparing = descriptors is not None or mask is not None
    try:
        return subprocess.run([PROGRAMS / program, *arguments], env=environment(fault, **more),
                              input=text, capture_output=True, text=True, timeout=limit,
                              preexec_fn=prepare if needs_preparing else None)
    except subprocess.TimeoutExpired:
        complain(f"hangs: {program} {' '.join(arguments)} with {fault}")
        return subprocess.CompletedProcess([], -signal.SIGALRM, "", "")


class Living:
    """A program that runs until it is told to end."""

    def __init__(self, program, *arguments, **more):
        self.process = subprocess.Popen(
            [PROGRAMS / program, *arguments], env=environment(**more), text=True, bufsize=1,
            stdin=subprocess.PIPE, stdout=subprocess.PIPE, stderr=subprocess.STDOUT)

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.process.kill()
        self.process.communicate()

    def hear(self, start=""):
        """The next line that begins so; empty at the end of the output."""
        for line in self.process.stdout:
            if line.startswith(start):
                return line.rstrip("\n")
        return ""

    def hear_all_to(self, end):
        """All up to the next line that holds `end`."""
        heard = ""
        for line in self.process.stdout:
            heard += line
            if end in line:
                break
        return heard

    def say(self, line):
        self.process.stdin.write(line + "\n")
        self.process.stdin.flush()


def stopped(process, limit=20):
    """Waits until the process has stopped itself."""
    deadline = time.monotonic() + limit
    while time.monotonic() < deadline:
        state = pathlib.Path(f"/proc/{process.pid}/stat").read_text().rsplit(")", 1)[1].split()[0]
        if state in "Tt":
            return
        time.sleep(0.005)
    complain(f"{process.args} did not stop")
