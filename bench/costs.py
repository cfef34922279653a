#!/usr/bin/env python3
"""Exact costs of one warm dll_main call for each typical line.

Instructions: callgrind, counting only inside dll_main, three calls less two. The second call
is not yet warm: it finds malloc's per-size caches as the first call's start left them and
takes a dozen allocations the slow way; from the third on, every call costs the same.
Heap allocations: memcheck's count of every allocation in the process (those inside the C
library included), three calls less two; the caller allocates nothing of its own.
Both go through build/bin/tovak_costs_caller, whose system() runs nothing, and neither moves
with the machine's load.

    python3 bench/costs.py [--bin build/bin]
"""
import argparse
import os
import re
import subprocess
import sys
import tempfile

LINES = {
    "compare": "compare -F -D -l /srv/repo -e 1,2 -L -i 3 -m 7X21 --xml",
    "update": "update --noinventory -f a -o b --vmware-esxi=6.7 -s x -u --host=10.1.1.1"
              " --update-args=--user=admin,--password=pw,--backup",
    "acquire": "acquire -l /d -m 7X21 -o rhel8 --meta-only -L -r --xml --ignore-req"
               " --proxy-address=p --proxy-port=8 --proxy-user=u --proxy-password=w",
    "quenmark": "qk -s --vq-address=10.0.0.1 --vq-user=u --vq-password=p",
}
# The option names of each command's table, for the floor's count of names that do not fit
# in a string's own 15 bytes.
LONG_TABLE_NAMES = {"compare": 0, "update": 0, "acquire": 1, "quenmark": 0}  # --proxy-password
SHORT_STRING = 15  # what std::string holds without an allocation


def floor(command, words):
    """The allocations the fixed interface forces for one call, item by item."""
    items = {
        "argument copies": len(words) + 1,  # the program name too
        "token list": 1,
        "long tokens": sum(len(w) > SHORT_STRING for w in words[1:]),
        "option table": 1,
        "long table names": LONG_TABLE_NAMES[command],
        "translator": 1,
        "command line and its copy": 2,
        # GetCurProcessPath returns the directory as a string of its own; the full command
        # could be built in that string's buffer, given room for it.
        "directory with the full command": 1,
    }
    return sum(items.values()), items


def instructions(caller, words, calls):
    with tempfile.NamedTemporaryFile() as out:
        subprocess.run(["valgrind", "--tool=callgrind", "--toggle-collect=dll_main",
                        f"--callgrind-out-file={out.name}", caller, str(calls), "tovak", *words],
                       stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, check=True)
        return int(re.search(rb"^summary: (\d+)", out.read(), re.M).group(1))


def allocations(caller, words, calls):
    run = subprocess.run(["valgrind", "--tool=memcheck", caller, str(calls), "tovak", *words],
                         stdout=subprocess.DEVNULL, stderr=subprocess.PIPE, text=True, check=True)
    return int(re.search(r"total heap usage: ([\d,]+) allocs", run.stderr).group(1).replace(",", ""))


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--bin", default=os.path.join(os.path.dirname(__file__), "..", "build", "bin"))
    caller = os.path.join(os.path.realpath(parser.parse_args().bin), "tovak_costs_caller")
    print(f"{'line':<10}{'instructions':>14}{'allocations':>13}{'floor':>7}")
    for command, line in LINES.items():
        words = line.split()
        count = instructions(caller, words, 3) - instructions(caller, words, 2)
        allocated = allocations(caller, words, 3) - allocations(caller, words, 2)
        total, items = floor(command, words)
        print(f"{command:<10}{count:>14,}{allocated:>13}{total:>7}   "
              + ", ".join(f"{name} {n}" for name, n in items.items() if n))
    return 0


if __name__ == "__main__":
    sys.exit(main())
