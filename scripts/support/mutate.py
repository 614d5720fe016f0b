#!/usr/bin/env python3
"""Breaks the module's sources one line at a time and sees whether the contract
tests notice: each mutant that they let pass is a check that is missing.

The work is done on a copy of the tree. For a mutant, only what includes the
changed file is compiled again, and linked before the library, so that the
linker takes it in the place of the library's own object.
"""
import argparse
import collections
import concurrent.futures
import os
import pathlib
import re
import resource
import shlex
import shutil
import subprocess
import sys
import threading
import time

ROOT = pathlib.Path(__file__).resolve().parents[2]
WORK = ROOT / "build/mutate"
TREE = WORK / "tree"
BUILD = WORK / "objects"
ACCEPTED = ROOT / "tests/mutants-accepted.txt"
FOLDERS = ("memory", "simd", "state", "transfer", "world")
TIME_LIMIT = 60  # seconds for the tests; they need a few
MEMORY_LIMIT = 16 << 30  # bytes; a loop without end must not take the machine's

# nth: which of the file's equal lines it is, from 1.
Mutant = collections.namedtuple("Mutant", "path number nth line mutated text")

# ---- Mutations --------------------------------------------------------------

PAIRS = {
    " == ": " != ", " != ": " == ", " < ": " <= ", " <= ": " < ", " > ": " >= ", " >= ": " > ",
    " && ": " || ", " || ": " && ", " + ": " - ", " - ": " + ", " * ": " / ", " / ": " * ",
    " | ": " & ", " & ": " | ", " << ": " >> ", " >> ": " << ", " ? ": " == 0 ? ",
    " |= ": " &= ", " &= ": " |= ", "++": "--", "--": "++", "~": "", "true": "false",
    "false": "true", "PXL_Err_NONE": "PXL_Err_REFUSED", "PXL_Depth_32": "PXL_Depth_64",
    "PXL_Depth_64": "PXL_Depth_128", "PXL_Depth_128": "PXL_Depth_32",
}
# Any other name of these kinds becomes the first one, which becomes the second.
KINDS = {"PXL_Err_": ("NONE", "REFUSED"), "PXL_Flag_": ("CLEAR", "DEFERRED"),
         "PXLp_Site::": ("Birth", "Death"), "PXLp_Message::": ("Rebirth", "Unborn"),
         "PXLp_kClass": ("Error", "Version"), "PXL_ChannelOrder_": ("STANDARD", "ALTERNATE")}
# Longer ones first: the first that matches is taken.
TOKEN = re.compile("|".join(
    [r"\b" + kind + r"\w+" for kind in KINDS] +
    [rf"\b{word}\b" if word[0].isalpha() else re.escape(word)
     for word in sorted(PAIRS, key=len, reverse=True)]))
NUMBER = re.compile(r"(?<![\w.])(?<![eE]-)(0[xX][0-9A-Fa-f]+|\d+)")
QUOTED = re.compile(r'"(?:[^"\\]|\\.)*"')
CONDITION = re.compile(r"\b(?:if|while) \(")
COMPARED = re.compile(r"[^&|]*[!=]= [^&|]*")  # turned round by the change of its sign
CALL = re.compile(r"\b[\w:]+(?:<[\w:]+>)?\(")
RETURN = re.compile(r"return (\w*[sS]tatus|error);")
# What is changed too in files that the rest finds little in.
FEW = 20
FINE = [(re.compile(r"return ((?!PXL_Err_NONE)[^;{}]+);"), ("{}",)),
        (re.compile(r"return ([^;{}]+);"), (r"\1 + 1",)),
        (re.compile(r"catch \((long)\b"), ("int",)),
        (re.compile(r"<(float)>"), ("double",)),
        (re.compile(r"<(std::int32_t)>"), ("std::int16_t",)),
        (re.compile(r"<(std::uint8_t|std::uint64_t)>"), ("std::uint16_t",)),
        (re.compile(r"<(std::uint16_t)>"), ("std::uint8_t",)),
        (re.compile(r"(throw;)"), (";",))]
# A statement that is a call, an assignment or a count: no declaration, no jump.
STATEMENT = re.compile(r"(?:\(void\))?[\w:.\[\]>*-]+(?:\(| [|&+-]?= )|(?:\+\+|--)[\w.()>-]+;")
KEYWORDS = re.compile(
    r"(?:return|if|for|while|switch|case|catch|using|static_assert)\b|\w+:$|.*= delete;$")


