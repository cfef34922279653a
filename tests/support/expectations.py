# What the test scripts share: expect() notes a fact that does not hold and goes on, so that
# one run reports all of them; finish() prints them, or the word that all held, and exits.
import sys

failures = []


def expect(label, actual, wanted):
    if actual != wanted:
        failures.append(f"{label}:\n  got    {actual!r}\n  wanted {wanted!r}")


def finish(all_held):
    print("\n".join(failures) or all_held)
    sys.exit(1 if failures else 0)
