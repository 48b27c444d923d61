"""How good are the tests of the core? Makes one small change at a time in a copy of its sources,
builds it and runs the tests; a change that no test notices shows a gap.

    tests/mutate [--count 200] [--seed 408] [--only src/link] [--headers] [--again <report>]

Changed are comparisons, "&&" and "||", "+" and "-", numbers by one, and what functions that return
a bool return. Assertions stay as they are: they judge the program, and no user sees them. Which
places are changed follows from --seed. The tests of the folder run first, then those of the other
folders and of the whole program; a program of tests is not run beyond its first failure. A change
that does not compile is replaced by another one. Headers are left out unless --headers asks for
them alone: a change of one takes minutes, because most tests include it.

tests/mutants-alike.txt lists changes that make no difference, each with its reason: they are not
tried and do not count. An entry holds wherever in its file the same code stands, whatever comments and
layout are around it; one whose code has gone is told at the start. --again tries the changes that survived in a former run's report once more.

Builds in build/mutate, one file at a time, and leaves the sources alone. The report is
build/mutate/report-<seed>.txt; the exit status is 1 when less than 95 % are caught.
"""
import argparse
import functools
import os
import random
import re
import resource
import shutil
import signal
import subprocess
import sys
import time
from dataclasses import dataclass
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent
WORK = ROOT / "build" / "mutate"
TREE = WORK / "tree"
BUILD = WORK / "build"
ALIKE = ROOT / "tests" / "mutants-alike.txt"
FOLDERS = ("link", "doctor", "acquisition", "panel", "display", "measure", "config",
           "calibration")
# The programs of a folder's own tests; then all, the quick ones first.
OWN = {"link": ("link", "library_bridge", "serial"), "doctor": ("doctor", "doctor_system")}
ALL = ("link", "doctor", "library_bridge", "panel", "acquisition", "calibration", "config", "simulator",
       "measure", "program_on_library", "display", "serial", "doctor_system", "scope")
PROGRAMS = [f"test_{program}" for program in ALL]
PLACES = {"library_bridge": "link", "serial": "link/serial", "doctor_system": "doctor/system",
          "program_on_library": "scope"}
WANTED = 95.0  # percent

# --- Places to change -----------------------------------------------------------------------------

TOKEN = re.compile(
    r"""(?P<space>\s+|//[^\n]*|/\*.*?\*/)
      | (?P<text>(?:u8|[uUL])?R"(?P<mark>[^(\s]*)\(.*?\)(?P=mark)"
                |(?:u8|[uUL])?"(?:\\.|[^"\\\n])*"|(?:u8|[uUL])?'(?:\\.|[^'\\\n])*')
      | (?P<number>(?:\d|\.\d)(?:[eEpP][+-]|'?[\w.])*)
      | (?P<word>[A-Za-z_]\w*)
      | (?P<sign><<=|>>=|<=>|->\*|\.\.\.|::|->|\+\+|--|&&|\|\||<<|>>|[-+*/%&|^<>=!]=|[^\w\s])
    """, re.VERBOSE | re.DOTALL)

SWAPS = {"<": ("<=", ">="), "<=": ("<", ">"), ">": (">=", "<="), ">=": (">", "<"),
         "==": ("!=",), "!=": ("==",), "&&": ("||",), "||": ("&&",),
         "+": ("-",), "-": ("+",), "+=": ("-=",), "-=": ("+=",)}
INTEGER = re.compile(r"(0[xX][\da-fA-F']+|[\d']+)([uUlLzZ]*)")
REAL = re.compile(r"((?:\d[\d']*)?\.?\d*)((?:[eE][-+]?\d+)?[fFlL]?)")
BOOL_FUNCTION = re.compile(r"(?:^|[;{}])\s*(?:\[\[nodiscard\]\]\s*)?"
                           r"(?:(?:static|constexpr|inline|virtual)\s+)*bool\s+$")
BEFORE_SIGN = {"(", "[", "{", ",", "=", "?", ":", "return", "<", ">", "<=", ">=", "==", "!=", "&&",
               "||", "*", "/", "+", "-", "case", ";"}


@dataclass(frozen=True)
class Token:
    kind: str
    text: str
    start: int
    spaced: bool  # blanks on both sides, as around every operator of two sides


@dataclass(frozen=True)
class Change:
    path: str
    start: int
    end: int
    new: str


@functools.cache
def text_of(path):
    """What a source held when the run began."""
    return (ROOT / path).read_text()


