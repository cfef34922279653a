#!/usr/bin/env python3
"""Mutation testing: do the tests notice when the library's code is wrong?

Makes one small fault at a time in the C++ sources (a flipped comparison or truth value,
&& for ||, a dropped statement or "!", an integer off by one, a string one character
short), rebuilds a scratch copy of the tree with the sanitizers and runs the test suite.
A mutant the tests still pass "survives": either some behaviour goes untested, or the
mutant means the same as the original; list those in tools/mutation_equivalents.txt.

    tools/mutate.py --list                     # the mutants, nothing built
    tools/mutate.py                            # all of them (slow)
    tools/mutate.py launcher/exit_code         # files whose path contains the text
    tools/mutate.py --sample 20 --seed 1       # 20 picked at random
    tools/mutate.py --work /tmp/mutate-work --jobs 2   # keep the builds for the next run
    tools/mutate.py --again survivors.txt      # only what survived, as printed on stdout

Survivors are printed on stdout, progress on stderr. Exit status: 0 when no mutant
survived, 1 when one did, 2 when the unmutated tree does not build or pass its tests.
Local variable declarations are never deleted: without them the code does not compile.
"""

import argparse
import collections
import concurrent.futures
import dataclasses
import itertools
import os
import random
import re
import shutil
import signal
import subprocess
import sys
import tempfile
import threading
import time
from pathlib import Path

SOURCE_DIRS = ["src", "launcher", "translate", "doc"]
SOURCE_SUFFIXES = {".cpp", ".h"}
CMAKE_ARGS = ["-DCMAKE_BUILD_TYPE=Debug", "-DTOVAK_SANITIZE=address,undefined",
              "-DTOVAK_BUILD_BENCHMARKS=OFF"]
CTEST_ARGS = ["--stop-on-failure"]
# Seconds a test may take: a mutant that hangs is stopped after MUTANT_TEST_TIMEOUT. The
# unmutated tree's run fills the translate test's cache of shell runs, which under the
# sanitizers on a busy machine takes longer than that.
MUTANT_TEST_TIMEOUT, UNMUTATED_TEST_TIMEOUT = 60, 600
TEST_ENVIRONMENT = {"ASAN_OPTIONS": "abort_on_error=1:detect_leaks=1",
                    "UBSAN_OPTIONS": "halt_on_error=1:print_stacktrace=1"}
BUILD_TIMEOUT = 1200  # seconds; a build that hangs counts as one that failed
SUITE_TIMEOUT = 1800  # seconds; ctest's own timeout already stops each test after 60
EQUIVALENTS_FILE = "tools/mutation_equivalents.txt"
# The tests that can see a fault in a directory, where that is not all of them: the
# translator's code reaches only tovak-translate, which only these run. Skipping the others
# loses no kill and saves most of each run.
TESTS_OF_DIRECTORY = {"translate": "^(docs|translate)$"}
# The capture of the library's output is shared: the launch test checks it too.
TESTS_OF_FILE = {"translate/library_call.cpp": "^(docs|launch|translate)$"}
REPO = Path(__file__).resolve().parent.parent

FILE_SCOPE = "<file scope>"
DELETED = "<deleted>"
KILLED, SURVIVED, DID_NOT_COMPILE = "killed", "survived", "did not compile"

# --- Reading the C++ ------------------------------------------------------------------------

# Whatever can hide code-like text: found left to right, so "//" in a string is no comment.
LEXEMES = re.compile(r"""(?P<directive>^[ \t]*\#(?:\\\n|[^\n])*)
                       | (?P<comment>//[^\n]*|/\*.*?(?:\*/|\Z))
                       | (?P<raw>(?<!\w)(?:u8|[uUL])?R"(?P<delimiter>[^(\s]*)\(.*?\)(?P=delimiter)")
                       | (?P<string>"(?:\\.|[^"\\\n])*")
                       | (?P<char>(?<!\d)'(?:\\.|[^'\\\n])*')""", re.M | re.S | re.X)
