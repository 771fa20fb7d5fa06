# Copyright Orvane. All Rights Reserved.
"""What the end-to-end scripts of `orvane editor --setup` share: project copies, runs and the report's sections."""

import os
import re
import shutil
import subprocess
import sys
import tempfile

HEADING = re.compile(r"^== (.+) ==$")
LOG_LINE = re.compile(r"^\[t=(\d+\.\d{3})\] (\w+): (.*)$")


class Failure(Exception):
    pass


checks_made = 0


def check(condition, message):
    global checks_made
    checks_made += 1
    if not condition:
        raise Failure(message)


def check_equal(actual, expected, what):
    global checks_made
    checks_made += 1
    if actual != expected:
        raise Failure(f"{what}:\n  expected {expected!r}\n  got      {actual!r}")


def main(body):
    """Runs a test body with the command line's arguments; prints PASS, or FAIL and the reason."""
    try:
        body(*sys.argv[1:])
    except Failure as failure:
        print(f"FAIL: {failure}")
        sys.exit(1)
    print(f"{checks_made} checks passed")
    print("PASS")


class Project:
    """A project folder in a fresh temporary folder, with the plug-in installed as a user installs it."""

    def __init__(self, repo_root, config_from=None):
        self.root = tempfile.mkdtemp(prefix="orvane-test-")
        sample = os.path.join(repo_root, "Samples", "OrvaneSample")
        self.dir = os.path.join(self.root, "OrvaneSample")
        shutil.copytree(sample, self.dir)
        if config_from is not None:
            shutil.rmtree(os.path.join(self.dir, "Config"))
            shutil.copytree(config_from, os.path.join(self.dir, "Config"),
                            ignore=shutil.ignore_patterns("*.md"))
        os.makedirs(os.path.join(self.dir, "Plugins"))
        os.symlink(repo_root, os.path.join(self.dir, "Plugins", "Orvane"))

    def path(self, *parts):
        return os.path.join(self.dir, *parts)

    def read(self, *parts):
        with open(self.path(*parts), "rb") as file:
            return file.read().decode("utf-8")

    def write(self, relative, text):
        with open(self.path(relative), "wb") as file:
            file.write(text.encode("utf-8"))

    def remove(self):
        shutil.rmtree(self.root, ignore_errors=True)

    def __enter__(self):
        return self

    def __exit__(self, *exc):
        self.remove()


class Run:
    """One run of the program, with its output split into the report's sections."""

    def __init__(self, orvane, *args):
        self.args = list(args)
        completed = subprocess.run([orvane, *args], capture_output=True, text=True, timeout=300)
        self.exit_code = completed.returncode
        self.stdout = completed.stdout
        self.stderr = completed.stderr
        self.sections = {}
        current = None
        for line in self.stdout.split("\n"):
            match = HEADING.match(line)
            if match:
                current = match.group(1)
                check(current not in self.sections, f"section '{current}' printed twice")
                self.sections[current] = []
            elif current is not None:
                self.sections[current].append(line)
        for lines in self.sections.values():
            while lines and lines[-1] == "":
                lines.pop()

    def describe(self):
        return f"orvane {' '.join(self.args)} (exit {self.exit_code})\n{self.stdout}\n{self.stderr}"

    def section(self, title):
        check(title in self.sections, f"no section '{title}' in the output of {self.describe()}")
        return self.sections[title]

    def log(self):
        """The LogTemp lines as (time, verbosity, message)."""
        entries = []
        for line in self.section("Log (LogTemp)"):
            if line == "(nothing logged)":
                continue
            match = LOG_LINE.match(line)
            check(match is not None, f"malformed log line {line!r}")
            entries.append((float(match.group(1)), match.group(2), match.group(3)))
        return entries

    def log_messages(self):
        return [message for _, _, message in self.log()]

    def restart_requests(self):
        lines = self.section("Restart requests")
        check(lines and lines[0].startswith("Requests: "), f"malformed restart section {lines!r}")
        return int(lines[0][len("Requests: "):])

    def config_diff(self):
        """The added and removed lines of the configuration diff, per file, without the diff's own markup."""
        changes = {}
        current = None
        for line in self.section("Configuration written"):
            if line.startswith("+++ "):
                current = line[len("+++ b/"):] if line.startswith("+++ b/") else line[len("+++ "):]
                changes[current] = {"added": [], "removed": []}
            elif line.startswith("--- ") or line.startswith("@@ ") or current is None:
                continue
            elif line.startswith("+"):
                changes[current]["added"].append(line[1:])
            elif line.startswith("-"):
                changes[current]["removed"].append(line[1:])
        return changes

    def expect_exit(self, code):
        check(self.exit_code == code, f"expected exit code {code}: {self.describe()}")


def section_of(ini_text, section):
    """The lines of one section of an .ini text (header excluded), as written."""
    lines = []
    inside = False
    for line in ini_text.split("\n"):
        if line.startswith("["):
            inside = line.strip() == f"[{section}]"
            continue
        if inside:
            lines.append(line)
    return lines
