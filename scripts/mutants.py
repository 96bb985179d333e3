#!/usr/bin/env python3
"""Finds out what the tests would not notice: changes the library in many small ways and runs the tests on each change.

    scripts/mutants.py FOLDER [--programs BIN] [--seed N] [--number N] [--again TABLE] [--longest SECONDS]

FOLDER, which must not exist yet, gets a copy of the tree with all mutants in it, its build, and table.tsv: a line for each
mutant with its file, line, the statement, what became of it, the outcome and the test that noticed. A mutant changes one
operator or constant, drops a statement, swaps two arguments or negates a condition. They are all compiled at once; the
environment variable JOBX_MUTANT selects the one that acts. A first run of every test records the mutants it passes by, so
that a mutant is tried on the tests that reach it only. BIN has the test programs of a finished build of the same sources
(build/debug/bin): they load the changed library. --again takes the survivors of an earlier table instead of a sample."""

import argparse
import collections
import csv
import os
import pathlib
import random
import re
import resource
import shutil
import subprocess
import sys
import time

ROOT = pathlib.Path(__file__).resolve().parent.parent
OWN_PROGRAMS = ("foundation_tests", "foundation_internal_tests", "layer_internal_tests")  # with the library's code in them
PROGRAMS = ("app_tests", "compact_tests", "eda_tests", "job_tests", "layer_tests", "step_tests")
MEMORY = 4 << 30  # bytes that a test program may take
SWITCH = """#pragma once
#include <cstdio>
#include <cstdlib>
#include <type_traits>
namespace jobx_mutant
{
inline const int selected = std::getenv("JOBX_MUTANT") ? std::atoi(std::getenv("JOBX_MUTANT")) : 0;
inline const bool tracing = std::getenv("JOBX_MUTANT_TRACE") != nullptr;
inline bool reached[65536];
inline struct Trace
{
    ~Trace()
    {
        std::FILE* const out = tracing ? std::fopen(std::getenv("JOBX_MUTANT_TRACE"), "a") : nullptr;
        for (int i = 0; out != nullptr && i < 65536; ++i)
            if (reached[i])
                std::fprintf(out, "%d\\n", i);
        if (out != nullptr)
            std::fclose(out);
    }
} trace;
inline bool Acts(int number) noexcept
{
    if (tracing)
        reached[number] = true;
    return selected == number;
}
constexpr bool Is(int number) noexcept { return !std::is_constant_evaluated() && Acts(number); }
}
"""
SKIPPED = re.compile(r'//[^\n]*|/\*.*?\*/|^[ \t]*#(?:[^\n]*\\\n)*[^\n]*|"(?:\\.|[^"\\\n])*"', re.S | re.M)
COMMENT = re.compile(r'//[^\n]*|/\*.*?\*/', re.S)
CHARACTER = re.compile(r"'(?:\\[^\n]+?|[^'\\\n])'")
TYPE = re.compile(r"\s*(?:(?:public|private|protected):\s*)?(?:template\s*<.*?>\s*)?"
                  r"(?:namespace|class|struct|enum|union|extern)\b", re.S)
DECLARATION = re.compile(r"(?:const\s+|static\s+|unsigned\s+)*[\w:]+(?:<[\w:,<>&* ]*>)?(?:\s*[&*]+\s*(?:const\s+)?|\s+(?:const\s+)?)"
                         r"(?:\w+|\[[\w, ]+\])\s*(=(?!=)|[({;])")
NOT_CHANGED = re.compile(r"\s*(?:static_assert|using|typedef|friend|goto|template|extern)\b|.*\bconstexpr\b", re.S)
LABEL = re.compile(r"\s*(?:case\b(?:[^:?]|::)+:(?!:)|default\s*:|else\b(?!\s*if)|do\b)")
HEAD = re.compile(r"\s*(?:else\s+)?(if|while|for|switch)\s*\(")
OPERATORS = {"<": "<=", "<=": "<", ">": ">=", ">=": ">", "==": "!=", "!=": "==", "&&": "||", "||": "&&", "+": "-",
             "-": "+", "*": "/", "/": "*", "%": "*", "+=": "-=", "-=": "+=", "&": "|", "|": "&", "<<": ">>", ">>": "<<"}
