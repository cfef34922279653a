#!/usr/bin/env python3
# The launcher's system-log record, read from a socket of the test's own that a private mount
# namespace puts at /dev/log: a record for every line, its masking, escaping and cut, the
# caller it names; and that no socket, a refused one or a full one changes nothing a call does.
#
# usage: record_test.py BIN_DIR LINES_FILE   (exits 77, skipped, without mount namespaces)
import os, re, select, shlex, shutil, socket, subprocess, sys, tempfile
from support.expectations import expect, finish

TOVAK, LINES = os.path.realpath(sys.argv[1]) + "/tovak", sys.argv[2]
# On /dev, a tmpfs holding nothing but, if it is there, the socket $2 as log.
NAMESPACE = r'''set -e; mount -t tmpfs none /dev; [ ! -S "$1/$2" ] || { touch /dev/log
mount --bind "$1/$2" /dev/log; }; shift 2; exec "$@"'''
FIELD = re.compile(rb'(?:^| )(\w+)=(?:"((?:[^"\\]|\\.)*)"?|(\S+))')  # each after one blank
HEAD = re.compile(rb"<13>[A-Z][a-z]\w ( [1-9]|[1-3]\d) \d\d:\d\d:\d\d tovak\[\d+\]: (.*)", re.S)


# What a call in the namespace with the socket at printed and returned, and the fields of its
# records, whose head must be as syslog wants it.
def call(command, env={}, at="log", stdin=b""):
    done = subprocess.run(["unshare", "-rm", "sh", "-c", NAMESPACE, "sh", TOP, at, *command], input=stdin,
                          env={**os.environ, **env}, cwd=WORK, capture_output=True, timeout=30)
    records = []
    while select.select([LOG], [], [], 0)[0]:
        record = LOG.recv(4096)
        found = FIELD.findall(HEAD.fullmatch(record)[2])
        records.append({"size": len(record), **{k.decode(): q or b for k, q, b in found}})
    return (done.returncode, done.stdout, done.stderr), records


if subprocess.run(["unshare", "-rm", "true"], capture_output=True).returncode != 0:
    sys.exit(print("skipped: this machine gives no private mount namespace") or 77)
TOP = tempfile.mkdtemp(prefix="tovak-record-")
WORK = tempfile.mkdtemp(prefix="a dir\nwith a newline ", dir=TOP)
LOG, FULL = (socket.socket(socket.AF_UNIX, socket.SOCK_DGRAM) for _ in range(2))
LOG.bind(TOP + "/log")
FULL.bind(TOP + "/full")  # never read
(filler := socket.socket(socket.AF_UNIX, socket.SOCK_DGRAM)).connect(TOP + "/full")
while select.select([], [filler], [], 0)[1]:  # until FULL is full
    filler.send(b"x" * 1024)

# Every line lines.txt gives the launcher, accepted or refused: one record of it, and the
# same call without a socket; a typical one also with a full socket.
CASE = re.compile(r"([^#:][^:]*): (.*?) => (?!ask |self-test )")
for case in filter(None, map(CASE.match, open(LINES, encoding="utf-8"))):
    done, records = call([TOVAK, *(words := shlex.split(case[2]))])
    expect(case[1], [r["line"].startswith(" ".join(words[:1]).encode()) for r in records], [True])
    for at in ("none", "full") if case[1].startswith("typical") else ("none",):
        expect(f"{case[1]}, socket {at}", call([TOVAK, *words], at=at)[0], done)

ME = b" ".join(open("/proc/self/cmdline", "rb").read().split(b"\0")[:-1])
open(SCRIPT := TOP + "/nightly.sh", "w").write(f"#!/bin/sh\n{TOVAK} co -F\nexit $?\n")
# Every wrapper, each a program that forks as sudo does, and every shell with -c, in one chain.
WRAPPERS = "sudo env nice nohup timeout ionice chrt taskset flock setsid stdbuf time".split()
SHELLS = "sh dash bash ksh mksh zsh ash".split()
for name in WRAPPERS + SHELLS:
    os.symlink(shutil.which("timeout" if name in WRAPPERS else "bash"), f"{TOP}/{name}")
