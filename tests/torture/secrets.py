#!/usr/bin/env python3
"""Looks for a passcode in plain text, after its use, in the memory, the files and the output of
every program that was given it or reads its enciphered form."""

import os
import random
import subprocess

from support.torturing import (PROGRAMS, PROTECTED, Living, Root, complain, environment, finish,
                               stopped)


def memory_of(process):
    """Everything that the process can read, piece by piece."""
    with open(f"/proc/{process.pid}/maps") as maps, \
         open(f"/proc/{process.pid}/mem", "rb", buffering=0) as memory:
        for line in maps:
            place, access = line.split()[:2]
            start, end = (int(number, 16) for number in place.split("-"))
            if not access.startswith("r") or line.rstrip().endswith(("[vvar]", "[vsyscall]")):
                continue
            try:
                memory.seek(start)
                yield memory.read(end - start)
            except OSError:
                continue  # a page of a device


def hits(process, needle):
    return sum(piece.count(needle) for piece in memory_of(process))


def files_with(root, needle):
    for folder, _, files in os.walk(root.path):
        for name in files:
            path = os.path.join(folder, name)
            if os.path.isfile(path) and needle in open(path, "rb").read():
                yield path


def use_tool(root, needle, *arguments, text=""):
    """Runs the tool, stopped at its end; how often its memory holds the needle, and its output."""
    process = subprocess.Popen([PROGRAMS / "sentrelctl", "--root", root.path, *arguments],
                               env=environment(SENTREL_STOP_AT_END="1"), stdin=subprocess.PIPE,
                               stdout=subprocess.PIPE, stderr=subprocess.STDOUT)
    process.stdin.write(text.encode())
    process.stdin.close()
    stopped(process)
    found = hits(process, needle)
    process.kill()
    return found, process.stdout.read()


def expect_none(found, output, needle, what):
    if found:
        complain(f"{what}: {found} times in memory")
    if needle in output:
        complain(f"{what}: in its output")


def main():
    passcode = str(random.randint(100000, 999999))
    needle = passcode.encode()
    programs = 0
    with Root(like="examples/root") as root:
        found, _ = use_tool(root, needle, "add", "SentrelTrustedNetworks", passcode)
        if not found or not list(files_with(root, needle)):
            complain("what is there is not found")
        root.tool("remove", "SentrelTrustedNetworks")
        for command in ("set", "check"):
            expect_none(*use_tool(root, needle, "passcode", command, text=passcode + "\n"), needle,
                        f"sentrelctl passcode {command}")
            programs += 1
        with Living("sentrel-springboard", "--root", root.path) as home:
            home.hear("ready")
            for program, arguments, question in (
                    ("sentrel-app", [PROTECTED], "ask"), ("sentrel-sharingd", [], "show"),
                    ("sentrel-sim", [], None)):
                with Living(program, "--root", root.path, *arguments) as living:
                    if question:
                        living.say(question)
                        living.hear()
                    else:
                        type_into_prompt(living, passcode)
                    expect_none(hits(living.process, needle), b"", needle, program)
                    programs += 1
            expect_none(hits(home.process, needle), b"", needle, "sentrel-springboard")
            programs += 1
        for path in files_with(root, needle):
            complain(f"in the file {path}")
    finish(f"{programs} programs searched, and one that holds it on purpose")


def type_into_prompt(phone, passcode):
    """Digit by digit, so that no line of the script is the passcode."""
    for line in ("set SentrelUsePasscodeOnly YES", f"launch {PROTECTED}", "wait 2",
                 *(f"type {digit}" for digit in passcode), "wait 1",
                 "expect outcome authenticated", "wait 0.123"):
        phone.say(line)
    heard = phone.hear_all_to("wait 0.123")
    if "expected" in heard:
        complain(f"the prompt did not take the passcode: {heard}")


main()
