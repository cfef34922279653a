#!/usr/bin/env python3
# The generated manual pages and completion: tovak_tables on small templates (its entries,
# its refusals), the installed completion answering as a shell user types, and groff
# reading both pages without a warning.
#
# usage: docs_test.py TOVAK_TABLES DOC_DIR TOVAK_TRANSLATE
import os, re, shutil, subprocess, sys, tempfile
from support.expectations import expect, finish

TABLES, DOC, TRANSLATE = sys.argv[1], sys.argv[2], sys.argv[3]


QK_FORMS = ("@form quenmark -s S\n@form quenmark --vq-address=a A\n@form quenmark --vq-user=u U\n"
            "@form quenmark --vq-password=p P\n")
QK_ENTRIES = (".TP\n\\fB\\-s\\fR, \\fB\\-\\-scan\\fR\nS\n.TP\n\\fB\\-\\-vq\\-address\\fR=\\fIa\\fR\nA\n"
              ".TP\n\\fB\\-\\-vq\\-user\\fR=\\fIu\\fR\nU\n.TP\n\\fB\\-\\-vq\\-password\\fR=\\fIp\\fR\nP\n")
# Label, template (None: no such file), output file, and the exit code with what is written
# (or, failing, said on standard error).
for label, template, output, wanted in (
    ("words, list and entries", "@COMMAND_WORDS@;@COMMAND_LIST@\n@options quenmark\n" + QK_FORMS, "out",
     (0, "compare co update up acquire ac quenmark qk;compare (co), update (up), acquire (ac), quenmark (qk)\n"
      + QK_ENTRIES)),
    ("an entry without text", "@options quenmark\n" + QK_FORMS.replace("-s S", "-S S"), "out",
     (1, "tovak_tables: no text for -s in quenmark\n")),
    ("a text without an entry", "@options quenmark\n@form quenmark --x X\n" + QK_FORMS, "out",
     (1, "tovak_tables: no option --x in quenmark\n")),
    ("an unknown word in a text", "@form quenmark,scan -s S\n", "out", (1, "tovak_tables: no command word scan\n")),
    ("an unknown word in an entry", "@options scan\n", "out", (1, "tovak_tables: no command word scan\n")),
    ("no template", None, "out", (1, "tovak_tables: cannot read {work}/in\n")),
    ("no place for the output", "", "no/out", (1, "tovak_tables: cannot write {work}/no/out\n")),
    ("no arguments", None, None, (2, "usage: tovak_tables TEMPLATE OUTPUT\n")),
):
    with tempfile.TemporaryDirectory() as work:
        if template is not None:
            with open(f"{work}/in", "w") as template_file:
                template_file.write(template)
        done = subprocess.run([TABLES, *([f"{work}/in", f"{work}/{output}"] if output else [])],
                              capture_output=True, text=True)
        written = open(f"{work}/out").read() if os.path.exists(f"{work}/out") else ""
        expect(label, (done.returncode, written or done.stderr), (wanted[0], wanted[1].format(work=work)))
expect("a short name with a value",
       "\n\\fB\\-l\\fR \\fIdir\\fR, \\fB\\-\\-local\\fR=\\fIdir\\fR\n" in open(f"{DOC}/tovak.1").read(), True)

# Words typed so far, split as bash splits them ("--local=/srv" at its "="), the last one being
# completed: what the completion offers, then the completion options it sets.
def completed(*words):
    complete = "_tovak" if words[0] == "tovak" else "_tovak_translate"
    script = (f'. "{DOC}/tovak.bash"; compopt() {{ options+=" $*"; }}; '
              f'COMP_WORDS=("$@"); COMP_CWORD=$(($# - 1)); {complete}; echo "${{COMPREPLY[*]}}$options"')
    done = subprocess.run(["bash", "-c", script, "bash", *words], capture_output=True, text=True, cwd=DOC)
    expect(f"no complaint completing {words}", done.stderr, "")
    return done.stdout.split()


for words, wanted in (
    (["tovak", ""], "--help --version compare co update up acquire ac quenmark qk"),
    (["tovak", "qk", "--vq-"], "--vq-address= --vq-user= --vq-password="),
    (["tovak", "co", "--no"], ""),
    (["tovak", "up", "--no"], "--noinventory"),
    (["tovak", "ac", "--m"], "--machine-type= --meta-only"),
    (["tovak", "co", "--loc"], "--local= -o nospace"),
    (["tovak", "co", "--local", "=", "CM"], "CMakeFiles -o filenames"),
    (["tovak", "co", "--local", "="], "CMakeFiles -o filenames"),
    (["tovak", "co", "--local=CM"], "--local=CMakeFiles -o filenames"),
    (["tovak", "co", "-l", ""], "CMakeFiles -o filenames"),
    (["tovak", "co", "--local", "CM"], ""),
    (["tovak", "co", "-m", "--x"], ""),
    (["tovak", "co", "-F", "--x"], "--xml"),
    (["tovak-translate", "--fendix", "tovak.1.g"], "tovak.1.gz -o filenames"),
    (["tovak-translate", "--fendix", "/x", "ac", "--pro"],
     "--proxy-address= --proxy-user= --proxy-port= --proxy-password="),
    (["tovak-translate", "--script", "--d"], "--diff"),
    (["tovak-translate", "--sc"], "--script"),
):
    expect(f"completion of {words}", completed(*words), wanted.split())

# tovak-translate's own options, as its help lists them, are what the completion offers and
# the manual describes.
options = set(re.findall(r"--[a-z-]+", subprocess.run([TRANSLATE, "--help"], capture_output=True, text=True).stdout))
offered = set(completed("tovak-translate", "--") + completed("tovak-translate", "--script", "--"))
expect("the translator's options completed", offered, options | {"--help", "--version"})
page = open(f"{DOC}/tovak-translate.1").read()
expect("the translator's options in its manual", [o for o in sorted(options) if o.replace("-", "\\-") not in page], [])

pages = ("tovak.1", "tovak-translate.1") if shutil.which("groff") else (
    print("skipped: no groff to read the pages") or ())
for page in pages:
    done = subprocess.run(["groff", "-man", "-Tutf8", "-ww", "-z", f"{DOC}/{page}"], capture_output=True, text=True)
    expect(f"groff on {page}", (done.returncode, done.stderr), (0, ""))

finish("all documents as expected")