ESCAPED_CHARACTER = re.compile(r"\\(?:x[0-9a-fA-F]+|[0-7]{1,3}|u[0-9a-fA-F]{4}|U[0-9a-fA-F]{8}|.)"
                               r"|.", re.S)
# Case and goto labels in front of a statement stay when the statement is deleted.
LABELS = re.compile(r"(?:\s+|(?:case\b(?:[^:;]|::)*|default\s*|[A-Za-z_]\w*\s*):(?!:))*")
# "Type name =", "Type name(", "const Type* name;"...: a local declaration, whose deletion
# would only leave code that does not compile.
DECLARATION = re.compile(r"(?:(?:const|constexpr|static|thread_local|volatile)\s+)*"
                         r"[A-Za-z_][\w:]*(?:\s*<[^;]*>)?[\s*&]+[A-Za-z_]\w*\s*(?:[=({\[;]|:(?!:))")
NOT_DECLARATIONS = {"return", "delete", "throw", "goto", "else", "case", "default", "new"}
RETURN = re.compile(r"\breturn\b")
NON_TYPE_WORDS = {"inline", "static", "constexpr", "consteval", "virtual", "explicit", "friend",
                  "extern"}


def line_end(text, offset):
    end = text.find("\n", offset)
    return len(text) if end < 0 else end


def blank_out(chars, start, end):
    for k in range(start, end):
        if chars[k] != "\n":
            chars[k] = " "


def mask_source(text):
    """The text with comments, preprocessor lines and the insides of literals blanked (same
    length, same line breaks), and the spans of the ordinary string literals, quotes included."""
    chars, strings = list(text), []
    for m in LEXEMES.finditer(text):
        start, end = m.span()
        if m.lastgroup in ("directive", "comment"):
            blank_out(chars, start, end)
        else:
            blank_out(chars, start + 1, end - 1)
        if m.lastgroup == "string":
            strings.append((start, end))
    return "".join(chars), strings


def top_level_only(text):
    """The text with everything inside (), [] and {} blanked; the brackets stay."""
    out, depth = [], 0
    for c in text:
        depth -= c in ")]}"
        out.append(" " if depth > 0 else c)
        depth += c in "([{"
    return "".join(out)


def without_templates(text):
    return re.sub(r"\btemplate\s*<[^{]*?>", " ", text)


@dataclasses.dataclass
class Function:
    name: str
    start: int
    returns_bool: bool
    end: int = -1


@dataclasses.dataclass
class Frame:
    kind: str  # "scope" (file, namespace, class), "body" (of a function, or a block in one), "init"
    name: str = ""  # of a namespace or class, to qualify the functions defined in it
    header: int = 0  # where the declaration or statement being read began
    depth: int = 0  # ( and [ open in it
    function: Function = None
    pending_return: int = -1


@dataclasses.dataclass
class Structure:
    functions: list = dataclasses.field(default_factory=list)
    statements: list = dataclasses.field(default_factory=list)  # (start, offset of its ";")
    returns: list = dataclasses.field(default_factory=list)  # (offset of "return", of its ";")


def scan_structure(code):
    """Finds the functions, and the statements and returns in their bodies, by brace depth."""
    frames, found = [Frame("scope")], Structure()
    for i, c in enumerate(code):
        top = frames[-1]
        if c in "([":
            top.depth += 1
        elif c in ")]":
            top.depth -= 1
        elif c == ";" and top.depth == 0:
            end_statement(code, top, i, found)
        elif c == "{":
            frames.append(open_frame(code, i, frames, found))
        elif c == "}" and len(frames) > 1:
            frame = frames.pop()
            if frame.function:
                frame.function.end = i
            if frame.kind != "init":
                frames[-1].header = i + 1
        elif c == "r" and top.kind == "body" and RETURN.match(code, i):
            top.pending_return = i
    return found


def end_statement(code, frame, offset, found):
    if frame.kind == "body":
        found.statements.append((LABELS.match(code, frame.header).end(), offset))
        if frame.pending_return >= 0:
            found.returns.append((frame.pending_return, offset))
    frame.header, frame.pending_return = offset + 1, -1


