#!/usr/bin/env python3
"""Checks the tests: puts small faults into the product, one at a time, and reports those no test notices.

  tools/mutate.py [COUNT] [SEED] [--folder src/core]... [--only TEXT] [--list]

COUNT faults (default 200, 0 = all) are drawn with SEED (default 1), spread evenly over the folders and the
kinds of fault. --only keeps the faults whose description contains TEXT, --list only shows what would be tried.

Works on a copy of the sources in build/mutate. Each fault meets the scenarios on the headless front end and,
when they pass, the unit tests. A fault that does not compile does not count; a test that does not end in time
has noticed the fault. build/mutate/results.txt says which tests noticed which fault. Exit status 0 when at
least 85 of a hundred faults were noticed.
"""
import argparse
import collections
import concurrent.futures
import hashlib
import itertools
import os
import pathlib
import re
import resource
import shutil
import subprocess
import sys
import time

ROOT = pathlib.Path(__file__).resolve().parent.parent
WORK = ROOT / "build" / "mutate"
TREE, OUT, RESULTS = WORK / "tree", WORK / "out", WORK / "results.txt"
COPIED = ["CMakeLists.txt", "cmake", "src", "tests", "resources", "demo", "docs"]
PLAYED = ["tests/scenarios", "demo"]
FOLDERS = ["src/core", "src/telephony", "src/contacts", "src/import"]
WANTED_PERCENT = 85
BATCH = 8  # scenarios between two looks at what they noticed
BUILD = ["ninja", "-C", OUT, "kestro-unit-tests", "cti-scenario"]
WHOLE_BUILD_SECONDS, BUILD_SECONDS, UNIT_SECONDS, SCENARIO_SECONDS = 3600, 300, 200, 60
MEMORY_BYTES = 4 << 30  # a fault may turn a loop into an endless one that allocates
COMPILER_ERROR = re.compile(r":\d+:\d+: (fatal )?error:|ld(\.lld)?: error:|undefined reference|multiple definition")

Fault = collections.namedtuple("Fault", "path folder kind name result")

# --- faults -----------------------------------------------------------------------------------------

HIDDEN = re.compile(r'//[^\n]*|/\*.*?\*/|^[ \t]*#[^\n]*|R"\(.*?\)"|"(?:\\.|[^"\\\n])*"|\'(?:\\.|[^\'\\\n])\'',
                    re.DOTALL | re.MULTILINE)
SWAPS = {
    "comparison": {" == ": " != ", " != ": " == ", " < ": " >= ", " >= ": " < ", " > ": " <= ", " <= ": " > "},
    "off by one": {" < ": " <= ", " <= ": " < ", " > ": " >= ", " >= ": " > ", " + ": " - ", " - ": " + "},
    "and / or": {" && ": " || ", " || ": " && "},
    "constant": {"true": "false", "false": "true"},
}
MOST_DROPPED = 200  # characters; the absence of a whole procedure is no small fault
# Statements whose absence is no fault or no program: declarations, and ends of functions with a value.
KEPT = re.compile(r"(using|namespace|return\s+[^;]|const|constexpr|auto|class|struct|enum|template|static|extern|case|"
                  r"default|public|private|if|for|while|switch|do|else|try|catch|[\w:<>, *&]+ [\w]+(\{.*\})?;$)")


def mask(text):
    """The text with comments, directives and literals blanked; positions stay."""
    # A digit separator is no quotation mark.
    plain = re.sub(r"(?<=\d)'(?=\d)", "_", text)
    return HIDDEN.sub(lambda hit: re.sub(r"[^\n]", " ", hit.group()), plain)


def closing(code, opening):
    """The position of the bracket that closes the one at `opening`."""
    depth = 0
    for at in range(opening, len(code)):
        depth += (code[at] in "([{") - (code[at] in ")]}")
        if depth == 0:
            return at
    return len(code)


def conditions(code):
    """Whole conditions turned round: (start, end, new text)."""
    for hit in re.finditer(r"\b(?:if|while) \(", code):
        end = closing(code, hit.end() - 1)
        inner = code[hit.end():end]
        start = hit.end() + (inner.rfind("; ") + 2 if "; " in inner else 0)
        yield start, end, "!({})"
    for hit in re.finditer(r" \? ", code):
        yield hit.start(), hit.end(), " == false ? "
    for hit in re.finditer(r"!(?=[\w(])", code):
        yield hit.start(), hit.end(), ""