def matching(line, opening):
    """The place of the bracket that closes the one at `opening`, or -1."""
    depth = 0
    for place in range(opening, len(line)):
        depth += (line[place] in "([{") - (line[place] in ")]}")
        if depth == 0:
            return place
    return -1


def arguments(code, opening, closing):
    """Where each argument of a call starts and ends."""
    starts, depth = [opening + 1], 0
    for place in range(opening + 1, closing):
        depth += (code[place] in "([{") - (code[place] in ")]}")
        if depth == 0 and code[place] == ",":
            starts.append(place + 2)
    return list(zip(starts, [start - 2 for start in starts[1:]] + [closing]))


def replacement(token):
    if token in PAIRS:
        return PAIRS[token]
    kind = next(kind for kind in KINDS if token.startswith(kind))
    first, second = KINDS[kind]
    return kind + (second if token == kind + first else first)


def fine_edits(code):
    for pattern, texts in FINE:
        for found in pattern.finditer(code):
            for text in texts:
                yield *found.span(1), found.expand(text)


def edits(line, code):
    """(start, end, text) of each change of one line; `code` is the line with
    blanks for what stands in quotes and comments."""
    for found in TOKEN.finditer(code):
        yield *found.span(), replacement(found.group())
    for found in NUMBER.finditer(code):
        yield *found.span(), str(int(found.group(), 0) + 1)
    for found in QUOTED.finditer(line):
        if code[found.start()] == '"':
            yield found.start() + 1, found.start() + 1, "!"
    for found in RETURN.finditer(code):
        yield *found.span(1), "PXL_Err_NONE"
        yield *found.span(1), "PXL_Err_REFUSED"
    for found in CONDITION.finditer(code):
        closing = matching(code, found.end() - 1)
        if closing > 0 and not COMPARED.fullmatch(code[found.end():closing]):
            condition = line[found.end():closing]
            yield found.end(), closing, f"!({condition})"
    for found in CALL.finditer(code):
        closing = matching(code, found.end() - 1)
        if not line.startswith(" ") or closing < 0:
            continue  # the head of a function, or a call of several lines
        places = arguments(code, found.end() - 1, closing)
        for (start, middle), (after, end) in zip(places, places[1:]):
            yield start, end, line[after:end] + line[middle:after] + line[start:middle]


def code_of(line):
    code = QUOTED.sub(lambda found: '"' + " " * (len(found.group()) - 2) + '"', line)
    start = code.find("//")
    return code if start < 0 else code[:start].ljust(len(code))


def statement_end(codes, first):
    """The last line of the statement that starts on the line `first`, if it is
    one to drop."""
    code = codes[first].strip()
    if not codes[first].startswith(" ") or KEYWORDS.match(code) or not STATEMENT.match(code):
        return None
    if first and codes[first - 1].strip()[-1:] not in ("", ";", "{", "}", ":"):
        return None  # the rest of a statement
    for last in range(first, len(codes)):
        if codes[last].rstrip().endswith(";"):
            return last
        if codes[last].rstrip().endswith(("{", "}")):
            return None
    return None


def mutants_of(path):
    """The mutants of a file, in the order of its lines; the fine ones too when
    there are few others."""
    mutants = list(mutants_by(path, edits))
    if len(mutants) < FEW:
        mutants += mutants_by(path, lambda line, code: fine_edits(code), dropping=False)
    return mutants


def mutants_by(path, edits_of, dropping=True):
    lines = (ROOT / path).read_text(encoding="utf-8").split("\n")
    codes = [code_of(line) for line in lines]
    seen = collections.Counter()
    for index, line in enumerate(lines):
        seen[line.strip()] += 1
        if line.startswith(("#", "//", "using ", "static_assert")):
            continue

        def mutant(end, mutated, kind):
            text = "\n".join([*lines[:index], kind, *[""] * (end - index), *lines[end + 1:]])
            return Mutant(path, index + 1, seen[line.strip()], line.strip(), mutated, text)

        for mutated in dict.fromkeys(line[:start] + text + line[end:]
                                     for start, end, text in edits_of(line, codes[index])):
            if mutated != line:
                yield mutant(index, mutated.strip(), mutated)
        end = statement_end(codes, index) if dropping else None
        if end is not None:
            yield mutant(end, "", "")


# ---- The copy of the tree ---------------------------------------------------