def open_frame(code, offset, frames, found):
    top = frames[-1]
    header = code[top.header:offset]
    kind = brace_kind(header, top)
    if kind == "function":
        function = describe_function(header, top.header, frames)
        found.functions.append(function)
        return Frame("body", header=offset + 1, function=function)
    name = scope_name(header) if kind == "scope" else ""
    return Frame(kind, name=name, header=offset + 1)


def brace_kind(header, top):
    """What a "{" opens: "scope", "function", "body" (a block in one) or "init" (anything else)."""
    if top.kind == "init" or top.depth > 0:
        return "init"
    flat = top_level_only(header).rstrip()
    if top.kind == "body":
        # A block follows ")", a label, else, do or try; any other brace starts an initialiser
        # or a lambda, whose statements are left alone.
        opens_block = not flat or flat[-1] in ");{}:" or re.search(r"\b(else|do|try)$", flat)
        return "body" if opens_block else "init"
    if re.match(r"\s*(inline\s+)?namespace\b|\s*extern\s*\"\s*\"$", flat):
        return "scope"
    before_parameters = without_templates(flat).split("(")[0]
    if re.search(r"\b(class|struct|union|enum)\b", before_parameters):
        return "scope"
    assigned = re.search(r"(?<![=!<>])=(?!=)", re.sub(r"operator\s*\S+", "", before_parameters))
    if "(" not in flat or assigned:
        return "init"
    if re.search(r"\)[\w\s]*:(?!:)", flat) and re.search(r"[\w>]$", flat):
        return "init"  # a member's braced initialiser in a constructor's list
    return "function"


def scope_name(header):
    flat = without_templates(top_level_only(header))
    namespace = re.search(r"\bnamespace\b\s*([\w:]*)", flat)
    if namespace:
        return namespace.group(1)
    declared = re.split(r"(?<!:):(?!:)", flat)[0]
    words = [w for w in re.findall(r"[\w:]+", declared)
             if w not in {"class", "struct", "union", "enum", "final", "extern"} and not w.isupper()]
    return words[-1] if words else ""


def describe_function(header, header_offset, frames):
    lead = re.match(r"(?:\s|\b(?:public|private|protected)\s*:)*", header).end()
    signature = header[lead:]
    flat = top_level_only(signature)
    parameters = flat.index("(")
    written = re.search(r"(?:[\w~]+\s*::\s*)*(?:operator\s*\S+|~?\w+)\s*$", signature[:parameters])
    scopes = [frame.name for frame in frames if frame.kind == "scope" and frame.name]
    name = "::".join(scopes + [re.sub(r"\s+", "", written.group(0)) if written else "?"])
    prefix = signature[:written.start()] if written else ""
    return Function(name, header_offset + lead, returns_bool(prefix, flat[parameters:]))


def returns_bool(prefix, after_parameters):
    prefix = re.sub(r"\[\[.*?\]\]|\"\s*\"", " ", without_templates(prefix), flags=re.S)
    words = [w for w in prefix.split() if w not in NON_TYPE_WORDS and not w.isupper()]
    return words == ["bool"] or re.search(r"->\s*bool\s*$", after_parameters) is not None


def excluded_spans(code):
    """Attributes and static_assert: mutating them gives no program worth running."""
    return [m.span() for m in re.finditer(r"\[\[.*?\]\]|\bstatic_assert\s*\("
                                          r"(?:[^()]|\((?:[^()]|\([^()]*\))*\))*\)", code, re.S)]


# --- Mutants ------------------------------------------------------------------------------

@dataclasses.dataclass
class Mutant:
    file: str
    line: int
    function: str
    original: str
    mutated: str
    kind: str
    start: int
    end: int
    replacement: str
    occurrence: int = 0
    equivalent: bool = False

    def key(self):
        return normalized(f"{self.file} | {self.function} | {self.original} -> {self.mutated}"
                          f" | {self.occurrence}")

    def applied_to(self, text):
        return text[:self.start] + self.replacement + text[self.end:]


def normalized(text):
    return " ".join(text.split())


