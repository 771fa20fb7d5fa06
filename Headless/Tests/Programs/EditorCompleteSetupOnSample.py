#!/usr/bin/env python3
# Copyright Orvane. All Rights Reserved.
"""End-to-end check of `orvane editor --setup complete` on the sample project, with the dialog's defaults.

Runs the full setup with alpha on a throwaway copy of the sample (kept, so the disk can be checked as well)
and checks the call and its result, the plug-in's log lines in order and their times (the deferred preset
step one second after the call), the green on-screen message, exactly one restart request, the camera with
its Blueprint variables and mask-material blendable, the one Live Link source, the configuration keys written
and the preset package on disk.

    EditorCompleteSetupOnSample.py ORVANE REPO_ROOT
"""

import os
import re
import shutil

from SetupRunSupport import Run, check, check_equal, main

IMMEDIATE = [
    "Default game mode set to: /Orvane/Orvane_GM.Orvane_GM_C",
    "LiveLink source created successfully",
    "Orvane Camera created successfully",
]
DEFERRED = [
    "Delayed Preset creation",
    "LiveLink preset created successfully",
    "LiveLink startup preset configured",
    "LiveLink preset applied to camera successfully",
]
PRESET_OBJECT = "/Game/Orvane/Orvane_LiveLink_Preset.Orvane_LiveLink_Preset"


def test(orvane, repo_root):
    run = Run(orvane, "editor", "--setup", "complete", "--keep")
    project_line = next((line for line in run.stdout.split("\n") if line.startswith("Project: ")), None)
    check(project_line is not None, f"the project is not named: {run.describe()}")
    project = project_line[len("Project: "):]
    try:
        check_run(run, project)
    finally:
        shutil.rmtree(os.path.dirname(project), ignore_errors=True)


def check_run(run, project):
    run.expect_exit(0)
    check_equal(run.section("Setup call")[0],
                'CreateCompleteSetup("0.0.0.0:9001", "Orvane_LiveLink_Preset", true) -> true', "the call")
    check_equal(run.section("Setup call")[1], "Then advanced 2.000 s of application time in 120 frames of 1/60 s.",
                "the time advanced")

    log = run.log()
    check_equal([message for _, _, message in log], IMMEDIATE + DEFERRED, "the LogTemp messages, in order")
    check(all(verbosity == "Warning" for _, verbosity, _ in log), f"every message is a Warning: {log}")
    for time, _, message in log[:len(IMMEDIATE)]:
        check_equal(time, 0.0, f"the time of '{message}'")
    for time, _, message in log[len(IMMEDIATE):]:
        check(1.0 <= time < 1.05, f"'{message}' comes about one second after the call, not at t={time}")
    check_equal(run.section("Warnings and errors of other log categories"), ["(none)"], "the engine's warnings")

    check_equal(run.section("On-screen messages"), [
        '[t=0.000] "Orvane Complete Setup Successful!" colour Green (R=0,G=255,B=0,A=255), 10.0 s, key -1',
        "Still shown at the end of the run: 1",
        '  "Orvane Complete Setup Successful!" (2.0 of 10.0 s shown, key -1)',
    ], "the on-screen messages")
    check_equal(run.restart_requests(), 1, "the restart requests")

    check_equal(run.section("Camera"), [
        "Name: Orvane_VP_Camera_C_0",
        "Class: /Orvane/Orvane_VP_Camera.Orvane_VP_Camera_C",
        "Location: X=0.000 Y=0.000 Z=0.000",
        "Actors of this class in its level: 1",
        f'Variable "LiveLinkPreset" (ObjectProperty): {PRESET_OBJECT}',
        'Variable "Set LiveLink Preset" (BoolProperty): true',
        "Post-process blendables: 1",
        "  weight 1.000: /Orvane/Materials/Orvane_MI_MaskStencil.Orvane_MI_MaskStencil",
    ], "the camera")

    sources = run.section("Live Link sources")
    check_equal(sources[0], "Sources: 1", "the number of Live Link sources")
    check(re.fullmatch(r"Source [0-9A-F]{32}", sources[1]) is not None, f"a source GUID, not {sources[1]!r}")
    check_equal(sources[2:6], [
        "  Type: Orvane Tracking",
        "  Machine: 0.0.0.0:9001",
        "  Connection string: 0.0.0.0:9001",
        "  Factory: /Script/OrvaneTracking.OrvaneTrackingSourceFactory",
    ], "the source")
    # Another process may hold the port: the source then retries, which its status says.
    check(sources[6].startswith("  Status: "), f"the source's status, not {sources[6]!r}")

    diff = run.config_diff()
    check_equal(sorted(diff), ["Config/DefaultEngine.ini", "Config/DefaultGame.ini"], "the files changed")
    for path, change in diff.items():
        check_equal(change["removed"], [], f"lines removed from {path}")
    engine_added = diff["Config/DefaultEngine.ini"]["added"]
    for line in ["GlobalDefaultGameMode=/Orvane/Orvane_GM.Orvane_GM_C", "r.PostProcessing.PropagateAlpha=True",
                 "r.DefaultBackBufferPixelFormat=4"]:
        check(line in engine_added, f"'{line}' added to DefaultEngine.ini: {engine_added}")
    check_equal(diff["Config/DefaultGame.ini"]["added"],
                ["", "[/Script/LiveLink.LiveLinkSettings]", f"DefaultLiveLinkPreset={PRESET_OBJECT}"],
                "the lines added to DefaultGame.ini")
    with open(os.path.join(project, "Config", "DefaultGame.ini"), encoding="utf-8") as file:
        check(f"DefaultLiveLinkPreset={PRESET_OBJECT}\n" in file.read(), "the startup preset is on disk")

    preset_file = os.path.join(project, "Content", "Orvane", "Orvane_LiveLink_Preset.uasset")
    check(os.path.isfile(preset_file), f"{preset_file} exists")
    size = os.path.getsize(preset_file)
    asset = run.section("Preset asset")
    check_equal(asset[:3], [
        "Files under Content/Orvane/: 1",
        f"  Content/Orvane/Orvane_LiveLink_Preset.uasset ({size} bytes)",
        "--- Content/Orvane/Orvane_LiveLink_Preset.uasset ---",
    ], "the preset files")
    with open(preset_file, encoding="utf-8") as file:
        check_equal("\n".join(asset[3:]) + "\n", file.read(), "the preset text shown")
    check_equal(asset[3:5], ["HeadlessPackage 1", "Package=/Game/Orvane/Orvane_LiveLink_Preset"], "the package header")
    check(any(line.startswith("Begin Object Name=Orvane_LiveLink_Preset Class=/Script/LiveLink.LiveLinkPreset")
              for line in asset), "the preset object")
    check('\tConnectionString="0.0.0.0:9001"' in asset, "the preset re-creates the source on 0.0.0.0:9001")


if __name__ == "__main__":
    main(test)
