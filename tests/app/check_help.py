#!/usr/bin/env python3
"""Check that the manual page and the bash completion tell what jobx --help does: check_help.py JOBX MANUAL COMPLETION

Every command, option and exit code has to stand in the page, under its command, and nothing else; the completion has to
offer the same commands and long options. Without bash the completion is left out.
"""

import re
import shutil
import subprocess
import sys
import tempfile
from pathlib import Path

failures = []


def expect(what, found, wanted):
    if found != wanted:
        failures.append(f"{what}: missing {sorted(wanted - found)}, unknown {sorted(found - wanted)}")


def run(*command):
    return subprocess.run(command, check=True, capture_output=True, text=True).stdout


def section(text, title):
    """The indented lines below a title of the help."""
    found = re.search(rf"^{title}:\n((?:  .*\n)*)", text, re.MULTILINE)
    return found.group(1) if found else ""


def options_of(text):
    """The options of a help text, each with all its names: {("-h", "--help"), ...}."""
    lines = section(text, "Options").splitlines()
    heads = [re.match(r"  (-[\w,-]+)", line) for line in lines]
    return {tuple(head.group(1).split(",")) for head in heads if head}


def long_options(options):
    return {name for names in options for name in names if name.startswith("--")}


def plain(roff):
    """Roff without fonts and escapes of hyphens."""
    text = re.sub(r"\\f[A-Z]", "", roff).replace("\\-", "-").replace('"', "")
    return text


def page_sections(page):
    """The parts of the page below their titles."""
    parts = re.split(r"^\.S[HS] (.*)$", page, flags=re.MULTILINE)
    return dict(zip(parts[1::2], parts[2::2]))


def page_options(part):
    """The options that a part describes: the first line of each indented paragraph."""
    heads = re.findall(r"^\.TP\n\.[BIR]+ (-.*)$", part, re.MULTILINE)
    return {tuple(re.findall(r"(?:^|[ ,])(--?[a-z][\w-]*)", head)) for head in heads}


def check_page(page, commands, options, own_options, version, exit_codes):
    parts = page_sections(page)
    title = re.search(r"^\.TH (.*)$", page, re.MULTILINE).group(1)
    expect("version in the page", {version} if version in title else {title}, {version})
    expect("commands in the page", {name[5:] for name in parts if name.startswith("jobx ")}, commands)
    usages = re.findall(r"^\.B jobx ([a-z]+)\n", parts["SYNOPSIS"], re.MULTILINE)
    expect("commands in the synopsis", set(usages), commands)
    for command in sorted(commands):
        part = parts.get(f"jobx {command}", "")
        expect(f"options of {command} in the page", page_options(part), options[command] - {("-h", "--help")})
    expect("options in the page", page_options(parts["OPTIONS"]), own_options)
    codes = set(re.findall(r"^\.TP\n\.B (\d+)$", parts["EXIT STATUS"], re.MULTILINE))
    expect("exit codes in the page", codes, exit_codes)


def complete(script, directory, *words):
    """What the completion offers for the last of these words."""
    quoted = " ".join("'" + word.replace("'", "'\\''") + "'" for word in words)
    program = f"source '{script}'; COMP_WORDS=({quoted}); COMP_CWORD={len(words) - 1}; _jobx; "
    program += 'printf "%s\\n" "${COMPREPLY[@]}"'
    result = subprocess.run(["bash", "-c", program], check=True, capture_output=True, text=True, cwd=directory)
    if result.stderr:
        failures.append(f"completion of {words}: {result.stderr}")
    return {line for line in result.stdout.splitlines() if line}


def check_completion(script, commands, options, own_options):
    with tempfile.TemporaryDirectory() as directory:
        expect("commands completed", complete(script, directory, "jobx", ""), commands)
        expect("commands completed from i", complete(script, directory, "jobx", "i"), {"info"})
        expect("options completed", complete(script, directory, "jobx", "--"), long_options(own_options))
        for command in sorted(commands):
            offered = complete(script, directory, "jobx", command, "--")
            expect(f"options of {command} completed", offered, long_options(options[command]))
        check_arguments(script, Path(directory))


def check_arguments(script, directory):
    """Jobs are directories, steps are those of the matrix."""
    (directory / "board" / "matrix").mkdir(parents=True)
    (directory / "bottle").write_text("no job")
    steps = "".join(f"STEP {{\r\n   COL=1\r\n   NAME={name}\r\n}}\r\n" for name in ("PCB", "PANEL", "$(reboot)"))
    layer = "LAYER {\n   ROW=1\n   NAME=PASTE\n}\n"
    (directory / "board" / "matrix" / "matrix").write_text(steps + layer)
    expect("jobs completed", complete(script, directory, "jobx", "info", "bo"), {"board"})
    expect("step completed", complete(script, directory, "jobx", "nets", "board", "--step", "P"), {"PCB", "PANEL"})
    for option in ("--step", "--steps"):
        completed = complete(script, directory, "jobx", "info", "board", option, "PCB,PA")
        expect(f"second step completed after {option}", completed, {"PCB,PANEL"})
    expect("number completed", complete(script, directory, "jobx", "write", "board", "--scale", ""), set())
    expect("file completed", complete(script, directory, "jobx", "info", "--sysattr", "bott"), {"bottle"})


def main(jobx, page, completion):
    text = run(jobx, "--help")
    commands = set(re.findall(r"^  ([a-z][\w-]*)", section(text, "Subcommands"), re.MULTILINE))
    options = {command: options_of(run(jobx, command, "--help")) for command in commands}
    exit_codes = set(re.findall(r"^  (\d+)", section(text, "Exit codes"), re.MULTILINE))
    own_options = options_of(text)
    if "info" not in commands or ("--json",) not in options["info"] or "0" not in exit_codes:
        failures.append("the help does not look as this test expects")
    version = run(jobx, "--version").strip()
    check_page(plain(Path(page).read_text(encoding="ascii")), commands, options, own_options, version, exit_codes)
    if shutil.which("bash"):
        check_completion(completion, commands, options, own_options)
    else:
        print("bash is missing: the completion is not checked")
    print("\n".join(failures) or f"{len(commands)} commands, {sum(map(len, options.values()))} options")
    return 1 if failures else 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