def run(command, **options):
    done = subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True,
                          errors="replace", check=False, **options)
    if done.returncode != 0:
        sys.exit(f"mutate: {shlex.join(map(str, command))} failed:\n{done.stdout}")
    return done.stdout


def copy_newer(source, target):
    """Keeps the time of a file that has not changed, so that it is not built again."""
    old, new = pathlib.Path(target), pathlib.Path(source)
    if not old.exists() or old.read_bytes() != new.read_bytes():
        shutil.copyfile(new, old)


def prepare(jobs):
    shutil.copytree(ROOT, TREE, copy_function=copy_newer, dirs_exist_ok=True,
                    ignore=shutil.ignore_patterns("build", ".git*"))
    # No optimisation, no debug information and gold: what compiles and links fastest.
    run(["cmake", "-G", "Ninja", "-S", TREE, "-B", BUILD, "-DCMAKE_CXX_COMPILER=g++",
         "-DCMAKE_C_COMPILER=gcc", "-DCMAKE_BUILD_TYPE=",
         "-DCMAKE_COMPILE_WARNING_AS_ERROR=ON", "-DCMAKE_EXE_LINKER_FLAGS=-fuse-ld=gold"])
    run(["cmake", "--build", BUILD, "--target", "contract_tests", "--parallel", str(jobs)])
    run([BUILD / "bin/contract_tests", "--gtest_brief=1"])


def objects_by_file():
    """For each file of the module, which of the module's objects it goes into."""
    users = collections.defaultdict(list)
    name = None
    for line in run(["ninja", "-C", BUILD, "-t", "deps"]).splitlines():
        if not line.startswith(" "):
            name = line.split(":")[0]
        elif name.startswith("simd/") or "PXL_static.dir" in name or "pxl_kernels.dir" in name:
            file = pathlib.Path(os.path.normpath(BUILD / line.strip()))
            if file.is_relative_to(TREE):
                users[str(file.relative_to(TREE))].append(name)
    return users


def last_command(target):
    line = run(["ninja", "-C", BUILD, "-t", "commands", "-s", target]).strip()
    return [word for word in shlex.split(line) if word not in (":", "&&")]


# ---- One mutant -------------------------------------------------------------


def limit():
    resource.setrlimit(resource.RLIMIT_AS, (MEMORY_LIMIT, MEMORY_LIMIT))
    resource.setrlimit(resource.RLIMIT_CORE, (0, 0))


def succeeds(command, **options):
    return subprocess.run(command, cwd=BUILD, stdout=subprocess.DEVNULL,
                          stderr=subprocess.DEVNULL, check=False, **options).returncode == 0


class Bench:
    """A place of its own for each of the threads that try mutants."""

    def __init__(self):
        self.users = objects_by_file()
        self.link = last_command("bin/contract_tests")
        self.compiling = {name: last_command(name) for names in self.users.values()
                          for name in names}
        self.local = threading.local()

    def folder(self):
        if not hasattr(self.local, "folder"):
            self.local.folder = WORK / f"bench-{threading.get_ident()}"
            shutil.rmtree(self.local.folder, ignore_errors=True)
            self.local.folder.mkdir()
        return self.local.folder

    def compile(self, mutant, folder, name, target):
        """A changed header is found before the real one, a changed source is put
        in its place. No warning matters here."""
        changed = str(folder / mutant.path)
        command = [changed if word == str(TREE / mutant.path) else word
                   for word in self.compiling[name]]
        command[command.index("-o") + 1] = str(target)
        for option in ("-MF", "-MT"):
            command[command.index(option) + 1] = str(folder / "unused.d")
        command[1:1] = ["-I", str(folder)]
        return succeeds([*command, "-w"])

    def outcome(self, mutant):
        folder = self.folder()
        changed = folder / mutant.path
        changed.parent.mkdir(parents=True, exist_ok=True)
        changed.write_text(mutant.text, encoding="utf-8")
        objects = []
        try:
            for name in self.users[mutant.path]:
                objects.append(str(folder / f"{len(objects)}.o"))
                if not self.compile(mutant, folder, name, objects[-1]):
                    return "not compiling"
        finally:
            changed.unlink()
        program = folder / "tests"
        command = list(self.link)
        command[command.index("-o") + 1] = str(program)
        first = next(i for i, word in enumerate(command) if word.endswith(".o"))
        command[first:first] = objects
        if not succeeds(command):
            return "not compiling"
        try:
            passed = succeeds([program, "--gtest_fail_fast", "--gtest_brief=1"],
                              timeout=TIME_LIMIT, preexec_fn=limit)
        except subprocess.TimeoutExpired:
            return "timeout"
        return "survived" if passed else "killed"