def joined_lines(region):
    return " ".join(line.strip() for line in region.splitlines() if line.strip())


class SourceFile:
    def __init__(self, path, text):
        self.path, self.text = path, text
        self.code, self.strings = mask_source(text)
        self.structure = scan_structure(self.code)
        self.excluded = excluded_spans(self.code)

    def function_at(self, offset):
        for function in self.structure.functions:
            if function.start <= offset <= function.end:
                return function
        return None

    def is_excluded(self, offset):
        return any(start <= offset < end for start, end in self.excluded)

    def mutant(self, start, end, replacement, kind):
        first = self.text.rfind("\n", 0, start) + 1
        last = line_end(self.text, end)
        after = self.text[first:start] + replacement + self.text[end:last]
        function = self.function_at(start)
        return Mutant(self.path, self.text.count("\n", 0, start) + 1,
                      function.name if function else FILE_SCOPE,
                      joined_lines(self.text[first:last]), joined_lines(after) or DELETED,
                      kind, start, end, replacement)


FLIPPED = {"==": "!=", "!=": "==", "<": "<=", "<=": "<", ">": ">=", ">=": ">"}


def relational_edits(source):
    # Only with a blank on each side: template brackets, <<, >> and -> never have both.
    for m in re.finditer(r"==|!=|(?<=\s)(?:<=|>=|<|>)(?=\s)", source.code):
        if not re.search(r"\boperator\s*$", source.code[max(0, m.start() - 12):m.start()]):
            yield m.start(), m.end(), FLIPPED[m.group()], "relational"


def boolean_edits(source):
    for m in re.finditer(r"\b(true|false)\b", source.code):
        yield m.start(), m.end(), "false" if m.group() == "true" else "true", "boolean"
    for keyword, semicolon in source.structure.returns:
        function = source.function_at(keyword)
        expression = source.code[keyword + len("return"):semicolon]
        start = semicolon - len(expression.lstrip())
        end = semicolon - (len(expression) - len(expression.rstrip()))
        if function and function.returns_bool and source.code[start:end] not in ("true", "false"):
            yield start, end, "!(" + source.text[start:end] + ")", "boolean"


def logical_edits(source):
    for m in re.finditer(r"(?<=\s)(&&|\|\|)(?=\s)", source.code):
        yield m.start(), m.end(), "||" if m.group() == "&&" else "&&", "logical"


def is_declaration(statement):
    first_word = re.match(r"\w*", statement).group()
    if first_word in {"using", "typedef", "static_assert", "namespace"}:
        return True
    return first_word not in NOT_DECLARATIONS and DECLARATION.match(statement) is not None


def deletion_edits(source):
    for start, semicolon in source.structure.statements:
        if start == semicolon or is_declaration(source.code[start:semicolon + 1]):
            continue
        end = semicolon + 1
        first = source.code.rfind("\n", 0, start) + 1
        last = line_end(source.code, end)
        if not source.code[first:start].strip() and not source.code[end:last].strip():
            start, end = first, last  # the statement fills its lines: empty them, comments too
        yield start, end, "\n" * source.text.count("\n", start, end), "delete"


def integer_edits(source):
    for m in re.finditer(r"(?<![\w.'])(\d+)[uUlL]*(?![\w.'])", source.code):
        digits = m.group(1)
        if len(digits) > 1 and digits[0] == "0":
            continue  # octal
        for changed in (int(digits) + 1, int(digits) - 1):
            yield m.start(1), m.end(1), str(changed), "integer"


def string_edits(source):
    for start, end in source.strings:
        if re.search(r"\bextern\s*$", source.code[max(0, start - 12):start]):
            continue
        inner = source.text[start + 1:end - 1]
        characters = ESCAPED_CHARACTER.findall(inner)
        variants = {"".join(characters[:-1])} if characters else set()
        if inner.startswith(" "):
            variants.add(inner[1:])
        if inner.endswith(" "):
            variants.add(inner[:-1])
        for variant in sorted(variants):
            yield start + 1, end - 1, variant, "string"


