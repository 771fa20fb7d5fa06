#!/usr/bin/env python3
# Copyright Orvane. All Rights Reserved.
"""End-to-end check of `orvane editor --setup camera-only` on a project whose startup preset is not set.

The camera is spawned without a preset and the call still returns true; no Live Link source, preset, on-screen
message, restart request or configuration change comes of it. The sample is not alpha-ready, so the camera gets
no mask material.

    EditorCameraOnlySetup.py ORVANE REPO_ROOT
"""

from SetupRunSupport import Project, Run, check, check_equal, main, section_of


def test(orvane, repo_root):
    with Project(repo_root) as project:
        check_equal(section_of(project.read("Config", "DefaultGame.ini"), "/Script/LiveLink.LiveLinkSettings"), [],
                    "the project's Live Link settings")
        run = Run(orvane, "editor", "--project", project.dir, "--setup", "camera-only")
        run.expect_exit(0)
        check_equal(run.section("Setup call")[0], "CreateOrvaneCameraOnly() -> true", "the call")
        check_equal(run.log(), [
            (0.0, "Warning", "Orvane Camera created successfully"),
            (0.0, "Warning", "No default LiveLink preset is set"),
            (0.0, "Warning", "No default LiveLink preset found, created camera without preset"),
        ], "the LogTemp messages")
        check_equal(run.section("Warnings and errors of other log categories"), ["(none)"], "the engine's warnings")
        check_equal(run.section("On-screen messages"),
                    ["(none added)", "Still shown at the end of the run: 0"], "the on-screen messages")
        check_equal(run.restart_requests(), 0, "the restart requests")
        check_equal(run.section("Camera"), [
            "Name: Orvane_VP_Camera_C_0",
            "Class: /Orvane/Orvane_VP_Camera.Orvane_VP_Camera_C",
            "Location: X=0.000 Y=0.000 Z=0.000",
            "Actors of this class in its level: 1",
            'Variable "LiveLinkPreset" (ObjectProperty): None',
            'Variable "Set LiveLink Preset" (BoolProperty): false',
            "Post-process blendables: 0",
        ], "the camera")
        check_equal(run.section("Live Link sources"), ["Sources: 0"], "the Live Link sources")
        check_equal(run.section("Configuration written"), ["No .ini file under Config/ changed."], "the configuration")
        check_equal(run.section("Preset asset"), ["Files under Content/Orvane/: 0"], "the preset files")


if __name__ == "__main__":
    main(test)