SIMPLE = r"[\w.]+(?:->\w+)*(?:\[\w+\])?"
Mutant = collections.namedtuple("Mutant", "file line lines start end original changed text")


def blank(match):
    return re.sub(r"[^\n]", " ", match.group())


def blank_text(match):
    """Blanks what is skipped, but keeps a string's quotes, which are part of an expression."""
    text = match.group()
    return '"' + "_" * (len(text) - 2) + '"' if text.startswith('"') else blank(match)


def closing(text, at):
    """The place of the parenthesis that closes the one at `at`, or -1."""
    depth = 0
    for i in range(at, len(text)):
        depth += (text[i] == "(") - (text[i] == ")")
        if depth == 0:
            return i
    return -1


def segments(text):
    """Yields the start and end of what lies between the braces and semicolons of functions' bodies."""
    inside, depth, start = [False], [0], 0
    for i, character in enumerate(text):
        if character in "()":
            depth[-1] += 1 if character == "(" else -1
        elif character == "{":
            head = text[start:i]
            list_follows = not head or not head[-1].isspace() or re.search(r"(?:=|return|[,(])\s*$", head)
            if inside[-1] and not list_follows:
                yield start, i
            inside.append(not TYPE.match(head) and (inside[-1] or "(" in head))
            depth.append(0)
            start = i + 1
        elif character == "}" and len(inside) > 1:
            inside.pop()
            depth.pop()
            start = i + 1
        elif character == ";" and depth[-1] == 0:
            if inside[-1]:
                yield start, i + 1
            start = i + 1


def parts(text, start, end):
    """Splits a segment into the conditions and the simple statement in it: (kind, start, end)."""
    if text[start:end].count("(") != text[start:end].count(")"):
        return
    while start < end:
        label, head = LABEL.match(text, start, end), HEAD.match(text, start, end)
        if label:
            start = label.end()
        elif head:
            close = closing(text[:end], head.end() - 1)
            if close < 0:
                return
            inner = text[head.end():close]
            if head.group(1) == "for" and inner.count(";") == 2:
                first = head.end() + inner.index(";") + 1
                yield "condition", first, head.end() + inner.rindex(";")
            elif head.group(1) != "for" and not re.search(r"[^=!<>]=[^=]", inner.rpartition(";")[2]):
                last = head.end() + inner.rfind(";") + 1
                yield "switch" if head.group(1) == "switch" else "condition", last, close
            start = close + 1
        else:
            break
    start += len(text[start:end]) - len(text[start:end].lstrip())
    if start < end - 1 and text[end - 1] == ";" and not NOT_CHANGED.match(text, start, end):
        declared = DECLARATION.match(text, start, end)
        keyword = re.match(r"(?:return|throw|delete|break|continue)\b", text[start:end])
        if keyword or not declared:
            yield "statement", start, end
        elif declared.group(1) == "=":
            yield "value", declared.end(), end - 1


def token_changes(text):
    """Yields what single tokens of an expression can become: (start, end, new text)."""
    for match in re.finditer(r"(?<= )(<<|>>|<=|>=|==|!=|&&|\|\||\+=|-=|[<>+\-*/%&|])(?= )", text):
        yield match.start(), match.end(), OPERATORS[match.group()]
    for match in re.finditer(r"\+\+|--", text):
        yield match.start(), match.end(), "--" if match.group() == "++" else "++"
    for match in re.finditer(r"(?<![=\w])!(?=[\w(*])", text):
        yield match.start(), match.end(), ""
    for match in re.finditer(r"(?<![\w.'\"])(\d+)([uUlLzZ]*)(?![\w.'\"])", text):
        yield match.start(), match.end(), str({0: 1, 1: 0}.get(int(match.group(1)), int(match.group(1)) + 1)) + match.group(2)
    for match in re.finditer(r"(?<![\w.])\d+\.\d*(?:[eE][+-]?\d+)?(?![\w.])", text):
        yield match.start(), match.end(), "(" + match.group() + " + 1.0)"
    for match in re.finditer(r"\b(?:true|false)\b", text):
        yield match.start(), match.end(), "false" if match.group() == "true" else "true"
    for match in CHARACTER.finditer(text):
        yield match.start(), match.end(), r"'\x01'"
    for match in re.finditer(rf"(?<=[(,\s])({SIMPLE}), ({SIMPLE})(?=[,)])", text):
        if match.group(1) != match.group(2):
            yield match.start(), match.end(), f"{match.group(2)}, {match.group(1)}"


