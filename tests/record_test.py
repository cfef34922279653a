#!/usr/bin/env python3
# The launcher's system-log record, read from a socket of the test's own that a private mount
# namespace puts at /dev/log: a record for every line, its masking, escaping and cut, the
# caller it names; and that no socket, a refused one or a full one changes nothing a call does.
#
# usage: record_test.py BIN_DIR LINES_FILE   (exits 77, skipped, without mount namespaces)
import os
import re
import shlex
import shutil
import socket
import subprocess
import sys
import tempfile

TOVAK, LINES = os.path.realpath(sys.argv[1]) + "/tovak", sys.argv[2]
for name in ("TOVAK_NO_SYSLOG", "SUDO_USER"):
    os.environ.pop(name, None)
# On /dev: a tmpfs with the devices a call uses and, where the place has one, its socket as log.
NAMESPACE = r'''set -e; d=$1/dev; mount -t tmpfs none "$d"; for n in null zero full log; do
touch "$d/$n"; done; for n in null zero full; do mount --bind "/dev/$n" "$d/$n"; done
[ ! -S "$1/log" ] || mount --bind "$1/log" "$d/log"; mount --rbind "$d" /dev; shift; exec "$@"'''
failures = []


def expect(label, actual, wanted):
    if actual != wanted:
        failures.append(f"{label}:\n  got    {actual!r}\n  wanted {wanted!r}")


# A place for a namespace: its /dev and a datagram socket, bound as its log or not.
def place(name, bound=True):
    os.makedirs(f"{TOP}/{name}/dev")
    log = socket.socket(socket.AF_UNIX, socket.SOCK_DGRAM)
    log.setblocking(False)
    if bound:
        log.bind(f"{TOP}/{name}/log")
    return log


def drained(log):
    records = []
    try:
        while True:
            records.append(log.recv(4096))
    except BlockingIOError:
        return records


# What a call in the namespace of a place printed and returned, its pid and its records.
def call(command, env=None, at="log"):
    with subprocess.Popen(["unshare", "-rm", "sh", "-c", NAMESPACE, "sh", f"{TOP}/{at}", *command],
                          env={**os.environ, **(env or {})}, cwd=WORK, stdout=subprocess.PIPE,
                          stderr=subprocess.PIPE) as run:
        out, err = run.communicate(timeout=30)
    return (run.returncode, out, err), run.pid, drained(LOG)


# The fields of a record, and the pid in its head; None when the head is not syslog's.
def fields(record):
    head = re.fullmatch(rb"<13>[A-Z][a-z]{2} [ \d]\d \d\d:\d\d:\d\d tovak\[(\d+)\]: (.*)",
                        record, re.S)
    found = re.findall(rb'(\w+)=(?:"((?:[^"\\]|\\.)*)"?|(\S+))', head[2]) if head else []
    return head and {"pid": int(head[1]), **{k.decode(): q or b for k, q, b in found}}


if subprocess.run(["unshare", "-rm", "true"], capture_output=True).returncode != 0:
    print("skipped: this machine gives no private mount namespace")
    sys.exit(77)
TOP = tempfile.mkdtemp(prefix="tovak-record-")
WORK = TOP + "/a dir\nwith a newline"
os.mkdir(WORK)
LOG = place("log")
place("refused").close()  # the file stays, with nobody behind it
place("none", bound=False)
FULL = place("full")  # never read
filler = socket.socket(socket.AF_UNIX, socket.SOCK_DGRAM)
filler.connect(f"{TOP}/full/log")
filler.setblocking(False)
try:
    while True:
        filler.send(b"x" * 1024)
except BlockingIOError:
    pass

# Every line the launcher takes in lines.txt, accepted or refused: one record, and what the
# call does is what it does with no socket, with a full one and with a refused one.
for line in open(LINES, encoding="utf-8"):
    label, _, rest = line.partition(":")
    words, _, outcome = rest.partition(" =>")
    if line.startswith("#") or not rest or outcome.split(" ")[1:2] in (["ask"], ["self-test"]):
        continue
    done, _, records = call([TOVAK, *shlex.split(words)])
    joined = " ".join(shlex.split(words)).encode()
    logged = [fields(record)["line"] for record in records]
    expect(label, [r == joined or b"password=***" in r for r in logged], [True])
    for at in ("none", "full", "refused") if label.startswith("typical") else ("none",):
        expect(f"{label}, socket {at}", call([TOVAK, *shlex.split(words)], at=at)[0], done)