def without_other_systems(source):
    """The source with preprocessor lines, and what they leave out here, blanked."""
    result = []
    taken = []
    continued = False
    for line in source.splitlines(keepends=True):
        directive = re.match(r"\s*#\s*(\w+)\s*(\w*)", line)
        blank = re.sub(r"[^\n]", " ", line)
        if continued or directive:
            continued = line.rstrip("\n").endswith("\\")
            result.append(blank)
        else:
            result.append(line if all(taken) else blank)
        if directive:
            name = directive.group(1)
            if name == "ifdef":
                taken.append(directive.group(2) != "_WIN32")
            elif name in ("if", "ifndef"):
                taken.append(True)
            elif name == "else":
                taken[-1] = not taken[-1]
            elif name == "endif":
                taken.pop()
    return "".join(result)


def tokens_of(source):
    tokens = []
    at = 0
    while at < len(source):
        match = TOKEN.match(source, at)
        end = match.end()
        if match.lastgroup != "space":
            spaced = source[at - 1:at].isspace() and source[end:end + 1].isspace()
            kind = "text" if match.group("text") else match.lastgroup
            tokens.append(Token(kind, match.group(), at, spaced))
        at = end
    return tokens


def changed_numbers(text):
    if integer := INTEGER.fullmatch(text):
        digits, suffix = integer.groups()
        value = int(digits.replace("'", ""), 0 if digits[:2].lower() == "0x" else 10)
        as_written = (lambda n: f"0x{n:X}") if digits[:2].lower() == "0x" else str
        return [as_written(value + 1) + suffix] + ([as_written(value - 1) + suffix] if value else [])
    if (real := REAL.fullmatch(text)) and real.group(1):
        value = float(real.group(1).replace("'", ""))
        return [repr(value + 1) + real.group(2), repr(value - 1) + real.group(2)]
    return []


def closing(tokens, index):
    """Index of the token that closes the bracket at `index`."""
    depth = 0
    for at in range(index, len(tokens)):
        depth += tokens[at].text in ("(", "[", "{")
        depth -= tokens[at].text in (")", "]", "}")
        if depth == 0:
            return at
    return len(tokens) - 1


def bool_bodies(source, tokens):
    """The ranges of tokens that are bodies of functions that return a bool."""
    ranges = []
    for index, token in enumerate(tokens):
        if token.text == "(" and index and tokens[index - 1].kind == "word":
            name = index - 1
            while name > 1 and tokens[name - 1].text == "::":
                name -= 2
            before = source[max(0, tokens[name].start - 80):tokens[name].start]
            before = re.sub(r"//[^\n]*\n|template <[^\n]*>\n", ";", before)
            body = closing(tokens, index) + 1
            while body < len(tokens) and tokens[body].text in ("const", "noexcept", "override"):
                body += 1
            if BOOL_FUNCTION.search(before) and body < len(tokens) and tokens[body].text == "{":
                ranges.append((body, closing(tokens, body)))
    return ranges


def left_out(tokens):
    """Indices of tokens in assertions, in template brackets and after "operator"."""
    out = set()
    open_brackets = []
    for index, token in enumerate(tokens):
        if token.text in ("assert", "static_assert"):
            out.update(range(index, closing(tokens, index + 1) + 1))
        elif token.text == "operator":
            out.add(index + 1)
        elif token.text == "<" and not token.spaced:
            open_brackets.append(index)
        elif token.text in (">", ">>") and not token.spaced:
            for _ in token.text:
                if open_brackets:
                    out.update(range(open_brackets.pop(), index + 1))
        elif token.text in (";", "{"):
            open_brackets.clear()
    return out


@functools.cache
def changes_of(path):
    """All changes of a file, those of one place in a list of their own."""
    source = without_other_systems(text_of(path))
    tokens = tokens_of(source)
    out = left_out(tokens)
    bodies = bool_bodies(source, tokens)
    places = []

    def add(start, end, news):
        places.append([Change(path, start, end, new) for new in news])

    for index, token in enumerate(tokens):
        if index in out:
            continue
        end = token.start + len(token.text)
        before = tokens[index - 1].text if index else ";"
        if token.kind == "sign" and token.spaced and token.text in SWAPS:
            add(token.start, end, SWAPS[token.text])
        elif token.text == "-" and before in BEFORE_SIGN:
            add(token.start, end, [""])
        elif token.kind == "number" and (numbers := changed_numbers(token.text)):
            add(token.start, end, numbers)
        elif token.text == "return" and tokens[index + 1].text in ("true", "false"):
            value = tokens[index + 1]
            add(value.start, value.start + len(value.text),
                ["false" if value.text == "true" else "true"])
        elif token.text == "return" and any(first < index < last for first, last in bodies):
            last = index + 1
            while tokens[last].text != ";":
                last = closing(tokens, last) + 1 if tokens[last].text in "([{" else last + 1
            start = tokens[index + 1].start
            add(start, tokens[last].start, [f"!({source[start:tokens[last].start]})"])
    return places


