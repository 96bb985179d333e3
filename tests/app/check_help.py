#!/usr/bin/env python3
"""Check that the manual page and the completions say what jobx --help does: check_help.py JOBX MANUAL SAMPLE BASH ZSH FISH

Every command, option and exit code has to stand in the page, under its command, and nothing else; the completion of each
shell has to offer the same commands and long options, and values and names of the job. Exit status 77 if a shell is not
installed and nothing else is wrong.
"""

import os
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


class Bash:
    """Calls the function of the script with the words as bash splits them."""

    name = "bash"

    def __init__(self, script, jobx):
        self.script, self.jobx = script, jobx

    def complete(self, directory, *words):
        program = """
            source "$1"; shift
            COMP_LINE=$*; COMP_POINT=${#COMP_LINE}
            COMP_WORDS=(); for word in "$@"; do
                before=; while [[ $word == ?*=* ]]; do COMP_WORDS+=("${word%%=*}" =); word=${word#*=}; before==; done
                [[ $before && ! $word ]] || COMP_WORDS+=("$word")
            done
            COMP_CWORD=$((${#COMP_WORDS[@]} - 1)); _jobx
            [[ ${COMP_WORDS[-1]} == "=" ]] && cut=0 || cut=${#COMP_WORDS[-1]}
            whole=${!#}; for reply in "${COMPREPLY[@]}"; do printf "%s\n" "${whole::${#whole}-cut}$reply"; done"""
        return answer(["bash", "-c", program, "bash", self.script, self.jobx, *words], directory, self.name)

    def quoted(self, word):
        return re.sub(r"([^\w/.+-])", r"\\\1", word)


class Zsh:
    """Calls the function of the script; what it would pass to the editor is printed."""

    name = "zsh"

    def __init__(self, script, jobx):
        self.script, self.jobx = script, jobx

    def complete(self, directory, *words):
        program = """
            compadd() { local -a names; names=("${(@P)@[-1]}"); print -rl -- $names }
            _files() { [[ $1 == -/ ]] && print -rl -- $PREFIX*(N/) || print -rl -- $PREFIX*(N) }
            script=$1; shift; words=("$@"); CURRENT=$#; PREFIX=${@[-1]}
            source $script"""
        return answer(["zsh", "-fc", program, "zsh", self.script, self.jobx, *words], directory, self.name)

    def quoted(self, word):
        return word  # the editor quotes it


class Fish:
    """Asks fish, which answers with the words that it would offer."""

    name = "fish"

    def __init__(self, script, jobx):
        self.script, self.jobx = script, jobx

    def complete(self, directory, *words):
        place = f"set -gx PATH '{Path(self.jobx).parent}' $PATH"
        line = " ".join(["jobx", *words])
        program = f"{place}; source '{self.script}'; complete -C $argv[1]"
        found = answer(["fish", "--no-config", "-c", program, "--", line], directory, self.name)
        return {word.split("\t")[0].rstrip("/") for word in found}

    def quoted(self, word):
        return word  # the editor quotes it


def answer(command, directory, shell):
    result = subprocess.run(command, capture_output=True, text=True, cwd=directory, check=False)
    if result.stderr or result.returncode != 0:
        failures.append(f"{shell}: {command[-3:]}: {result.stderr}")
    return {line for line in result.stdout.splitlines() if line}


def check_completion(shell, sample, commands, options, own_options):
    def offers(what, wanted, *words):
        expect(f"{shell.name}: {what}", shell.complete(directory, *words), wanted)

    with tempfile.TemporaryDirectory() as directory:
        offers("commands", commands, "")
        offers("commands from i", {"info"}, "i")
        offers("commands after help", {"nets"}, "help", "n")
        offers("options", long_options(own_options), "--")
        for command in sorted(commands):
            offers(f"options of {command}", long_options(options[command]), command, "--")
        shutil.copytree(sample, Path(directory) / "board")
        (Path(directory) / "bottle").write_text("no job")
        check_values(offers)
        check_names(offers, Path(directory) / "board", shell)


def check_values(offers):
    """What options take, and jobs, which are directories."""
    offers("jobs", {"board"}, "info", "bo")
    offers("files", {"bottle"}, "info", "--sysattr", "bott")
    offers("directories", {"board"}, "write", "board", "-o", "bo")
    offers("units", {"mm", "inch"}, "nets", "board", "--units", "")
    offers("units in one word", {"--units=inch"}, "nets", "board", "--units=i")
    offers("all units in one word", {"--units=inch", "--units=mm"}, "nets", "board", "--units=")
    offers("messages", {"all", "none"}, "nets", "board", "--messages", "")
    offers("colours", {"auto", "always"}, "nets", "board", "--color", "a")
    offers("second part", {"nets,netlists", "nets,nets"}, "diff", "--only", "nets,net")
    offers("no number", set(), "write", "board", "--scale", "")


