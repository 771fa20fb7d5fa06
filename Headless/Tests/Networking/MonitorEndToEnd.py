#!/usr/bin/env python3
# Copyright Orvane. All Rights Reserved.
"""End-to-end check of `orvane monitor` watching a replayed session.

Starts `orvane monitor 127.0.0.1:PORT --json --duration D`, replays the sample session to that port with
`orvane replay`, and checks from the monitor's JSON lines that both cameras of the session were seen with
every datagram accepted, their rates near the recorded 50 Hz, nothing rejected and nothing lost; and that the
last reported poses are those of the recording's last samples. Then checks that bad input is refused.

    MonitorEndToEnd.py ORVANE RECORDING
"""

import json
import socket
import subprocess
import sys
import time


def free_port():
    with socket.socket(socket.AF_INET, socket.SOCK_DGRAM) as probe:
        probe.bind(("127.0.0.1", 0))
        return probe.getsockname()[1]


def fail(message):
    print(f"FAIL: {message}")
    sys.exit(1)


def main():
    orvane, recording = sys.argv[1], sys.argv[2]
    port = free_port()
    endpoint = f"127.0.0.1:{port}"
    # The session lasts 5 s and starts 1 s in; the extra seconds leave room for a loaded machine.
    monitor = subprocess.Popen([orvane, "monitor", endpoint, "--json", "--duration", "9"],
                               stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True)
    time.sleep(1.0)
    replay = subprocess.run([orvane, "replay", recording, endpoint], capture_output=True, text=True, timeout=60)
    if replay.returncode != 0:
        fail(f"replay exited {replay.returncode}: {replay.stderr}")
    out, err = monitor.communicate(timeout=60)
    if monitor.returncode != 0:
        fail(f"monitor exited {monitor.returncode}: {err}")

    reports = [json.loads(line) for line in out.splitlines() if line.startswith("{")]
    if len(reports) < 5:
        fail(f"expected a report per second, got {len(reports)}:\n{out}")
    last = reports[-1]
    print(f"last report: {json.dumps(last)}")
    if last["datagrams"] != 500 or last["accepted"] != 500 or last["samples"] != 500:
        fail(f"expected 500 datagrams accepted as 500 samples, got {last['datagrams']}/{last['accepted']}/{last['samples']}")
    if any(count != 0 for count in last["rejected"].values()) or last["sequence_gaps"] != 0 or last["loss_percent"] != 0:
        fail("nothing may be rejected or lost")
    subjects = {subject["name"]: subject for subject in last["subjects"]}
    if sorted(subjects) != ["FreeD 1", "OpenTrackIO 2"]:
        fail(f"expected the two cameras of the session, got {sorted(subjects)}")
    for name, subject in subjects.items():
        if subject["samples"] != 250:
            fail(f"{name}: expected 250 samples, got {subject['samples']}")
    # A stalled second followed by a catch-up burst can skew one report; the median one must show the 50 Hz.
    rates = sorted(s["rate_hz"] for report in reports for s in report["subjects"] if s["name"] == "FreeD 1" and s["rate_hz"] > 0)
    median_rate = rates[len(rates) // 2] if rates else 0.0
    if not 40.0 <= median_rate <= 60.0:
        fail(f"the 50 Hz FreeD camera was reported at a median of {median_rate} Hz ({rates})")
    lens = subjects["OpenTrackIO 2"]
    if "focal_length_mm" not in lens or "timecode" not in lens:
        fail("the OpenTrackIO camera must report its focal length and timecode")

    bad = subprocess.run([orvane, "monitor", "127.0.0.1:0"], capture_output=True, text=True, timeout=30)
    if bad.returncode != 2 or "Invalid tracking endpoint '127.0.0.1:0'" not in bad.stderr + bad.stdout:
        fail(f"a bad endpoint must exit 2 quoting it, got {bad.returncode}: {bad.stderr}")
    print("PASS")


if __name__ == "__main__":
    main()