def all_changes(only, kinds):
    paths = [path.relative_to(ROOT).as_posix() for folder in FOLDERS
             for path in sorted((ROOT / "src" / folder).iterdir()) if path.suffix in kinds]
    return [place for path in paths if path.startswith(only) for place in changes_of(path)]


# --- How a change reads ---------------------------------------------------------------------------


def lines_of(change):
    """The number of the first line that is changed, the lines before and the lines after."""
    source = text_of(change.path)
    first = source.rfind("\n", 0, change.start) + 1
    last = source.find("\n", change.end)
    old = source[first:last]
    new = source[first:change.start] + change.new + source[change.end:last]
    number = source.count("\n", 0, first) + 1
    return number, " ".join(old.split()), " ".join(new.split())


def key_of(change):
    return (change.path, *lines_of(change)[1:])


@functools.cache
def code_of(text):
    """The tokens of a piece of a source: neither comments nor the layout make a difference."""
    return tuple(token.text for token in tokens_of(text))


@functools.cache
def places_of_tokens(path):
    """The tokens of a source, and the index of each by the place where it starts."""
    tokens = tokens_of(without_other_systems(text_of(path)))
    return tokens, {token.start: index for index, token in enumerate(tokens)}


def is_same(change, key):
    """Whether `change` is the one that `key` names: the same tokens around it become the same."""
    path, old, new = key
    if change.path != path:
        return False
    tokens, index_at = places_of_tokens(path)
    before, after = code_of(old), code_of(new)
    # What is changed begins where the two lines first differ.
    first = index_at[change.start] - len(os.path.commonprefix([before, after]))
    last = first + len(before)
    if first < 0 or tuple(token.text for token in tokens[first:last]) != before:
        return False
    source = text_of(path)
    end = tokens[last - 1].start + len(tokens[last - 1].text)
    return change.end <= end and code_of(
        source[tokens[first].start:change.start] + change.new + source[change.end:end]) == after


def those_named(keys):
    """The changes that `keys` name, and the keys of which there is none any more."""
    named = set()
    gone = []
    for key in sorted(keys):
        here = changes_of(key[0]) if (ROOT / key[0]).is_file() else []
        same = {change for place in here for change in place if is_same(change, key)}
        named |= same
        if not same:
            gone.append(key)
    return named, gone


def read_keys(path):
    """The changes that a list names: a path, "- " and the old line, "+ " and the new one."""
    keys = []
    file = old = None
    for number, line in enumerate(path.read_text().splitlines(), 1):
        if match := re.match(r"(src/[\w/.]+)", line):
            file = match.group(1)
        elif line.startswith("- "):
            old = line[2:]
        elif line.startswith("+ "):
            if file is None or old is None:
                sys.exit(f"{path}:{number}: a new line without its old one")
            keys.append((file, old, line[2:]))
    return keys


# --- Building and running -------------------------------------------------------------------------


def mirror_sources():
    """Brings the copy up to date; what has not changed keeps its time."""
    listed = subprocess.run(["git", "ls-files", "-co", "--exclude-standard"], cwd=ROOT, check=True,
                            capture_output=True, text=True).stdout.split("\n")
    wanted = {name for name in listed if name and (ROOT / name).is_file()}
    for name in wanted:
        source, copy = ROOT / name, TREE / name
        if not copy.is_file() or copy.read_bytes() != source.read_bytes():
            copy.parent.mkdir(parents=True, exist_ok=True)
            shutil.copy(source, copy)
    for copy in [path for path in TREE.rglob("*") if path.is_file()]:
        if copy.relative_to(TREE).as_posix() not in wanted:
            copy.unlink()


def own_programs(change):
    folder = change.path.split("/")[1]
    return OWN.get(folder, (folder,))