def mutants_of(file, source):
    """All mutants of a file, each as a Mutant whose text has @ for its number."""
    masked = SKIPPED.sub(blank_text, source)
    structure = CHARACTER.sub(lambda match: "0" * len(match.group()), masked)
    for start, end in segments(structure):
        for kind, first, last in parts(structure, start, end):
            original = source[first:last]
            flat = re.sub(r"\s*\n\s*", " ", COMMENT.sub(blank, original))
            choices = [(f"{original[a:b]} -> {new} at {a}",
                        COMMENT.sub(blank, original[:a]) + new + COMMENT.sub(blank, original[b:]))
                       for a, b, new in token_changes(masked[first:last])]
            if kind == "statement" and not re.match(r"(?:return\b.|throw\b)", flat):
                choices.append(("dropped", ";"))
            if kind == "condition" and flat.strip():
                choices.append(("negated", f"!({flat})"))
            for change, whole in choices:
                whole = re.sub(r"\s*\n\s*", " ", whole)
                if kind == "statement":
                    text = f"{{ if (jobx_mutant::Is(@)) {{ {whole} }} else {{ {original} }} }}"
                elif kind == "condition":
                    text = f"jobx_mutant::Is(@) ? static_cast<bool>({whole}) : static_cast<bool>({original})"
                else:
                    text = f" jobx_mutant::Is(@) ? ({whole}) : ({original})"
                line = source.count("\n", 0, first) + 1
                yield Mutant(file, line, range(line, line + original.count("\n") + 1), first, last,
                             " ".join(flat.split()), change, text)


def read_sources(tree):
    return {str(path.relative_to(tree)): path.read_text(encoding="utf-8")
            for path in sorted((tree / "src").rglob("*")) if path.suffix in (".cpp", ".h")}


def sample(sources, number, seed):
    """Draws `number` mutants, at most one of a statement, from each file by its share but at least one."""
    files = collections.defaultdict(lambda: collections.defaultdict(list))
    for mutant in (mutant for file in sources.items() for mutant in mutants_of(*file)):
        files[mutant.file][mutant.start].append(mutant)
    total = sum(len(places) for places in files.values())
    draw, drawn = random.Random(seed), []
    for _, places in sorted(files.items()):
        share = min(len(places), max(1, round(number * len(places) / total)))
        drawn += [draw.choice(places[place]) for place in draw.sample(sorted(places), share)]
    return drawn


def survivors(sources, table):
    with open(table, encoding="utf-8", newline="") as lines:
        wanted = collections.Counter((row["file"], row["statement"], row["change"])
                                     for row in csv.DictReader(lines, delimiter="\t") if row["outcome"] == "survived")
    places, found = set(), []
    for mutant in (mutant for file in sources.items() for mutant in mutants_of(*file)):
        key = (mutant.file, mutant.original, mutant.changed)
        if wanted[key] and (mutant.file, mutant.start) not in places:
            wanted[key] -= 1
            places.add((mutant.file, mutant.start))
            found.append(mutant)
    for key in wanted.elements():
        print("not found any more:", *key)
    return found


def put_in(folder, sources, mutants, left_out):
    """Writes the sources with all mutants but those left out."""
    files = collections.defaultdict(list)
    for number, mutant in enumerate(mutants, 1):
        files[mutant.file].append((number, mutant))
    for name, numbered in files.items():
        source = sources[name]
        for number, mutant in sorted(numbered, key=lambda pair: -pair[1].start):
            if number not in left_out:
                source = source[:mutant.start] + mutant.text.replace("@", str(number)) + source[mutant.end:]
        text = f'#include "{folder}/jobx_mutant.h" // NOLINT\n#line 1\n{source}'
        if (folder / "tree" / name).read_text(encoding="utf-8") != text:
            (folder / "tree" / name).write_text(text, encoding="utf-8")