def check_quoted_names(offers, netlist):
    """Inside quotation marks, too, a name is only a name."""
    text = netlist.read_text()
    for name, double, single in (
        ("HOT$(reboot)", r"HOT\$(reboot)", "HOT$(reboot)"),
        ("HOT`reboot`", r"HOT\`reboot\`", "HOT`reboot`"),
        ('HOT";reboot', r"HOT\";reboot", 'HOT";reboot'),
        ("HOT';reboot", "HOT';reboot", None),
        ("HOT\\", r"HOT\\", "HOT\\"),
        ("HOT!reboot", None, "HOT!reboot"),
    ):
        netlist.write_text(text.replace("XT-(1)", name))
        for mark, wanted in (('"', double), ("'", single)):
            offers(f"{name} behind {mark}", {wanted} - {None}, "nets", "board", "--net", mark + "HO")
    netlist.write_text(text)


def check_names(offers, board, shell):
    """Names come from the job in the command line, wherever it stands."""
    offers("steps", {"PCB", "PANEL"}, "nets", "board", "--step", "P")
    offers("steps in lower case", {"PCB"}, "nets", "--quiet", "board", "--step", "pc")
    for option in ("--step", "--steps"):
        offers(f"second step after {option}", {"PCB,PANEL"}, "info", "board", option, "PCB,PA")
    offers("no steps without a job", set(), "nets", "--step", "P")
    offers("layers", {"SMT", "SMB"}, "layers", "board", "--layer", "sm")
    offers("nets", {"XT1", "XT2"}, "features", "board", "--net", "XT")
    offers("nets in their case", set(), "features", "board", "--net", "xt")
    netlist = board / "steps" / "pcb" / "netlists" / "cadnet" / "netlist"
    netlist.write_text(netlist.read_text().replace(" XT1", " XT-(1)").replace(" XT2", " $(reboot)"))
    offers("odd nets", {shell.quoted("XT-(1)")}, "nets", "board", "--net", "XT")
    if shell.name == "bash":
        check_quoted_names(offers, netlist)
    netlist.unlink()
    os.mkfifo(netlist)
    offers("no nets of a pipe, but those of the EDA data", {"XT1", "XT2"}, "nets", "board", "--net", "XT")
    netlist.unlink()
    netlist.symlink_to("/dev/zero")
    offers("no nets of a device, but those of the EDA data", {"XT1", "XT2"}, "nets", "board", "--net", "XT")
    netlist.unlink()
    netlist.write_text("$1 XT1\n$2 XT" + "x" * 300 + "\n$3 XT2" + " " * 100000 + "\n$4 XT3\n")
    offers("nets before a line of endless length", {"XT1"}, "nets", "board", "--net", "XT")
    netlist.unlink()
    offers("nets of the EDA data", {"XT1", "XT2"}, "nets", "board", "--net", "XT")
    matrix = board / "matrix" / "matrix"
    matrix.write_text(matrix.read_text().replace("NAME=PANEL", "NAME=$(reboot)").replace("\n", "\r\n"))
    offers("odd steps", {shell.quoted("$(reboot)"), "PCB"}, "nets", "board", "--step", "")


def main(jobx, page, sample, *scripts):
    text = run(jobx, "--help")
    commands = set(re.findall(r"^  ([a-z][\w-]*)", section(text, "Subcommands"), re.MULTILINE))
    options = {command: options_of(run(jobx, command, "--help")) for command in commands}
    exit_codes = set(re.findall(r"^  (\d+)", section(text, "Exit codes"), re.MULTILINE))
    own_options = options_of(text)
    if "info" not in commands or ("--json",) not in options["info"] or "0" not in exit_codes:
        failures.append("the help does not look as this test expects")
    version = run(jobx, "--version").strip()
    check_page(plain(Path(page).read_text(encoding="ascii")), commands, options, own_options, version, exit_codes)
    skipped = 0
    for kind, script in zip((Bash, Zsh, Fish), scripts, strict=True):
        if shutil.which(kind.name):
            check_completion(kind(str(Path(script).resolve()), str(Path(jobx).resolve())), sample, commands, options, own_options)
        else:
            print(f"SKIPPED: {kind.name} is not installed")
            skipped += 1
    print("\n".join(failures) or f"{len(commands)} commands, {sum(map(len, options.values()))} options")
    return 1 if failures else 77 if skipped else 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
