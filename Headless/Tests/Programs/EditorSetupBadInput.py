#!/usr/bin/env python3
# Copyright Orvane. All Rights Reserved.
"""End-to-end check of how `orvane editor --setup` treats bad input.

Malformed options are refused with exit code 2 and a message naming the problem, before the editor starts.
Input the setup dialog would pass on is passed on trimmed, and the run goes on and reports what happened: a bad
endpoint fails the setup (exit 1, red message, no camera, only the game mode written); a preset name with a
slash is handed over as typed; read-only configuration files leave the setup running and the files untouched.

    EditorSetupBadInput.py ORVANE REPO_ROOT
"""

import os
import stat

from SetupRunSupport import Project, Run, check, check_equal, main

REFUSED = [
    (["--setup"], "--setup needs 'complete' or 'camera-only'."),
    (["--setup", "sideways"], "--setup takes 'complete' or 'camera-only', not 'sideways'."),
    (["--endpoint", "1.2.3.4:5"], "--endpoint needs --setup complete."),
    (["--advance", "1"], "--advance needs --setup complete or --setup camera-only."),
    (["--setup", "camera-only", "--preset", "P"], "--preset applies to --setup complete only; the camera-only "
                                                  "setup takes no endpoint, preset or alpha choice."),
    (["--setup", "complete", "--render-alpha", "--no-render-alpha"],
     "--render-alpha and --no-render-alpha cannot be given together."),
    (["--setup", "complete", "--advance", "-1"], "--advance takes seconds from 0 to 3600, not '-1'."),
    (["--setup", "complete", "--advance", "soon"], "--advance takes seconds from 0 to 3600, not 'soon'."),
    (["--setup", "complete", "--endpoint", "--keep"], "--endpoint needs an endpoint (A.B.C.D:PORT)."),
    (["--setup", "complete", "--bogus"], "Unknown argument '--bogus'."),
]


def test(orvane, repo_root):
    for args, message in REFUSED:
        run = Run(orvane, "editor", *args)
        run.expect_exit(2)
        check_equal(run.stderr.strip(), f"orvane: {message}", f"the message for {args}")
        check("Project:" not in run.stdout, f"the editor must not start for {args}: {run.describe()}")

    with Project(repo_root) as project:
        run = Run(orvane, "editor", "--project", project.dir, "--setup", "complete", "--endpoint", "  not an endpoint ")
        run.expect_exit(1)
        check_equal(run.section("Setup call")[0],
                    'CreateCompleteSetup("not an endpoint", "Orvane_LiveLink_Preset", true) -> false', "the call")
        check_equal(run.log(), [(0.0, "Warning", "Default game mode set to: /Orvane/Orvane_GM.Orvane_GM_C"),
                                (0.0, "Error", "Failed to create LiveLink source")], "the LogTemp messages")
        check_equal(run.section("On-screen messages")[0],
                    '[t=0.000] "Orvane Setup Failed - check console" colour Red (R=255,G=0,B=0,A=255), 8.0 s, key -1',
                    "the failure message")
        check_equal(run.restart_requests(), 0, "restart requests of a failed setup")
        check_equal(run.section("Camera"), ["No camera: GetLastCreatedCamera() returned null."], "the camera")
        check_equal(run.section("Live Link sources"), ["Sources: 0"], "the Live Link sources")
        check_equal(run.config_diff(), {"Config/DefaultEngine.ini": {
            "added": ["GlobalDefaultGameMode=/Orvane/Orvane_GM.Orvane_GM_C"], "removed": []}},
            "the configuration of a failed setup")
        check_equal(run.section("Preset asset"), ["Files under Content/Orvane/: 0",
                                                  "No package file Content/Orvane/Orvane_LiveLink_Preset.uasset."],
                    "the preset files of a failed setup")

    with Project(repo_root) as project:
        run = Run(orvane, "editor", "--project", project.dir, "--setup", "complete", "--endpoint", " 0.0.0.0:9001\t",
                  "--preset", "  My_Preset  ", "--advance", "1.5")
        run.expect_exit(0)
        check_equal(run.section("Setup call"), ['CreateCompleteSetup("0.0.0.0:9001", "My_Preset", true) -> true',
                                                "Then advanced 1.500 s of application time in 90 frames of 1/60 s."],
                    "the trimmed call")
        check("  Content/Orvane/My_Preset.uasset (" in "\n".join(run.section("Preset asset")), "the preset file")

    with Project(repo_root) as project:
        run = Run(orvane, "editor", "--project", project.dir, "--setup", "complete", "--preset", "Sub/Name")
        check(run.section("Setup call")[0].startswith('CreateCompleteSetup("0.0.0.0:9001", "Sub/Name", true) -> '),
              f"the name is handed over as typed: {run.describe()}")
        result = run.section("Setup call")[0].rsplit(" -> ", 1)[1]
        run.expect_exit(0 if result == "true" else 1)
        for title in ("Log (LogTemp)", "Camera", "Configuration written", "Preset asset"):
            run.section(title)
        print(f"A preset name with a slash: the call returned {result}; preset files: {run.section('Preset asset')[0]}")

    with Project(repo_root) as project:
        before = {}
        for name in os.listdir(project.path("Config")):
            path = project.path("Config", name)
            before[name] = project.read("Config", name)
            os.chmod(path, stat.S_IRUSR | stat.S_IRGRP | stat.S_IROTH)
        run = Run(orvane, "editor", "--project", project.dir, "--setup", "complete")
        for name in before:
            os.chmod(project.path("Config", name), stat.S_IRUSR | stat.S_IWUSR)
        run.expect_exit(0)
        check_equal(run.section("Setup call")[0],
                    'CreateCompleteSetup("0.0.0.0:9001", "Orvane_LiveLink_Preset", true) -> true', "the call")
        check_equal(run.section("Configuration written"), ["No .ini file under Config/ changed."],
                    "read-only configuration files")
        problems = run.section("Warnings and errors of other log categories")
        check(any("read-only" in line for line in problems), f"the refused writes are reported: {problems}")
        for name, text in before.items():
            check_equal(project.read("Config", name), text, f"{name} after the run")


if __name__ == "__main__":
    main(test)