def negation_edits(source):
    for m in re.finditer(r"(?<!operator)!(?!=)", source.code):
        yield m.start(), m.end(), "", "not"


EDIT_FINDERS = [relational_edits, boolean_edits, logical_edits, deletion_edits, integer_edits,
                string_edits, negation_edits]


def mutants_of_file(path, text):
    source = SourceFile(path, text)
    edits = sorted({edit for find in EDIT_FINDERS for edit in find(source)
                    if not source.is_excluded(edit[0])})
    mutants = [source.mutant(*edit) for edit in edits]
    seen = collections.Counter()
    for mutant in mutants:
        seen[mutant.function, mutant.original, mutant.mutated] += 1
        mutant.occurrence = seen[mutant.function, mutant.original, mutant.mutated]
    return mutants


def tracked_files(root, *paths):
    listing = subprocess.run(["git", "-C", str(root), "ls-files", "-z", "--cached", "--others",
                              "--exclude-standard", "--", *paths],
                             check=True, stdout=subprocess.PIPE, text=True).stdout
    return sorted({p for p in listing.split("\0") if p and (root / p).is_file()})


def read_source(path):
    with open(path, encoding="utf-8", newline="") as f:
        return f.read()


def mark_equivalents(mutants, path):
    """Marks the mutants listed as equivalent and warns about entries that match none."""
    by_key = {mutant.key(): mutant for mutant in mutants}
    lines = path.read_text(encoding="utf-8").splitlines() if path.exists() else []
    for number, line in enumerate(lines, 1):
        entry = normalized(line)
        if not entry or entry.startswith("#"):
            continue
        # The key is the entry up to one of its " | " (the reason follows), or all of it;
        # "file | function | * | reason" takes every mutant of that function.
        keys = [entry] + [entry[:m.start()] for m in re.finditer(r" \| ", entry)]
        matched = [by_key[key] for key in keys if key in by_key]
        fields = entry.split(" | ")
        if len(fields) > 3 and fields[2] == "*":
            prefix = f"{fields[0]} | {fields[1]} | "
            matched = [m for key, m in by_key.items() if key.startswith(prefix)]
        for mutant in matched:
            mutant.equivalent = True
        if not matched:
            print(f"warning: {EQUIVALENTS_FILE}:{number} matches no mutant: {entry}",
                  file=sys.stderr)


# --- Building and testing ------------------------------------------------------------------

def run(command, timeout, env=None):
    """(succeeded, output) of a command; one that times out has failed."""
    try:
        result = subprocess.run([str(part) for part in command], stdout=subprocess.PIPE,
                                stderr=subprocess.STDOUT, text=True, errors="replace",
                                timeout=timeout, env=env)
        return result.returncode == 0, result.stdout
    except subprocess.TimeoutExpired:
        return False, f"timed out after {timeout} s: {' '.join(map(str, command))}"


