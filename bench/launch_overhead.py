#!/usr/bin/env python3
"""Launch overhead of build/bin/tovak against the bare shell.

Runs tovak on a typical line against the stand-in Fendix and, alternately in the same run,
tovak_system_floor, a minimal C++ program that prints the same lines around the run and
calls system() with the same full command. Prints the median wall time of each and their
ratio. For reference it also times the shell started directly with the same command,
without any C++ runtime to load. Then the whole-process instruction counts of both
programs (callgrind, the shell and Fendix not traced), which do not move with load.

All of it twice, each time in a private mount namespace with a /dev of its own: once with no
socket at /dev/log, once with a listener there that reads every record tovak sends, so that
the machine's own log gets none. Where no namespace can be had, it measures once, with the
record switched off (TOVAK_NO_SYSLOG).

    python3 bench/launch_overhead.py [--runs N] [--bin build/bin]
"""
import argparse
import os
import re
import socket
import statistics
import subprocess
import sys
import tempfile
import threading
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


# On /dev: a tmpfs with the devices the runs use and, if the directory $1 has one, its log
# socket.
NAMESPACE = r'''set -e; d=$1/dev; mkdir "$d"; mount -t tmpfs none "$d"
for n in null zero full random urandom log; do touch "$d/$n"; done
for n in null zero full random urandom; do mount --bind "/dev/$n" "$d/$n"; done
[ ! -S "$1/log" ] || mount --bind "$1/log" "$d/log"; mount --rbind "$d" /dev; shift; exec "$@"'''


# Runs the measurement in a namespace, with a listener at /dev/log or none, and counts the
# records the listener read.
def measure_in_namespace(args, listener):
    with tempfile.TemporaryDirectory() as top:
        records = []
        if listener:
            log = socket.socket(socket.AF_UNIX, socket.SOCK_DGRAM)
            log.bind(top + "/log")

            def listen():
                while True:
                    records.append(log.recv(65536))
            threading.Thread(target=listen, daemon=True).start()
        env = {k: v for k, v in os.environ.items() if k != "TOVAK_NO_SYSLOG"}
        subprocess.run(["unshare", "-rm", "sh", "-c", NAMESPACE, "sh", top, sys.executable,
                        os.path.realpath(__file__), "--measure", "--runs", str(args.runs),
                        "--bin", args.bin], env=env, check=True)
        if listener:
            print(f"records the listener read: {len(records)}")


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--runs", type=int, default=400)
    parser.add_argument("--bin", default=os.path.join(os.path.dirname(__file__), "..", "build", "bin"))
    parser.add_argument("--measure", action="store_true", help=argparse.SUPPRESS)
    args = parser.parse_args()
    args.bin = os.path.realpath(args.bin)
    if args.measure:
        return measure(args)
    if subprocess.run(["unshare", "-rm", "true"], capture_output=True).returncode != 0:
        print("no private mount namespace here: measured with the record switched off")
        os.environ["TOVAK_NO_SYSLOG"] = "1"
        return measure(args)
    for listener in (False, True):
        print("== a listener at /dev/log" if listener else "== no socket at /dev/log")
        sys.stdout.flush()
        measure_in_namespace(args, listener)
    return 0


def measure(args):
    bin_dir = args.bin
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
