#!/usr/bin/env python3
# Copyright Orvane. All Rights Reserved.
"""End-to-end check that the complete setup changes only the keys it names in a real project's configuration.

The project's Config/ is a copy of a real virtual-production project's files (comments, blank lines, duplicate
keys, array entries, sections of plug-ins that are not installed, renderer values already alpha-ready). After one
complete setup, each file is compared line by line with its original: the only lines added are the game mode in
the game maps section of DefaultEngine.ini and the startup preset in a Live Link section of DefaultGame.ini;
nothing is removed or reordered, and the renderer values stay as written, with no restart asked for. A second
setup changes nothing further.

    EditorCompleteSetupOnVpTemplate.py ORVANE REPO_ROOT
"""

import difflib
import os

from SetupRunSupport import Project, Run, check, check_equal, main

GAME_MODE = "GlobalDefaultGameMode=/Orvane/Orvane_GM.Orvane_GM_C"
STARTUP_PRESET = "DefaultLiveLinkPreset=/Game/Orvane/Orvane_LiveLink_Preset.Orvane_LiveLink_Preset"


def insertions(original, changed, path):
    """The blocks of lines added to original, each with the section it was added to; anything else fails."""
    old = original.split("\n")
    new = changed.split("\n")
    blocks = []
    matcher = difflib.SequenceMatcher(None, old, new, autojunk=False)
    for tag, i1, i2, j1, j2 in matcher.get_opcodes():
        if tag == "equal":
            continue
        check(tag == "insert", f"{path}: lines {i1 + 1}-{i2} were {tag}d: {old[i1:i2]!r} -> {new[j1:j2]!r}")
        section = next((line.strip() for line in reversed(new[:j1]) if line.startswith("[")), None)
        blocks.append((section, new[j1:j2]))
    return blocks


def test(orvane, repo_root):
    template = os.path.join(repo_root, "Headless", "Tests", "Data", "Config", "vp-template")
    originals = {}
    for name in ("DefaultEngine.ini", "DefaultGame.ini"):
        with open(os.path.join(template, name), "rb") as file:
            originals[name] = file.read().decode("utf-8")

    with Project(repo_root, config_from=template) as project:
        first = Run(orvane, "editor", "--project", project.dir, "--setup", "complete")
        first.expect_exit(0)
        check_equal(first.section("Setup call")[0],
                    'CreateCompleteSetup("0.0.0.0:9001", "Orvane_LiveLink_Preset", true) -> true', "the call")
        check_equal(first.restart_requests(), 0, "restart requests on an alpha-ready project")

        after = {name: project.read("Config", name) for name in originals}
        check_equal(insertions(originals["DefaultEngine.ini"], after["DefaultEngine.ini"], "DefaultEngine.ini"),
                    [("[/Script/EngineSettings.GameMapsSettings]", [GAME_MODE])],
                    "what the setup added to DefaultEngine.ini")
        check_equal(insertions(originals["DefaultGame.ini"], after["DefaultGame.ini"], "DefaultGame.ini"),
                    [("[/Script/EngineSettings.GeneralProjectSettings]",
                      ["[/Script/LiveLink.LiveLinkSettings]", STARTUP_PRESET, ""])],
                    "what the setup added to DefaultGame.ini")
        for line in ("r.PostProcessing.PropagateAlpha=1", "r.DefaultBackBufferPixelFormat=4"):
            check_equal(after["DefaultEngine.ini"].split("\n").count(line), 1, f"'{line}' kept as written")

        # The program's own diff shows the same additions and nothing else.
        diff = first.config_diff()
        check_equal(sorted(diff), ["Config/DefaultEngine.ini", "Config/DefaultGame.ini"], "the files in the diff")
        check_equal(diff["Config/DefaultEngine.ini"], {"added": [GAME_MODE], "removed": []}, "the DefaultEngine.ini diff")
        check_equal(diff["Config/DefaultGame.ini"]["removed"], [], "lines the diff shows removed from DefaultGame.ini")
        check_equal([line for line in diff["Config/DefaultGame.ini"]["added"] if line],
                    ["[/Script/LiveLink.LiveLinkSettings]", STARTUP_PRESET], "the DefaultGame.ini diff")

        second = Run(orvane, "editor", "--project", project.dir, "--setup", "complete")
        second.expect_exit(0)
        check_equal(second.restart_requests(), 0, "restart requests of the second setup")
        check_equal(second.section("Configuration written"), ["No .ini file under Config/ changed."],
                    "the second setup's configuration report")
        for name in originals:
            check_equal(project.read("Config", name), after[name], f"{name} after the second setup")


if __name__ == "__main__":
    main(test)