class ScratchTree:
    """A copy of the source tree with its own build directory, for one worker."""

    def __init__(self, path, build_jobs):
        self.path, self.build_dir, self.build_jobs = path, path / "build", build_jobs
        self.clock = 0.0

    def copy_from(self, root, files):
        # Unchanged files keep their old times, so that a kept build stays up to date.
        for path in self.path.rglob("*"):
            if path.is_file() and self.build_dir not in path.parents and \
                    path.relative_to(self.path).as_posix() not in files:
                path.unlink()  # gone from the tree since the last run
        for name in files:
            source, target = root / name, self.path / name
            if target.is_file() and target.read_bytes() == source.read_bytes():
                continue
            target.parent.mkdir(parents=True, exist_ok=True)
            shutil.copyfile(source, target)
            shutil.copymode(source, target)

    def configure(self):
        return run(["cmake", "-S", self.path, "-B", self.build_dir, *CMAKE_ARGS], BUILD_TIMEOUT)

    def build(self):
        return run(["cmake", "--build", self.build_dir, f"-j{self.build_jobs}"], BUILD_TIMEOUT)

    def run_tests(self, timeout, *extra_arguments):
        # The translate test keeps the logs of its shell runs here: a run whose script and
        # programs are unchanged need not be repeated for every mutant of tovak-translate.
        cache = {"TOVAK_TRANSLATE_TEST_CACHE": str(self.build_dir / "translate-test-cache")}
        return run(["ctest", "--test-dir", self.build_dir, *CTEST_ARGS, "--timeout", str(timeout),
                    *extra_arguments],
                   SUITE_TIMEOUT, env=dict(os.environ, **TEST_ENVIRONMENT, **cache))

    def write(self, name, text):
        path = self.path / name
        with open(path, "w", encoding="utf-8", newline="") as f:
            f.write(text)
        # Each write gets a later time than the last, however coarse the file system's clock.
        self.clock = max(time.time(), self.clock + 0.01)
        os.utime(path, (self.clock, self.clock))

    def check_unmutated(self, root, files):
        """None when the copy builds and passes its tests, else what went wrong."""
        self.copy_from(root, files)
        for step, action in (("configure", self.configure), ("build", self.build)):
            succeeded, output = action()
            if not succeeded:
                return f"the unmutated tree in {self.path} does not {step}:\n{output}"
        passed, output = self.run_tests(UNMUTATED_TEST_TIMEOUT, "--output-on-failure")
        return None if passed else f"the unmutated tree in {self.path} fails its tests:\n{output}"

    def verdict_on(self, mutant, original_text, log=None):
        self.write(mutant.file, mutant.applied_to(original_text))
        try:
            if not self.build()[0]:
                return DID_NOT_COMPILE
            passed, output = self.run_tests(MUTANT_TEST_TIMEOUT, "--output-on-failure",
                                            *tests_that_see(mutant.file))
            if log is not None:
                log.append(f"=== {mutant.file}:{mutant.line} {mutant.original} -> {mutant.mutated}\n{output}")
            return SURVIVED if passed else KILLED
        finally:
            self.write(mutant.file, original_text)


def tests_that_see(file):
    pattern = TESTS_OF_FILE.get(file, TESTS_OF_DIRECTORY.get(Path(file).parts[0]))
    return ["--tests-regex", pattern] if pattern else []


def work_through(tree, mutants, originals, counter, total, results, log):
    for mutant in mutants:
        started = time.monotonic()
        verdict = tree.verdict_on(mutant, originals[mutant.file], log)
        results.append((mutant, verdict))
        print(f"[{next(counter)}/{total}] {verdict:<15} {mutant.file}:{mutant.line}"
              f"  ({time.monotonic() - started:.1f} s)", file=sys.stderr, flush=True)
        if verdict == SURVIVED:  # in --again's form, for a run stopped before its report
            print(f"    {mutant.file}:{mutant.line} {mutant.original} -> {mutant.mutated}",
                  file=sys.stderr, flush=True)


class Log:
    """The tests' output for each mutant, written as it comes: a run stopped early keeps it."""

    def __init__(self, path):
        self.file, self.lock = open(path, "w", encoding="utf-8"), threading.Lock()

    def append(self, text):
        with self.lock:
            self.file.write(text)
            self.file.flush()


def in_parallel(function, arguments):
    with concurrent.futures.ThreadPoolExecutor(max(1, len(arguments))) as pool:
        return list(pool.map(function, *zip(*arguments)))


