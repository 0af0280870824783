#!/usr/bin/env python3
"""The tool as a writer: killed and failing at every call of a change, several at once, under every
umask, on links and on other people's files. Nothing is lost, nothing is left behind, and what it
says is so."""

import concurrent.futures
import errno
import os
import stat
import tempfile

from support.torturing import QUICK, Living, Root, complain, finish, run

FILES = 1
ONCE, LASTING, KILL = 0, 1, 2


def add(root, item, **how):
    return run("sentrelctl", "--root", root.path, "add", "SentrelApplications", item, **how)


def drafts(root):
    folder = os.path.dirname(root.settings)
    return [name for name in os.listdir(folder) if name != os.path.basename(root.settings)]


def torture_changes():
    """At each call of one `add`: a kill, and faults of a full, a read-only and a failing disk."""
    runs = 0
    with Root() as root:
        with tempfile.NamedTemporaryFile() as count:
            add(root, "first", fault=(FILES, 0, 0, ONCE), SENTREL_FAULT_COUNT=count.name)
            calls = int(count.read())
        for error, mode in ((0, KILL), (errno.ENOSPC, LASTING), (errno.EROFS, LASTING),
                            (errno.EIO, ONCE)):
            for at in range(1, calls + 1, 11 if QUICK else 1):
                before = root.items()
                item = f"item{runs}"
                done = add(root, item, fault=(FILES, at, error, mode))
                after = root.items()
                if after not in (before, before + [item]):
                    complain(f"lost: at call {at} with {error}: {before} became {after}")
                if done.returncode == 0 and item not in after:
                    complain(f"told as done and is not: at call {at} with {error}")
                if done.returncode == 3 and (item in after) != ("is made" in done.stderr):
                    complain(f"told wrongly: at call {at} with {error}: {done.stderr}")
                runs += 1
        add(root, "last")
        if drafts(root):
            complain(f"left behind: {drafts(root)}")
    return runs


def torture_several(writers, rounds):
    """Each writer adds items of its own; whatever was told as done is in the file in the end."""

    def write(number):
        names = [f"writer{number}.{index}" for index in range(rounds)]
        return [name for name in names if add(root, name).returncode == 0]

    with Root() as root:
        with concurrent.futures.ThreadPoolExecutor(writers) as pool:
            done = [name for names in pool.map(write, range(writers)) for name in names]
        lost = set(done) - set(root.items())
        if lost:
            complain(f"{len(lost)} of {len(done)} updates lost with {writers} writers")
        if len(done) < writers * rounds:
            complain(f"{writers * rounds - len(done)} updates refused with {writers} writers")
    return writers * rounds


def modes_below(path):
    for folder, folders, files in os.walk(path):
        for name in folders + files:
            status = os.lstat(os.path.join(folder, name))
            yield os.path.join(folder, name), stat.S_IMODE(status.st_mode), status


def torture_masks():
    for mask in (0o000, 0o022, 0o077):
        with Root(create=False) as root:
            root.tool("create", mask=mask)
            root.tool("add", "SentrelApplications", "item", mask=mask)
            for path, mode, status in modes_below(root.path):
                wanted = 0o700 if stat.S_ISDIR(status.st_mode) else 0o600
                if mode != wanted:
                    complain(f"umask {mask:o}: {path} is {mode:o}")
    return 3


def torture_places():
    with Root() as root:
        elsewhere = os.path.join(root.path, "elsewhere.plist")
        os.rename(root.settings, elsewhere)
        os.symlink(elsewhere, root.settings)
        root.tool("add", "SentrelApplications", "behind a link")
        if not os.path.islink(root.settings):
            complain("a link was replaced")
    with Root() as root:
        if os.geteuid() == 0:
            os.chown(root.settings, 12345, 12345)
            root.tool("add", "SentrelApplications", "another's")
            if os.stat(root.settings).st_uid != 12345:
                complain("a file changed hands")
    return 2


def main():
    changes = torture_changes()
    updates = torture_several(2, 10) if QUICK else torture_several(2, 200) + torture_several(4, 200)
    figures = torture_masks() + torture_places()
    finish(f"{changes} changes with a kill or a fault, {updates} updates of several writers, "
           f"{figures} places")


main()
