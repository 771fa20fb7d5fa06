#!/usr/bin/env python3
# Copyright Orvane. All Rights Reserved.
"""End-to-end check of `orvane replay`.

Listens on a loopback UDP port, runs `orvane replay RECORDING 127.0.0.1:PORT --speed 20` and checks
that the datagrams that arrive are exactly the recording's, in number, order and bytes, and that the
summary line reports them. Then checks that --loop keeps sending past the end of the recording until
interrupted, and that bad input is refused with the documented exit codes.

    ReplayEndToEnd.py ORVANE RECORDING
"""

import os
import re
import signal
import socket
import subprocess
import sys
import tempfile
import time

HEADER_LINE = "# orvane tracking recording 1"


def read_recording(path):
    """The datagrams of a recording, read independently of the program under test."""
    datagrams = []
    with open(path, encoding="ascii") as stream:
        lines = stream.read().split("\n")
    if lines[0].rstrip("\r") != HEADER_LINE:
        raise SystemExit(f"{path}: not a tracking recording")
    for line in lines[1:]:
        fields = line.split()
        if not fields or fields[0].startswith("#"):
            continue
        datagrams.append(bytes.fromhex(fields[1]))
    return datagrams


def listen():
    receiver = socket.socket(socket.AF_INET, socket.SOCK_DGRAM)
    receiver.setsockopt(socket.SOL_SOCKET, socket.SO_RCVBUF, 8 << 20)
    receiver.bind(("127.0.0.1", 0))
    return receiver


def drain(receiver, deadline_s):
    """Everything that arrives until nothing has come for half a second, or the deadline."""
    received = []
    receiver.settimeout(0.5)
    end = time.monotonic() + deadline_s
    while time.monotonic() < end:
        try:
            received.append(receiver.recv(65536))
        except socket.timeout:
            break
    return received


def fail(message):
    print(f"FAIL: {message}")
    sys.exit(1)


def check_single_pass(orvane, recording, expected):
    receiver = listen()
    port = receiver.getsockname()[1]
    started = time.monotonic()
    result = subprocess.run([orvane, "replay", recording, f"127.0.0.1:{port}", "--speed", "20"],
                            capture_output=True, text=True, timeout=60)
    elapsed = time.monotonic() - started
    received = drain(receiver, 10.0)
    receiver.close()
    sys.stdout.write(result.stdout)
    sys.stderr.write(result.stderr)
    if result.returncode != 0:
        fail(f"orvane replay exited with {result.returncode}")
    if len(received) != len(expected):
        fail(f"received {len(received)} datagrams, the recording holds {len(expected)}")
    for index, (got, want) in enumerate(zip(received, expected)):
        if got != want:
            fail(f"datagram {index} differs: {len(got)} bytes received, {len(want)} recorded")
    total_bytes = sum(len(d) for d in expected)
    summary = re.search(r"Sent (\d+) datagrams \((\d+) bytes\) to 127\.0\.0\.1:(\d+) in ([0-9.]+) s", result.stdout)
    if not summary:
        fail("no summary line")
    if (int(summary.group(1)), int(summary.group(2)), int(summary.group(3))) != (len(expected), total_bytes, port):
        fail(f"summary says {summary.group(0)!r}; expected {len(expected)} datagrams, {total_bytes} bytes, port {port}")
    # At 20 times the recorded speed the 4.99 s sample takes about 0.25 s: the pacing must show in the
    # reported duration (a program that sent everything at once would report about 0 s).
    paced = float(summary.group(4))
    if paced < 0.2:
        fail(f"the replay took {paced} s; at --speed 20 the sample should take about 0.25 s")
    print(f"single pass: {len(received)} datagrams, {total_bytes} bytes, identical to the recording "
          f"(replay reported {paced:.3f} s, the process ran {elapsed:.2f} s)")


def check_loop(orvane, recording, expected):
    receiver = listen()
    port = receiver.getsockname()[1]
    process = subprocess.Popen([orvane, "replay", recording, f"127.0.0.1:{port}", "--speed", "20", "--loop"],
                               stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True)
    received = []
    receiver.settimeout(5.0)
    try:
        while len(received) < len(expected) + 50:
            received.append(receiver.recv(65536))
    except socket.timeout:
        process.kill()
        fail(f"--loop stopped after {len(received)} datagrams")
    process.send_signal(signal.SIGINT)
    stdout, stderr = process.communicate(timeout=10)
    receiver.close()
    sys.stdout.write(stdout)
    sys.stderr.write(stderr)
    if process.returncode != 0:
        fail(f"--loop interrupted with Ctrl-C exited with {process.returncode}")
    # The second pass starts over with the recording's first datagram.
    if received[len(expected)] != expected[0] or received[len(expected) + 1] != expected[1]:
        fail("the second pass does not start with the recording's first datagrams")
    if "(interrupted)" not in stdout or "full passes" not in stdout:
        fail("the --loop summary does not say it was interrupted")
    print(f"loop: {len(received)}+ datagrams received across the seam; stopped by Ctrl-C")


def check_refusals(orvane, recording):
    result = subprocess.run([orvane, "replay", recording, "127.0.0.1"], capture_output=True, text=True, timeout=30)
    if result.returncode != 2 or "'127.0.0.1' is not an endpoint" not in result.stderr:
        fail(f"a missing port gave exit {result.returncode}: {result.stderr.strip()}")
    with tempfile.TemporaryDirectory() as folder:
        broken = os.path.join(folder, "broken.orvrec")
        with open(broken, "w", encoding="ascii") as stream:
            stream.write(HEADER_LINE + "\n# comment\n0.0 D101\n0.02 D10\n")
        result = subprocess.run([orvane, "replay", broken, "127.0.0.1:9"], capture_output=True, text=True, timeout=30)
        if result.returncode != 1 or f"{broken}:4: the hex bytes have an odd number of digits (3)" not in result.stderr:
            fail(f"a malformed line gave exit {result.returncode}: {result.stderr.strip()}")
    print("refusals: invalid endpoint exits 2, malformed line exits 1 naming the line")


def main():
    if len(sys.argv) != 3:
        raise SystemExit(__doc__)
    orvane, recording = sys.argv[1], sys.argv[2]
    expected = read_recording(recording)
    check_single_pass(orvane, recording, expected)
    check_loop(orvane, recording, expected)
    check_refusals(orvane, recording)
    print("PASS")


if __name__ == "__main__":
    main()
