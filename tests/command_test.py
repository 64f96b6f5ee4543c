#!/usr/bin/env python3
"""Runs the transcripts of a shell in pages and compares what is printed.

command_test.py PROGRAM SOURCE PAGE... runs the blocks of each page that begin with ```console. A line "$ COMMAND" is run;
the lines up to the next one are all that it must print, on either stream. The commands of a page are run by one shell,
which finds PROGRAM first, in a folder that has the documents of tests/data/command, and command/ and examples/ of SOURCE.
"""
import difflib
import os
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile

END = "\x1e"  # printed behind each command


def transcript(path):
    text = "".join(re.findall(r"^```console\n(.*?)^```$", path.read_text(), re.DOTALL | re.MULTILINE))
    return re.findall(r"^\$ (.*)\n((?:(?!\$ ).*\n)*)", text, re.MULTILINE)


def run(commands, program, source):
    script = "".join(f"{command}\n_status=$?; printf '{END}\\n'; (exit $_status)\n" for command in commands)
    with tempfile.TemporaryDirectory() as folder:
        work = pathlib.Path(folder) / "work"
        shutil.copytree(source / "tests/data/command", work)
        for name in "command", "examples":
            (work / name).symlink_to(source / name)
        path = f"{program.parent}:{os.environ['PATH']}"
        done = subprocess.run(["bash", "-c", script], cwd=work, env={"PATH": path}, stdin=subprocess.DEVNULL,
                              stdout=subprocess.PIPE, stderr=subprocess.STDOUT, timeout=300, check=False)
    return done.stdout.decode().split(END + "\n")


def main():
    program, source, *paths = (pathlib.Path(word).resolve() for word in sys.argv[1:])
    failures = 0
    for path in paths:
        steps = transcript(path)
        printed = run([command for command, _ in steps], program, source)
        if not steps or len(printed) != len(steps) + 1:
            sys.exit(f"{path}: {len(printed) - 1} of {len(steps)} commands were run")
        for (command, expected), output in zip(steps, printed):
            if output == expected:
                continue
            failures += 1
            print(f"{path}: $ {command}")
            print("\n".join(difflib.unified_diff(expected.splitlines(), output.splitlines(), "expected", "printed", lineterm="")))
    sys.exit(failures > 0)


main()