def build(targets, cached):
    """Builds the targets; True when it worked. Changed sources are of no use to the cache."""
    environment = dict(os.environ, CCACHE_BASEDIR=str(TREE), CCACHE_NOHASHDIR="1",
                       CCACHE_SLOPPINESS="pch_defines,time_macros")
    if not cached:
        environment["CCACHE_DISABLE"] = "1"
    return subprocess.run(["ninja", "-C", BUILD, "-j1", *targets], env=environment,
                          stdout=(WORK / "build.log").open("w"),
                          stderr=subprocess.STDOUT).returncode == 0


def configure():
    launcher = ["-DCMAKE_CXX_COMPILER_LAUNCHER=ccache"] if shutil.which("ccache") else []
    # Shared libraries: after a change only the folder's own is linked again. No warnings: GCC 12 takes
    # joined strings for writing out of bounds at -O1 with -fPIC, and a change that only the compiler
    # would warn of is the tests' to find.
    subprocess.run(["cmake", "-S", TREE, "-B", BUILD, "-G", "Ninja", "-DCMAKE_BUILD_TYPE=Debug",
                    "-DCMAKE_CXX_FLAGS_DEBUG=-O1 -w",
                    "-DKV408_WINDOW=OFF", "-DBUILD_SHARED_LIBS=ON",
                    "-DCMAKE_LINK_DEPENDS_NO_SHARED=ON", *launcher], check=True,
                   stdout=subprocess.DEVNULL)


def run(program, limit):
    """How the tests went: "passed", "timed out", or the test that failed; and what it took."""
    path = BUILD / "tests" / PLACES.get(program, program) / f"test_{program}"
    environment = dict(os.environ, LD_LIBRARY_PATH=str(BUILD / "simulated-bridge"))
    log = WORK / "test.log"

    def restrict():
        os.setsid()
        resource.setrlimit(resource.RLIMIT_CORE, (0, 0))
        resource.setrlimit(resource.RLIMIT_AS, (4 << 30, 4 << 30))
        if limit is not None:
            resource.setrlimit(resource.RLIMIT_CPU, (limit, limit + 1))

    before = resource.getrusage(resource.RUSAGE_CHILDREN)
    with log.open("w") as output, subprocess.Popen(
            [path, "--gtest_fail_fast"], cwd=WORK, env=environment, stdin=subprocess.DEVNULL,
            stdout=output, stderr=subprocess.STDOUT, preexec_fn=restrict) as process:
        try:
            # Beside the processor's time, for what waits for ever.
            status = process.wait(None if limit is None else 10 * limit)
        except subprocess.TimeoutExpired:
            os.killpg(process.pid, signal.SIGKILL)
            status = -signal.SIGXCPU
    after = resource.getrusage(resource.RUSAGE_CHILDREN)
    took = after.ru_utime + after.ru_stime - before.ru_utime - before.ru_stime
    if status == 0:
        return "passed", took
    if status in (-signal.SIGXCPU, -signal.SIGKILL):
        return "timed out", took
    text = log.read_text(errors="replace")
    failed = re.search(r"^\[  FAILED  \] ([\w./]+)", text, re.MULTILINE)
    running = re.findall(r"^\[ RUN      \] ([\w./]+)", text, re.MULTILINE)
    name = failed.group(1) if failed else running[-1] if running else "start"
    return f"{program}.{name}", took


def measure_limits():
    """The processor seconds that each program may take; ends when one fails as it is."""
    limits = {}
    for program in ALL:
        outcome, took = run(program, None)
        if outcome != "passed":
            sys.exit(f"without any change, test_{program} fails: {outcome}")
        limits[program] = int(4 * took) + 5
        print(f"test_{program} takes {took:.1f} s", flush=True)
    return limits


def try_out(change, limits):
    """None when the change does not compile, else "survived", "timed out" or the test's name."""
    copy = TREE / change.path
    original = copy.read_bytes()
    times = copy.stat()
    source = original.decode()
    start = time.time_ns()
    copy.write_text(source[:change.start] + change.new + source[change.end:])
    own = own_programs(change)
    folder = change.path.split("/")[1]
    is_header = change.path.endswith(".h")
    try:
        for program in (*own, *(other for other in ALL if other not in own)):
            target = f"test_{program}" if is_header else f"kv408_{folder}"
            if (is_header or program == own[0]) and not build([target], False):
                return None
            outcome, _ = run(program, limits[program])
            if outcome != "passed":
                return outcome
        return "survived"
    finally:
        # What was built of the changed source is built anew, out of the cache; nothing else is.
        copy.write_bytes(original)
        os.utime(copy, ns=(times.st_atime_ns, times.st_mtime_ns))
        for built in BUILD.rglob("*.o"):
            if built.stat().st_mtime_ns >= start:
                built.unlink()
        if not build(PROGRAMS, True):
            sys.exit(f"the sources as they were do not build: {WORK / 'build.log'}")