def statements(code):
    """Statements to leave out, as (start, end): in a block, or alone behind a condition or a loop's head."""
    inner, starts = [], set()
    for at, sign in enumerate(code):
        if sign in ")]}" and inner:
            inner.pop()
        elif sign in "([{":
            inner.append(sign)
        if sign in ";{}" and inner and inner[-1] == "{":
            starts.add(at + 1)
    starts.update(closing(code, hit.end() - 1) + 1 for hit in re.finditer(r"\b(?:if|for|while) \(", code))
    starts.update(hit.end() for hit in re.finditer(r"\belse ", code))
    for start in sorted(starts):
        start = at = start + len(code[start:]) - len(code[start:].lstrip())
        while at < len(code) and code[at] not in ";{}":
            at = closing(code, at) + 1 if code[at] in "([" else at + 1
        if code[at:at + 1] == ";" and 0 < at - start <= MOST_DROPPED and not KEPT.match(code[start:at + 1]):
            yield start, at


def changes(text):
    """Every fault of a source text: (kind, start, end, new text)."""
    code = mask(text)
    for kind, swaps in SWAPS.items():
        for old, new in swaps.items():
            word = re.escape(old) if old.startswith(" ") else rf"\b{old}\b"
            for hit in re.finditer(word, code):
                yield kind, hit.start(), hit.end(), new
    for start, end, new in conditions(code):
        yield "condition", start, end, new.format(text[start:end])
    for start, end in statements(code):
        yield "statement", start, end, ""
    for hit in re.finditer(r"(?<![\w.])\d+(?=[uUlL]*\b)(?!\.)", code):
        yield "constant", hit.start(), hit.end(), str(int(hit.group().replace("_", "")) + 1)
    for hit in re.finditer(r"\+\+|--", code):
        yield "off by one", hit.start(), hit.end(), "--" if hit.group() == "++" else "++"
    for hit in HIDDEN.finditer(text):
        if hit.group().startswith('"') and len(hit.group()) > 2:
            yield "text", hit.start() + 1, hit.start() + 1, "~"


def all_faults(folders):
    for folder in folders:
        for path in sorted((ROOT / folder).rglob("*.cpp")):
            text = path.read_text()
            for kind, start, end, new in dict.fromkeys(changes(text)):
                head, tail = text.rfind("\n", 0, start) + 1, text.find("\n", end)
                before, after = (" ".join(part.split()) for part in
                                 (text[head:tail], text[head:start] + new + text[end:tail]))
                name = f"{path.relative_to(ROOT)}:{text.count(chr(10), 0, start) + 1}: {kind}: {before}  ->  {after}"
                yield Fault(path.relative_to(ROOT), folder, kind, name, text[:start] + new + text[end:])


def draw(faults, seed):
    """All faults in an order in which every folder and every kind has its turn."""
    def chance(*words):  # depends on the fault alone: changes elsewhere in the sources leave the rest as drawn
        return hashlib.sha256(repr((seed, *map(str, words))).encode()).digest()

    groups = {}
    for fault in faults:
        groups.setdefault((fault.kind, fault.folder), []).append(fault)
    rows = [sorted(groups[name], key=lambda fault: chance(fault.path, fault.kind, fault.name.split(": ", 1)[1]))
            for name in sorted(groups, key=lambda name: chance(*name))]
    return [fault for turn in itertools.zip_longest(*rows) for fault in turn if fault]


# --- running ----------------------------------------------------------------------------------------


def copy_sources():
    """Makes the copy equal to the sources; what is equal already keeps its time, so it is not built again."""
    wanted = {path.relative_to(ROOT) for name in COPIED for path in [ROOT / name, *(ROOT / name).rglob("*")]
              if path.is_file()}
    for path in TREE.rglob("*"):
        if path.is_file() and path.relative_to(TREE) not in wanted:
            path.unlink()
    for path in wanted:
        content = (ROOT / path).read_bytes()
        if path.name == "KestroCompiler.cmake":
            # A warning is no reason to refuse a fault; a function that ends without its value is no program.
            content = content.replace(b"-Werror\n", b"-Werror=return-type\n")
        if not (TREE / path).is_file() or (TREE / path).read_bytes() != content:
            (TREE / path).parent.mkdir(parents=True, exist_ok=True)
            (TREE / path).write_bytes(content)
            shutil.copymode(ROOT / path, TREE / path)


def limited():
    os.nice(5)
    resource.setrlimit(resource.RLIMIT_AS, (MEMORY_BYTES, MEMORY_BYTES))
    resource.setrlimit(resource.RLIMIT_CORE, (0, 0))


def run(command, seconds):
    """(status, output); a command that does not end in time has status None."""
    process = subprocess.Popen(command, cwd=TREE, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                               stderr=subprocess.STDOUT, preexec_fn=limited, start_new_session=True)
    try:
        output, _ = process.communicate(timeout=seconds)
        return process.returncode, output.decode(errors="replace")
    except subprocess.TimeoutExpired:
        os.killpg(process.pid, 9)
        process.communicate()
        return None, ""


