#!/usr/bin/env python3
"""Whether tovak-translate's script mode takes time linear in the script.

Writes a script of 10,000 and one of 100,000 lines, both made of the same block of ordinary
operator lines (calls translated and left, wrappers, here-documents, a case statement,
comments, other commands), times `tovak-translate --script` on each (the processor time it
takes, user and system, which a busy machine does not stretch; the best of --runs) and prints
both times and their ratio: 10 when linear.

    python3 bench/rewrite_scaling.py [--runs N] [--bin build/bin]
"""
import argparse
import os
import resource
import subprocess
import tempfile

BLOCK = """# nightly check
sudo -u fw nice -n 10 tovak compare -F -l /srv/repo -L >>"$LOG" 2>&1 || exit 1
if timeout 600 tovak update -D --local="/srv/old repo"; then echo done; fi
tovak co -l "$REPO" -F
cat <<E
tovak co -F
E
case "$1" in tovak) echo legacy ;; esac
tovak acquire -l /srv/a -o rhel8 | grep -c Fendix
echo "$HOME" | tr a-z A-Z >/dev/null
tovak qk -s \\
  --vq-address=10.0.0.1
"""


def best(tool, path, runs):
    times = []
    for _ in range(runs):
        before = resource.getrusage(resource.RUSAGE_CHILDREN)
        subprocess.run([tool, "--script", path], stdout=subprocess.DEVNULL,
                       stderr=subprocess.DEVNULL)
        after = resource.getrusage(resource.RUSAGE_CHILDREN)
        times.append(after.ru_utime + after.ru_stime - before.ru_utime - before.ru_stime)
    return min(times)


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--runs", type=int, default=3)
    parser.add_argument("--bin", default="build/bin")
    arguments = parser.parse_args()
    tool = os.path.join(arguments.bin, "tovak-translate")
    block_lines = BLOCK.count("\n")
    with tempfile.TemporaryDirectory() as tmp:
        seconds = {}
        for lines in (10_000, 100_000):
            path = os.path.join(tmp, f"{lines}.sh")
            with open(path, "w") as script:
                script.write(BLOCK * (lines // block_lines))
            seconds[lines] = best(tool, path, arguments.runs)
            print(f"{lines:>7} lines: {seconds[lines] * 1000:8.1f} ms")
    print(f"ratio 100,000 / 10,000 lines: {seconds[100_000] / seconds[10_000]:.2f} (10 when linear)")


if __name__ == "__main__":
    main()
