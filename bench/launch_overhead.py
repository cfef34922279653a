#!/usr/bin/env python3
"""Launch overhead of build/bin/tovak against the bare shell.

Runs tovak on a typical line against the stand-in Fendix and, alternately in the same run,
tovak_system_floor, a minimal C++ program that prints the same lines around the run and
calls system() with the same full command. Prints the median wall time of each and their
ratio. For reference it also times the shell started directly with the same command,
without any C++ runtime to load. Then the whole-process instruction counts of both
programs (callgrind, the shell and Fendix not traced), which do not move with load.

    python3 bench/launch_overhead.py [--runs N] [--bin build/bin]
"""
import argparse
import os
import re
import statistics
import subprocess
import sys
import time

LINE = "compare -F -D -l /srv/repo -e 1,2 -L -i 3 -m 7X21 --xml".split()
TRANSLATED = ("update compare --type fw --type dd --dir /srv/repo --excludeid  1,2 --scope latest"
              " --includeid  3 --mt 7X21 --xml --output /var/log/Zantor_Support/")


def timed(command):
    start = time.perf_counter_ns()
    subprocess.run(command, stdout=subprocess.DEVNULL, check=True)
    return time.perf_counter_ns() - start


def instructions(command):
    run = subprocess.run(["valgrind", "--tool=callgrind", "--callgrind-out-file=/dev/null", *command],
                         stdout=subprocess.DEVNULL, stderr=subprocess.PIPE, text=True, check=True)
    return int(re.search(r"Collected : (\d+)", run.stderr).group(1))


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--runs", type=int, default=400)
    parser.add_argument("--bin", default=os.path.join(os.path.dirname(__file__), "..", "build", "bin"))
    args = parser.parse_args()
    bin_dir = os.path.realpath(args.bin)
    tovak = [os.path.join(bin_dir, "tovak")] + LINE
    floor = [os.path.join(bin_dir, "tovak_system_floor"), bin_dir + "/./Fendix " + TRANSLATED]
    for _ in range(20):  # warm the page cache and the dynamic loader
        timed(tovak)
        timed(floor)
    shell = ["/bin/sh", "-c", floor[1]]
    launcher, bare, direct = [], [], []
    for _ in range(args.runs):
        launcher.append(timed(tovak))
        bare.append(timed(floor))
        direct.append(timed(shell))
    median_launcher = statistics.median(launcher) / 1000.0
    median_bare = statistics.median(bare) / 1000.0
    median_shell = statistics.median(direct) / 1000.0
    print(f"tovak (library + system):  median {median_launcher:.1f} us over {args.runs} runs")
    print(f"C++ program with system(): median {median_bare:.1f} us")
    print(f"sh -c alone (reference):   median {median_shell:.1f} us")
    print(f"launch overhead ratio:     {median_launcher / median_bare:.3f}")
    counted_launcher, counted_bare = instructions(tovak), instructions(floor)
    print(f"instructions, whole process: tovak {counted_launcher:,}, floor {counted_bare:,},"
          f" difference {counted_launcher - counted_bare:,}")
    return 0


if __name__ == "__main__":
    sys.exit(main())
