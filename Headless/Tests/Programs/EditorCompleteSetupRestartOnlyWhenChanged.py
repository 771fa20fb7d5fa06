#!/usr/bin/env python3
# Copyright Orvane. All Rights Reserved.
"""End-to-end check that the complete setup asks for an editor restart only when it changes the renderer settings.

On one copy of the sample, the first setup with alpha makes the renderer alpha-ready and asks for a restart; the
second finds it alpha-ready, writes no renderer key and asks for none. A project where only one of the two
renderer values differs gets exactly one request and only the other key written. Without alpha, no renderer key
changes and no restart is asked for.

    EditorCompleteSetupRestartOnlyWhenChanged.py ORVANE REPO_ROOT
"""

from SetupRunSupport import Project, Run, check, check_equal, main, section_of

RENDERER = "/Script/Engine.RendererSettings"
ALPHA_KEY = "r.PostProcessing.PropagateAlpha"
FORMAT_KEY = "r.DefaultBackBufferPixelFormat"


def renderer_lines(lines):
    return [line for line in lines if line.startswith("r.")]


def setup(orvane, project, *extra):
    run = Run(orvane, "editor", "--project", project.dir, "--setup", "complete", *extra)
    run.expect_exit(0)
    return run


def with_renderer_keys(project, keys):
    """Writes keys into the sample's renderer section, after its own."""
    text = project.read("Config", "DefaultEngine.ini")
    anchor = "r.ReflectionCaptureResolution=2048\n"
    check(anchor in text, "the sample's renderer section is as expected")
    project.write("Config/DefaultEngine.ini", text.replace(anchor, anchor + "".join(f"{k}\n" for k in keys)))


def test(orvane, repo_root):
    with Project(repo_root) as project:
        first = setup(orvane, project)
        check_equal(first.restart_requests(), 1, "restart requests of the first setup")
        added = renderer_lines(first.config_diff()["Config/DefaultEngine.ini"]["added"])
        check(f"{ALPHA_KEY}=True" in added and f"{FORMAT_KEY}=4" in added,
              f"the first setup writes both renderer values: {added}")
        renderer_after_first = section_of(project.read("Config", "DefaultEngine.ini"), RENDERER)

        second = setup(orvane, project)
        check_equal(second.restart_requests(), 0, "restart requests of the second setup")
        for path, change in second.config_diff().items():
            check_equal(renderer_lines(change["added"] + change["removed"]), [],
                        f"renderer keys written by the second setup in {path}")
        check_equal(section_of(project.read("Config", "DefaultEngine.ini"), RENDERER), renderer_after_first,
                    "the renderer section after the second setup")

    # Only one of the two values differs from the alpha-ready state: one request, the other key written.
    for present, missing in [(f"{ALPHA_KEY}=True", f"{FORMAT_KEY}=4"), (f"{FORMAT_KEY}=4", f"{ALPHA_KEY}=True")]:
        with Project(repo_root) as project:
            with_renderer_keys(project, [present])
            run = setup(orvane, project)
            check_equal(run.restart_requests(), 1, f"restart requests with only {present} set")
            change = run.config_diff()["Config/DefaultEngine.ini"]
            check(missing in change["added"], f"{missing} is written when only {present} was set: {change}")
            check(present not in change["added"] + change["removed"], f"{present} stays as it was: {change}")
            check_equal(section_of(project.read("Config", "DefaultEngine.ini"), RENDERER).count(present), 1,
                        f"{present} in the renderer section")

    with Project(repo_root) as project:
        run = setup(orvane, project, "--no-render-alpha")
        check_equal(run.section("Setup call")[0],
                    'CreateCompleteSetup("0.0.0.0:9001", "Orvane_LiveLink_Preset", false) -> true', "the call")
        check_equal(run.restart_requests(), 0, "restart requests without alpha")
        for path, change in run.config_diff().items():
            check_equal(renderer_lines(change["added"] + change["removed"]), [],
                        f"renderer keys written without alpha in {path}")
        check("Post-process blendables: 0" in run.section("Camera"), "no mask material without alpha")


if __name__ == "__main__":
    main(test)