ME = b" ".join(open("/proc/self/cmdline", "rb").read().split(b"\0")[:-1])
SCRIPT = TOP + "/nightly.sh"
with open(SCRIPT, "w") as script:
    script.write(f"#!/bin/sh\n{TOVAK} co -F\nexit $?\n")
os.symlink(shutil.which("timeout"), TOP + "/sudo")  # forks, as sudo does
UTF8 = "\u00e9\u20ac\U0001f600\u0080\u0800\ud7ff\U00010000\U0010ffff ~".encode()
# label, command, environment; the fields wanted, or None for no record.
for label, command, env, wanted in (
    ("direct", [TOVAK, "co", "-F"], {}, {"caller": ME, "uid": b"0", "sudo_user": None,
                                          "cwd": WORK.replace("\n", "\\n").encode()}),
    ("update-args", [TOVAK, "up", "--update-args=--user=u,--password=pw,--b --password=p q"],
     {}, {"line": b"up --update-args=--user=u,--password=***,--b --password=*** q"}),
    ("proxy password", [TOVAK, "ac", "--proxy-user=u", "--proxy-password=p,q r"], {},
     {"line": b"ac --proxy-user=u --proxy-password=***"}),
    ("vq password", [TOVAK, "qk", "--vq-user=u", "--vq-password=p"], {},
     {"line": b"qk --vq-user=u --vq-password=***"}),
    ("escaped", [TOVAK, "co", b"-\n\x1b\x1f\x7f\t\"\\\xff\x80\xc3(\xc0\xaf\xc1\xbf\xe0\x9f\xbf"
                 b"\xed\xa0\x80\xf0\x8f\xbf\xbf\xf4\x90\x80\x80\xf5\xe2\x82"], {},
     {"line": rb'co -\n\x1b\x1f\x7f\x09\"\\\xff\x80\xc3(\xc0\xaf\xc1\xbf\xe0\x9f\xbf\xed\xa0'
              rb'\x80\xf0\x8f\xbf\xbf\xf4\x90\x80\x80\xf5\xe2\x82'}),
    ("valid UTF-8 kept", [TOVAK, "co", b"-" + UTF8], {}, {"line": b"co -" + UTF8}),
    ("script", ["sh", SCRIPT, "--password=x,y", "a--vq-password=s,t u"], {},
     {"caller": f"sh {SCRIPT} --password=***,y a--vq-password=*** u".encode(), "line": b"co -F"}),
    ("sudo", [TOP + "/sudo", "9", TOVAK, "co"], {"SUDO_USER": "al\"ice"},
     {"caller": ME, "sudo_user": b'al\\"ice'}),
    ("sh -c", ["sh", "-o", "errexit", "-c", f"{TOVAK} co; true"], {}, {"caller": ME}),
    ("switched off", [TOVAK, "co"], {"TOVAK_NO_SYSLOG": "1"}, None),
    ("switch empty", [TOVAK, "co"], {"TOVAK_NO_SYSLOG": ""}, {"line": b"co"}),
    ("help", [TOVAK, "--help"], {}, None),
    ("version", [TOVAK, "--version"], {}, None),
):
    _, pid, records = call(command, env)
    got = [fields(record) for record in records]
    expect(label, [{k: r.get(k) for k in wanted} for r in got] if wanted else got,
           [wanted] if wanted else [])
    if label == "direct":
        expect("pid", got[0]["pid"], pid)

# Cut at 2,048 bytes after a whole character or escape, at each offset in their cycle.
base = len(call([TOVAK, "co", "-"])[2][0])
expect("2,048 bytes", call([TOVAK, "co", "-" + "x" * (2048 - base)])[2][0][-8:], b"xxxxxxx\"")
for offset in range(7):
    record = call([TOVAK, "co", "-" + "x" * offset + "\u00e9\x1b" * 700])[2][0]
    cut = re.fullmatch(rb"co -x*(\xc3\xa9\\x1b)*(\xc3\xa9)?\[cut\]", fields(record)["line"])
    expect(f"cut {offset}", (len(record) <= 2048, len(record) > 2040, bool(cut)), (True,) * 3)
shutil.rmtree(TOP)
print("\n".join(failures) or "all records as expected")
sys.exit(1 if failures else 0)