def mutants_at(where, messages, mutants):
    """The numbers of the mutants in the lines that the compiler's messages name."""
    places = set(re.findall(r"tree/(src/[\w/.]+)" + where, messages))
    return {number for number, mutant in enumerate(mutants, 1)
            for file, line in places if file == mutant.file and int(line) in mutant.lines}


def mutants_above(messages, mutants, left_out):
    """The numbers of the last mutants before the lines with errors: one may have hidden a declaration."""
    found = set()
    for file, line in re.findall(r"tree/(src/[\w/.]+):(\d+):\d+: error:", messages):
        above = [(mutant.line, number) for number, mutant in enumerate(mutants, 1)
                 if mutant.file == file and mutant.line <= int(line) and number not in left_out]
        found |= {max(above)[1]} if above else set()
    return found


def build(folder, sources, mutants, jobs):
    """Builds everything; answers the numbers of the mutants that do not compile."""
    left_out = set()
    for targets in (("JOBXCLSDLL",), OWN_PROGRAMS):
        while True:
            put_in(folder, sources, mutants, left_out)
            made = subprocess.run(["cmake", "--build", folder / "build", "--target", *targets, "-j", str(jobs), "--", "-k", "0"],
                                  capture_output=True, text=True, check=False)
            if made.returncode == 0:
                break
            (folder / "errors.txt").write_text(made.stdout + made.stderr, encoding="utf-8")
            wrong = (mutants_at(r":(\d+):\d+: error:", made.stdout, mutants) - left_out or
                     mutants_at(r":(\d+):\d+:", made.stdout, mutants) - left_out or
                     mutants_above(made.stdout, mutants, left_out))
            if not wrong:
                sys.exit(f"error: the build fails for another reason, see {folder}/errors.txt")
            left_out |= wrong
            print(f"{len(left_out)} mutants do not compile", flush=True)
    return left_out


def limit_memory():
    resource.setrlimit(resource.RLIMIT_AS, (MEMORY, MEMORY))


def run(folder, program, tests, seconds, **environment):
    """Runs tests of a program; answers why that failed, "" when it did not."""
    flags = folder / "filter.txt"
    flags.write_text("--gtest_filter=" + ":".join(tests) + "\n", encoding="utf-8")
    command = [program, f"--gtest_flagfile={flags}", "--gtest_fail_fast"]
    with subprocess.Popen(command, cwd=folder, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, text=True,
                          errors="replace", stderr=subprocess.DEVNULL, preexec_fn=limit_memory, start_new_session=True,
                          env={**os.environ, "OMP_WAIT_POLICY": "passive", "TMPDIR": "/dev/shm",
                               "LD_LIBRARY_PATH": str(folder / "build/lib"), **environment}) as process:
        try:
            output = process.communicate(timeout=seconds)[0]
        except subprocess.TimeoutExpired:
            os.killpg(process.pid, 9)
            return "time limit"
    if process.returncode == 0:
        return ""
    failed = re.findall(r"\[  FAILED  \] ([\w/]+\.[\w/]+)", output) or re.findall(r"\[ RUN      \] (\S+)", output)[-1:]
    return f"{program.name}: {failed[0] if failed else process.returncode}"


def trace(programs, folder):
    """Runs every test alone; answers for each test (program, name) how long it took and the mutants it reached."""
    reached, file = {}, folder / "trace.txt"
    for program in programs:
        listed = subprocess.run([program, "--gtest_list_tests"], capture_output=True, text=True, check=True).stdout
        suite = ""
        for line in listed.splitlines():
            if not line.startswith(" "):
                suite = line.split("#")[0].strip()
                continue
            test = suite + line.split("#")[0].strip()
            file.unlink(missing_ok=True)
            started = time.monotonic()
            if run(folder, program, [test], 300, JOBX_MUTANT_TRACE=str(file)):
                print("fails without a mutant, left out:", program.name, test, flush=True)
                continue
            numbers = set(map(int, file.read_text(encoding="utf-8").split())) if file.exists() else set()
            reached[program, test] = time.monotonic() - started, numbers
    return reached