CHAIN = [w for name in WRAPPERS for w in (f"{TOP}/{name}", "9")] + [w for name in SHELLS for w in (
    f"{TOP}/{name}", "-o", "errexit", "-c", '"$@"; true', "x")]
UTF8 = "\u0080\u07ff\u0800\ud7ff\uffff\U00010000\U0010ffff ~".encode()  # each bound
# label, command, environment, the fields wanted (None: no record)
for label, command, env, wanted in (
    ("wrappers", [*CHAIN, TOVAK, "co"], {"SUDO_USER": "u"}, {"caller": ME, "uid": b"0",
     "sudo_user": b"u", "cwd": WORK.replace("\n", "\\n").encode(), "line": b"co"}),
    ("passwords", [TOVAK, "ac", "--proxy-password=p,q r", "--vq-password=p",
                   "--update-args=--user=u,--password=pw,--b --password=p q"], {},
     {"line": b"ac --proxy-password=*** --vq-password=*** "
              b"--update-args=--user=u,--password=***,--b --password=*** q", "sudo_user": None}),
    ("escaped", [TOVAK, "co", b"-" + UTF8 + b'\n\x1b\x1f\x7f"\\\xc1\xbf\xe0\x9f\xbf\xed\xa0\x80'
                 b"\xf5\xe2\x82\xc0\xf0\x8f\xbf\xbf\xf0\x9f\x98\x7f\xf4\x90\x80\x80\xe2\x82"], {},
     {"line": b"co -" + UTF8 + rb'\n\x1b\x1f\x7f\"\\\xc1\xbf\xe0\x9f\xbf\xed\xa0\x80'
              rb"\xf5\xe2\x82\xc0\xf0\x8f\xbf\xbf\xf0\x9f\x98\x7f\xf4\x90\x80\x80\xe2\x82"}),
    ("script", [f"{TOP}/bash", "--norc", SCRIPT, "--password=x,y", "a--vq-password=s,t u"], {},
     {"caller": f"{TOP}/bash --norc {SCRIPT} --password=***,y a--vq-password=*** u".encode()}),
    ("a shell reading its standard input", [f"{TOP}/sh", "-e"], {}, {"caller": f"{TOP}/sh -e".encode()}),
    # sudo as the first process of a pid namespace, whose parent cannot be read: no caller
    ("pid 1", ["unshare", "-pf", "--mount-proc", *CHAIN[:2], TOVAK, "co"], {}, {"uid": b"-1"}),
    ("switched off", [TOVAK, "co"], {"TOVAK_NO_SYSLOG": ""}, None),
    *((word, [TOVAK, word], {}, None) for word in ("--help", "--version")),
):
    records = call(command, env, stdin=f"{TOVAK} co\n".encode())[1]
    expect(label, [{k: r.get(k) for k in wanted or ()} for r in records], [wanted][:bool(wanted)])

# Cut at 2,048 bytes after a whole character or escape, at each offset in their cycle.
whole = call([TOVAK, "co", "-" + "x" * (2048 - call([TOVAK, "co", "-"])[1][0]["size"])])[1][0]
expect("2,048 bytes", (whole["size"], whole["line"][-2:]), (2048, b"xx"))
for offset in range(8):
    record = call([TOVAK, "co", "-" + "x" * offset + "\u00e9\x1b\n" * 500])[1][0]
    cut = re.fullmatch(rb"co -x*(\xc3\xa9\\x1b\\n)*(\xc3\xa9(\\x1b)?)?\[cut\]", record["line"])
    expect(f"cut {offset}", (2044 < record["size"] <= 2048, bool(cut)), (True, True))
shutil.rmtree(TOP)
finish("all records as expected")