# ---- What was accepted, and the account -------------------------------------


def accepted():
    """The blocks of the list: `file [#nth]`, `- line`, `+ mutated line`, reason."""
    found = {}
    text = re.sub(r"(?m)^#.*\n", "", ACCEPTED.read_text(encoding="utf-8"))
    for block in filter(None, (part.strip() for part in text.split("\n\n"))):
        lines = block.split("\n")
        if len(lines) < 4 or lines[1][:1] != "-" or lines[2][:1] != "+":
            sys.exit(f"mutate: {ACCEPTED.name}: no block of the right form:\n{block}")
        path, _, nth = lines[0].partition(" #")
        key = (path, int(nth or 1), lines[1][1:].strip(), lines[2][1:].strip())
        found[key] = " ".join(map(str.strip, lines[3:]))
    return found


def key_of(mutant):
    return mutant.path, mutant.nth, mutant.line, mutant.mutated


def shown(mutant):
    nth = f" #{mutant.nth}" if mutant.nth > 1 else ""
    return f"{mutant.path}{nth}\n- {mutant.line}\n+ {mutant.mutated}".rstrip()


def try_file(path, bench, jobs, reasons):
    """Tries a file's mutants; gives the survivors that nobody accepted."""
    started = time.monotonic()
    mutants = list(mutants_of(path))
    counts = collections.Counter()
    survivors = []
    with concurrent.futures.ThreadPoolExecutor(jobs) as pool:
        for mutant, outcome in zip(mutants, pool.map(bench.outcome, mutants)):
            if outcome == "survived":
                if key_of(mutant) in reasons:
                    outcome = "accepted"
                else:
                    survivors.append(mutant)
            counts[outcome] += 1
            place = f"{path}:{mutant.number}"
            print(f"{outcome:13} {place}: {mutant.mutated or '(dropped)'}", flush=True)
            if outcome != "accepted" and reasons.pop(key_of(mutant), None):
                print(f"mutate: {place}: accepted, yet {outcome}: take it off the list")
                counts["stale"] += 1
            elif outcome == "accepted":
                del reasons[key_of(mutant)]
    seconds = time.monotonic() - started
    summary = f"{path}: {len(mutants)} mutants, " + ", ".join(
        f"{counts[kind]} {kind}"
        for kind in ("killed", "timeout", "survived", "accepted", "not compiling"))
    return summary + f"; {seconds / max(len(mutants), 1):.1f} s each", survivors, counts["stale"]


def main():
    parser = argparse.ArgumentParser(prog="./dev mutate", description=__doc__.split("\n\n")[0])
    parser.add_argument("files", nargs="*", help="sources of the module; without any: all")
    parser.add_argument("--jobs", type=int, default=os.cpu_count(), help="at a time")
    parser.add_argument("--list", action="store_true", help="only show the mutants")
    options = parser.parse_args()
    known = sorted(str(file.relative_to(ROOT)) for folder in FOLDERS
                   for suffix in ("cpp", "h") for file in (ROOT / folder).rglob(f"*.{suffix}"))
    for file in options.files:
        if file not in known:
            parser.error(f"{file} is no source of the module")
    files = options.files or known
    if options.list:
        for file in files:
            for mutant in mutants_of(file):
                print(f"{file}:{mutant.number}: {mutant.mutated or '(dropped)'}")
        return 0

    WORK.mkdir(parents=True, exist_ok=True)
    reasons = {key: reason for key, reason in accepted().items() if key[0] in files}
    prepare(options.jobs)
    bench = Bench()
    summaries, survivors, stale = [], [], 0
    for file in files:
        summary, survived, outdated = try_file(file, bench, options.jobs, reasons)
        summaries.append(summary)
        survivors += survived
        stale += outdated
    print("\n" + "\n".join(summaries))
    for key in reasons:
        print(f"mutate: accepted, but no such mutant: {key}")
    if survivors:
        print("\nSurvivors:\n\n" + "\n\n".join(map(shown, survivors)))
    return 1 if survivors or stale or reasons else 0


if __name__ == "__main__":
    sys.exit(main())