# --- The run --------------------------------------------------------------------------------------


class Report:
    def __init__(self, path):
        self.path = path
        self.file = path.open("w")
        self.outcomes = {}

    def line(self, text):
        print(text, flush=True)
        print(text, file=self.file, flush=True)

    def change(self, change, outcome):
        number, old, new = lines_of(change)
        kind = outcome if outcome in ("survived", "timed out") else "caught"
        self.outcomes.setdefault(kind, []).append(change)
        self.line(f"{change.path}:{number} {outcome}\n- {old}\n+ {new}")

    def summary(self, skipped, uncompiled):
        survived = len(self.outcomes.get("survived", []))
        timed_out = len(self.outcomes.get("timed out", []))
        tried = sum(len(changes) for changes in self.outcomes.values())
        rate = 100.0 * (tried - survived) / tried if tried else 100.0
        for change in self.outcomes.get("survived", []):
            number, old, new = lines_of(change)
            self.line(f"SURVIVED {change.path}:{number}\n    {old}\n    {new}")
        self.line(f"{tried} changes: {tried - survived} caught ({rate:.1f} %), {timed_out} of them "
                  f"by running out of time; {survived} survived. Beside them {skipped} that make no "
                  f"difference and {uncompiled} that do not compile.")
        return rate


def candidates(arguments):
    places = all_changes(arguments.only, (".h",) if arguments.headers else (".cpp",))
    if arguments.again:
        places = all_changes("src/", (".h", ".cpp"))
        lines = Path(arguments.again).read_text().splitlines()
        wanted = {(lines[at].split(":")[0], lines[at + 1][2:], lines[at + 2][2:])
                  for at in range(len(lines) - 2) if lines[at].endswith(" survived")}
        return [change for place in places for change in place if key_of(change) in wanted]
    chooser = random.Random(arguments.seed)
    chooser.shuffle(places)
    return [chooser.choice(place) for place in places]


def main():
    parser = argparse.ArgumentParser(description=__doc__,
                                     formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--count", type=int, default=200)
    parser.add_argument("--seed", type=int, default=408)
    parser.add_argument("--only", default="src/", help="what the paths begin with")
    parser.add_argument("--headers", action="store_true", help="changes headers, not sources")
    parser.add_argument("--again", help="a report whose survivors are tried")
    parser.add_argument("--list", action="store_true", help="only lists the changes, tries none")
    arguments = parser.parse_args()

    alike, gone = those_named(set(read_keys(ALIKE)))
    for path, old, new in gone:
        print(f"{ALIKE.name} names a change that cannot be made any more; take it out:\n"
              f"{path}\n- {old}\n+ {new}", file=sys.stderr)
    chosen = candidates(arguments)
    if arguments.list:
        for change in chosen[:arguments.count]:
            number, old, new = lines_of(change)
            print(f"{change.path}:{number}\n- {old}\n+ {new}")
        print(f"{len(chosen)} places")
        return 0

    os.nice(3)
    TREE.mkdir(parents=True, exist_ok=True)
    mirror_sources()
    configure()
    if not build(PROGRAMS, True):
        sys.exit(f"the sources as they are do not build: {WORK / 'build.log'}")
    limits = measure_limits()
    name = "again" if arguments.again else f"{arguments.seed}{'h' if arguments.headers else ''}"
    report = Report(WORK / f"report-{name}.txt")
    start = time.monotonic()
    tried = skipped = uncompiled = 0
    for change in chosen:
        if tried == arguments.count:
            break
        if change in alike:
            skipped += 1
            continue
        outcome = try_out(change, limits)
        if outcome is None:
            uncompiled += 1
            continue
        tried += 1
        report.change(change, outcome)
    rate = report.summary(skipped, uncompiled)
    report.line(f"Seed {arguments.seed}, {time.monotonic() - start:.0f} s.")
    return 0 if rate >= WANTED else 1


if __name__ == "__main__":
    sys.exit(main())