def run_mutants(mutants, originals, work, jobs, log_path=None):
    if not mutants:
        return report([])
    root = Path(work) if work else Path(tempfile.mkdtemp(prefix="tovak-mutate-"))
    jobs = max(1, min(jobs, len(mutants)))
    trees = [ScratchTree(root / f"tree{k + 1}", max(1, (os.cpu_count() or 1) // jobs))
             for k in range(jobs)]
    try:
        print(f"building and testing the unmutated tree in {root}", file=sys.stderr, flush=True)
        files = set(tracked_files(REPO))
        failures = in_parallel(ScratchTree.check_unmutated,
                               [(tree, REPO, files) for tree in trees])
        failure = next((failure for failure in failures if failure), None)
        if failure:
            print(failure[-6000:] + "\nfix the tree before mutating it", file=sys.stderr)
            return 2
        # Each tree takes a run of mutants in file order: a change of file costs a rebuild.
        shares = [mutants[k * len(mutants) // jobs:(k + 1) * len(mutants) // jobs]
                  for k in range(jobs)]
        started, counter, results = time.monotonic(), itertools.count(1), []
        log = Log(log_path) if log_path else None
        in_parallel(work_through, [(tree, share, originals, counter, len(mutants), results, log)
                                   for tree, share in zip(trees, shares)])
        print(f"{len(mutants)} mutants in {time.monotonic() - started:.0f} s", file=sys.stderr)
        return report(results)
    finally:
        if not work:
            shutil.rmtree(root, ignore_errors=True)


def report(results):
    survivors = sorted((m for m, verdict in results if verdict == SURVIVED),
                       key=lambda m: (m.file, m.start))
    for mutant in survivors:
        print(f"{mutant.file}:{mutant.line} {mutant.original} -> {mutant.mutated}")
        print(f"  [in {mutant.function}, occurrence {mutant.occurrence}]")
    counts = collections.Counter(verdict for _, verdict in results)
    print(f"mutants: {counts[KILLED]} killed, {counts[SURVIVED]} survived,"
          f" {counts[DID_NOT_COMPILE]} did not compile")
    return 1 if survivors else 0


def list_mutants(mutants):
    for m in mutants:
        mark = "  (equivalent)" if m.equivalent else ""
        print(f"{m.file}:{m.line} | {m.function} | {m.original} -> {m.mutated}"
              f" | {m.occurrence}{mark}")
    kinds = collections.Counter(m.kind for m in mutants)
    print(f"{len(mutants)} mutants, {sum(m.equivalent for m in mutants)} of them equivalent: "
          + ", ".join(f"{count} {kind}" for kind, count in sorted(kinds.items())))


def parse_arguments():
    parser = argparse.ArgumentParser(description=__doc__.split("\n\n")[0])
    parser.add_argument("filters", nargs="*",
                        help="mutate only files whose path contains one of these texts")
    parser.add_argument("--list", action="store_true", help="print the mutants, build nothing")
    parser.add_argument("--work", metavar="DIR", help="keep the scratch copies and builds here")
    parser.add_argument("--jobs", type=int, default=1, help="scratch copies run in parallel")
    parser.add_argument("--sample", type=int, metavar="N", help="run N mutants picked at random")
    parser.add_argument("--seed", type=int, default=0, help="seed for --sample")
    parser.add_argument("--again", metavar="REPORT",
                        help="run only the survivors an earlier run printed to this file, as after"
                             " new tests")
    parser.add_argument("--log", metavar="FILE",
                        help="write the tests' output for each mutant here, to see which check"
                             " caught it")
    return parser.parse_args()


def main():
    signal.signal(signal.SIGPIPE, signal.SIG_DFL)  # "--list | head" ends quietly
    arguments = parse_arguments()
    files = [name for name in tracked_files(REPO, *SOURCE_DIRS)
             if Path(name).suffix in SOURCE_SUFFIXES]
    originals = {name: read_source(REPO / name) for name in files}
    mutants = [mutant for name in files for mutant in mutants_of_file(name, originals[name])]
    mark_equivalents(mutants, REPO / EQUIVALENTS_FILE)
    if arguments.filters:
        mutants = [m for m in mutants if any(text in m.file for text in arguments.filters)]
    if arguments.again:
        survivors = set(Path(arguments.again).read_text(encoding="utf-8").splitlines())
        mutants = [m for m in mutants if f"{m.file}:{m.line} {m.original} -> {m.mutated}" in survivors]
    if arguments.list:
        list_mutants(mutants)
        return 0
    chosen = [m for m in mutants if not m.equivalent]
    if arguments.sample is not None:
        chosen = random.Random(arguments.seed).sample(chosen, min(arguments.sample, len(chosen)))
        chosen.sort(key=lambda m: (m.file, m.start))
    return run_mutants(chosen, originals, arguments.work, arguments.jobs, arguments.log)


if __name__ == "__main__":
    sys.exit(main())