def configure():
    os.environ.setdefault("CCACHE_BASEDIR", str(ROOT))  # copies of the sources elsewhere share the cache
    linker = ["-DCMAKE_EXE_LINKER_FLAGS=-fuse-ld=lld"] if shutil.which("ld.lld") else []
    status, output = run(["cmake", "-S", TREE, "-B", OUT, "-G", "Ninja", "-DCMAKE_BUILD_TYPE=Debug",
                          "-DCMAKE_CXX_FLAGS_DEBUG=-O0", "-DKESTRO_QT=OFF"] + linker, BUILD_SECONDS)
    if status != 0:
        sys.exit(output)


def play(scenario):
    status, _ = run(["tests/isolated.sh", OUT / "program/cti-scenario", "--front-end", "headless", scenario],
                    SCENARIO_SECONDS)
    return [] if status == 0 else [str(scenario)]


def run_tests(scenarios):
    """The tests that failed. The unit tests, which take longer, run when all scenarios pass."""
    noticed = []
    with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
        for start in range(0, len(scenarios), BATCH):
            noticed += itertools.chain.from_iterable(pool.map(play, scenarios[start:start + BATCH]))
            if noticed:
                return noticed
    status, output = run(["tests/isolated.sh", OUT / "kestro-unit-tests", "--gtest_brief=1"], UNIT_SECONDS)
    if status != 0:
        failed = re.findall(r"^\[  FAILED  \] ([\w/]+\.[\w/]+)", output, re.MULTILINE)
        noticed += sorted(set(failed)) or ["unit tests: " + ("no end" if status is None else f"status {status}")]
    return noticed


def try_fault(fault, scenarios):
    """The tests that noticed the fault, or None when it does not compile."""
    path = TREE / fault.path
    original = path.read_bytes()
    try:
        path.write_text(fault.result)
        status, output = run(BUILD, BUILD_SECONDS)
        if status == 0:
            return run_tests(scenarios)
        return None if COMPILER_ERROR.search(output) else ["the build"]
    finally:
        path.write_bytes(original)


# --- report -----------------------------------------------------------------------------------------


def report(tried):
    for title, key in (("folder", lambda fault: fault.folder), ("kind", lambda fault: fault.kind)):
        for name in sorted({key(fault) for fault, _ in tried}):
            results = [noticed for fault, noticed in tried if key(fault) == name]
            print(f"{title} {name}: {sum(map(bool, results))} of {len(results)} noticed")
    caught = sum(bool(noticed) for _, noticed in tried)
    percent = 100 * caught / max(1, len(tried))
    print(f"{caught} of {len(tried)} faults noticed: {percent:.1f} %")
    return 0 if tried and percent >= WANTED_PERCENT else 1


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("count", nargs="?", type=int, default=200)
    parser.add_argument("seed", nargs="?", type=int, default=1)
    parser.add_argument("--folder", action="append")
    parser.add_argument("--only", default="")
    parser.add_argument("--list", action="store_true")
    options = parser.parse_args()
    faults = draw(all_faults(options.folder or FOLDERS), options.seed)
    faults = [fault for fault in faults if options.only in fault.name]
    count = options.count or len(faults)
    if options.list:
        print("\n".join(fault.name for fault in faults))
        return 0
    TREE.mkdir(parents=True, exist_ok=True)
    copy_sources()
    configure()
    status, output = run(BUILD, WHOLE_BUILD_SECONDS)
    if status != 0:
        sys.exit(output)
    scenarios = sorted(path.relative_to(TREE) for part in PLAYED for path in (TREE / part).rglob("*.scenario"))
    failing = run_tests(scenarios)
    if failing:
        sys.exit("The tests fail without any fault: " + ", ".join(failing))

    print(f"{len(faults)} faults to draw from, {count} wanted, seed {options.seed}", flush=True)
    RESULTS.write_text("")
    tried, refused, start = [], 0, time.monotonic()
    for fault in faults:
        if len(tried) == count:
            break
        noticed = try_fault(fault, scenarios)
        if noticed is None:
            refused += 1
            continue
        tried.append((fault, noticed))
        if not noticed:
            print(f"MISSED {fault.name}", flush=True)
        with RESULTS.open("a") as file:
            file.write(f"{fault.name}\t{' '.join(noticed)}\n")
    print(f"{refused} did not compile; {time.monotonic() - start:.0f} s")
    return report(tried)


if __name__ == "__main__":
    sys.exit(main())
