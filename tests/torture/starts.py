#!/usr/bin/env python3
"""An application's start: with every call for a file failing, with memory failing, and with few
descriptors. What it answers must not be that something is open."""

import errno
import os
import tempfile

from support.torturing import PROTECTED, QUICK, Living, Root, complain, finish, run

FILES, MEMORY = 1, 2
ONCE, LASTING = 0, 1


def ask(root, **how):
    return run("sentrel-app", "--root", root.path, PROTECTED, "ask", **how)


def expect_locked(done, what):
    """Either it says that the item needs authentication, or it says nothing and why."""
    if "NO" in done.stdout or (done.returncode == 0 and done.stdout != "YES\n"):
        complain(f"opened: {what}: {done.stdout!r}")
    if done.returncode == 3 and not done.stderr:
        complain(f"fails without a word: {what}")
    if done.returncode < 0 and -done.returncode != 6:
        complain(f"crashes with signal {-done.returncode}: {what}")


def calls(root, kinds):
    with tempfile.NamedTemporaryFile() as count:
        ask(root, fault=(kinds, 0, 0, ONCE), SENTREL_FAULT_COUNT=count.name)
        return int(count.read())


def torture_faults(root, kinds, errors, step):
    runs = 0
    for error, mode in errors:
        for at in range(1, calls(root, kinds) + 1, step):
            name = os.strerror(error) if error else "a short reading"
            expect_locked(ask(root, fault=(kinds, at, error, mode)), f"call {at}, {name}, {mode}")
            runs += 1
    return runs


def torture_descriptors(root):
    for number in range(3, 30):
        expect_locked(ask(root, descriptors=number), f"{number} descriptors")
    return 27


def main():
    errors = [(error, mode) for error in (errno.EMFILE, errno.EIO, errno.ENOMEM, errno.EACCES)
              for mode in (ONCE, LASTING)] + [(0, ONCE)]
    with Root(like="examples/root") as root:
        if ask(root).stdout != "YES\n":
            complain("without a fault it is not locked")
        few = torture_descriptors(root)
        with Living("sentrel-springboard", "--root", root.path) as home:
            home.hear("ready")
            few += torture_descriptors(root)
        files = torture_faults(root, FILES, errors[::3] if QUICK else errors, 20 if QUICK else 1)
        memory = torture_faults(root, MEMORY, [(errno.ENOMEM, ONCE), (errno.ENOMEM, LASTING)],
                                997 if QUICK else 7)
    finish(f"{files} starts with a failing call, {memory} without memory, "
           f"{few} with few descriptors")


main()
