#!/usr/bin/env python3
"""Run the commands of CONTRIBUTING.md: check_contributing.py ROOT BUILD

Programs of the build are run as they stand there, or where the command changes files, asked whether they have such tests.
Of what would build or take minutes, it is looked up that the script, the preset, the target or the stage exists. A kind of
command that is not known here fails. Paths in the text have to exist.
"""

import json
import re
import shlex
import subprocess
import sys
from pathlib import Path


def commands(text):
    """The lines of the document's sh blocks."""
    return [line for block in re.findall(r"^```sh\n(.*?)^```", text, re.MULTILINE | re.DOTALL) for line in block.splitlines()]


def output_of(command, root):
    done = subprocess.run(command, cwd=root, stdin=subprocess.DEVNULL, capture_output=True, text=True)
    assert done.returncode == 0, f"{shlex.join(command)}: exit status {done.returncode}\n{done.stdout}{done.stderr}"
    return done.stdout


def check(line, root, build):
    """Raises AssertionError when the command would not work."""
    words = shlex.split(line)
    changes = bool(words) and re.match(r"JOBX_WRITE_GOLDEN=1$", words[0])
    command, *arguments = words[1:] if changes else words
    if command.startswith("build/debug/bin/"):
        program = str(build / command.removeprefix("build/debug/"))
        tests = output_of([program, "--gtest_list_tests", *arguments], root)
        assert "\n  " in tests, f"{line}: no such test"
        if not changes:
            output_of([program, *arguments], root)
    elif command == "./test.sh":
        presets = json.loads((root / "CMakePresets.json").read_text(encoding="utf-8"))["testPresets"]
        assert not arguments or arguments[0] in [preset["name"] for preset in presets], f"{line}: no such preset"
        for program in arguments[1:]:
            assert (build / "bin" / program).is_file(), f"{line}: no such program"
    elif command == ".ci/run":
        stages = output_of([command, "--list"], root).split()
        assert stages and set(arguments) <= {*stages, "--list"}, f"{line}: no such stage"
    elif command == "ctest":
        assert arguments[:3] == ["--preset", "debug", "-R"], f"{line}: not known here"
        found = output_of(["ctest", "--test-dir", str(build), "--show-only", *arguments[2:]], root)
        assert re.search(r"^Total Tests: [1-9]", found, re.MULTILINE), f"{line}: no such test"
    elif command == "scripts/instructions.sh":
        assert f"[{arguments[0]} " in (root / command).read_text(encoding="utf-8"), f"{line}: no such option"
    elif command == "python3":
        paths = [word for word in arguments if "/" in word and not word.startswith("build/")]
        assert paths and all((root / path).is_file() for path in paths), f"{line}: no such file"
        assert all(option in (root / paths[0]).read_text(encoding="utf-8") for option in arguments if option[:2] == "--")
    else:
        raise AssertionError(f"{line}: a kind of command that is not known here")


def check_paths(text, root):
    named = re.findall(r"`((?:app|docs|scripts|src|tests)/[\w./]*)`", text) + re.findall(r"\]\(([\w./]+)\)", text)
    named = [path for path in named if "NAME" not in path]
    assert named
    for path in named:
        assert (root / path).exists(), f"there is no {path}"


def check_itself(root, build):
    """Each of these would not work."""
    for wrong in (
        "build/debug/bin/layer_tests --gtest_filter=Nonesuch.*",
        "./test.sh nonesuch",
        "./test.sh debug nonesuch_tests",
        ".ci/run nonesuch",
        "ctest --preset debug -R Nonesuch",
        "scripts/instructions.sh --nonesuch",
        "python3 tests/nonesuch.py",
        "make all",
    ):
        try:
            check(wrong, root, build)
        except AssertionError:
            continue
        raise AssertionError(f"passes although it would not work: {wrong}")


def main(root, build):
    root, build = Path(root).resolve(), Path(build).resolve()
    text = (root / "CONTRIBUTING.md").read_text(encoding="utf-8")
    check_itself(root, build)
    lines = commands(text)
    assert lines
    for line in lines:
        check(line, root, build)
    check_paths(text, root)
    print(f"{len(lines)} commands")


if __name__ == "__main__":
    main(*sys.argv[1:])