def noticed_by(folder, number, mutant, reached, longest):
    """The test that notices a mutant: of its own folder's programs first, there the quick ones first. "" when none does."""
    own = mutant.file.split("/")[1]
    tests = sorted((seconds, program, test) for (program, test), (seconds, numbers) in reached.items()
                   if number in numbers and seconds <= longest)
    programs = sorted({program for _, program, _ in tests}, key=lambda program: (not program.name.startswith(own), program))
    for program in programs:
        mine = [(seconds, test) for seconds, of, test in tests if of == program]
        for some in (mine[:12], mine[12:]):
            limit = 10 + 5 * sum(seconds for seconds, _ in some)
            failure = run(folder, program, [test for _, test in some], limit, JOBX_MUTANT=str(number)) if some else ""
            if failure:
                return failure
    return ""


def print_figures(rows):
    print("| folder | mutants | killed | survived | not compiled |\n|---|---:|---:|---:|---:|")
    folders = collections.defaultdict(collections.Counter)
    for row in rows:
        for name in (row[0].split("/")[1], "all"):
            folders[name][row[4]] += 1
    for name, counts in folders.items():
        mutants = counts["killed"] + counts["survived"]
        print(f"| {name} | {mutants} | {counts['killed']} | {counts['survived']} | {counts['not compiled']} |")


def main():
    options = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    options.add_argument("folder", type=pathlib.Path)
    options.add_argument("--programs", type=pathlib.Path, default=ROOT / "build/debug/bin")
    options.add_argument("--seed", type=int, default=1)
    options.add_argument("--number", type=int, default=500)
    options.add_argument("--again", type=pathlib.Path)
    options.add_argument("--longest", type=float, default=1, help="leave out tests that take more seconds than this")
    options.add_argument("--jobs", type=int, default=1, help="for the build; the tests run one after the other")
    options = options.parse_args()
    folder = options.folder.resolve()
    folder.mkdir(parents=True)
    shutil.copytree(ROOT, folder / "tree", ignore=shutil.ignore_patterns("build", ".git"))
    sources = read_sources(folder / "tree")
    mutants = survivors(sources, options.again) if options.again else sample(sources, options.number, options.seed)
    print(len(mutants), "mutants", flush=True)
    (folder / "jobx_mutant.h").write_text(SWITCH, encoding="utf-8")
    subprocess.run(["cmake", "-S", folder / "tree", "-B", folder / "build", "-G", "Ninja", "-DCMAKE_BUILD_TYPE=None",
                    "-DCMAKE_UNITY_BUILD=ON", "-DCMAKE_CXX_FLAGS=-w -D_GLIBCXX_ASSERTIONS",
                    f"-DJOBX_REAL_JOBS={os.environ.get('JOBX_REAL_JOBS', ROOT.parent / 'shared/jobs')}"],
                   check=True, stdout=subprocess.DEVNULL)
    left_out = build(folder, sources, mutants, options.jobs)
    print("built", flush=True)
    programs = [options.programs.resolve() / name for name in PROGRAMS]
    reached = trace([folder / "build/bin" / name for name in OWN_PROGRAMS] + programs, folder)
    print(len(reached), "tests reach", len(set().union(*(numbers for _, numbers in reached.values()))), "mutants", flush=True)
    rows = []
    with open(folder / "table.tsv", "w", encoding="utf-8", newline="") as out:
        table = csv.writer(out, delimiter="\t")
        table.writerow(("file", "line", "statement", "change", "outcome", "noticed by"))
        for number, mutant in enumerate(mutants, 1):
            test = "" if number in left_out else noticed_by(folder, number, mutant, reached, options.longest)
            outcome = "not compiled" if number in left_out else "killed" if test else "survived"
            rows.append((mutant.file, mutant.line, mutant.original, mutant.changed, outcome, test))
            table.writerow(rows[-1])
            out.flush()
    print_figures(rows)


if __name__ == "__main__":
    main()
