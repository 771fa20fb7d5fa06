#!/usr/bin/env python3
# Copyright Orvane. All Rights Reserved.
"""Writes SampleSession.orvrec: five seconds of a two-camera tracking session, recorded at 50 Hz.

Camera 1 sends FreeD D1 datagrams while it dollies forward and pans across the set. Camera 2 sends
OpenTrackIO datagrams (JSON, every tenth one CBOR, with a static block about every two seconds) while
it cranes up and tilts down. The two streams interleave, 10 ms apart. The output is deterministic: the
same script always writes the same bytes.

    MakeSampleSession.py [--output FILE]   write the recording (default: next to this script)
    MakeSampleSession.py --check [FILE]    decode a recording and verify every datagram

The file format is described in docs/tracking-recording-format.md. Standard library only.
"""

import argparse
import json
import math
import struct
import sys
import uuid
from pathlib import Path

HEADER_LINE = "# orvane tracking recording 1"

RATE_HZ = 50
FRAME_COUNT = 250  # five seconds at 50 Hz
OPENTRACKIO_OFFSET_S = 0.010  # camera 2's samples fall between camera 1's
STATIC_EVERY_FRAMES = 100  # a static block about every two seconds
CBOR_EVERY = 10  # every tenth OpenTrackIO datagram is CBOR

FREED_CAMERA_ID = 1
FREED_LENGTH = 29
OPENTRACKIO_SOURCE_NUMBER = 2
OPENTRACKIO_HEADER_LENGTH = 16
ENCODING_JSON = 0x01
ENCODING_CBOR = 0x02

# Fixed identifiers so that every run writes the same file.
ID_NAMESPACE = uuid.UUID("6f1d3c52-8a4e-4b7f-9c21-5e0a7d9b3f10")
SOURCE_ID = "urn:uuid:" + str(uuid.uuid5(ID_NAMESPACE, "orvane-sample-camera-2"))


# --- Motion ---------------------------------------------------------------------------------------


def ease(t):
    """Smooth 0..1 ramp with zero speed at both ends."""
    t = min(max(t, 0.0), 1.0)
    return t * t * (3.0 - 2.0 * t)


def camera1_pose(frame):
    """Dolly 2 m forward while panning from -15 to +15 degrees; a slow focus pull."""
    s = ease(frame / (FRAME_COUNT - 1))
    return {
        "pan_deg": -15.0 + 30.0 * s,
        "tilt_deg": -2.5 + 0.5 * math.sin(2.0 * math.pi * frame / FRAME_COUNT),
        "roll_deg": 0.0,
        "x_mm": 250.0,
        "y_mm": -1000.0 + 2000.0 * s,
        "z_mm": 1500.0,
        "zoom_raw": 0x004000,
        "focus_raw": int(round(0x010000 + 0x020000 * s)),
    }


def camera2_pose(frame):
    """Crane up 1 m along a short truck while tilting down; the lens zooms in slightly."""
    s = ease(frame / (FRAME_COUNT - 1))
    return {
        "x_m": -1.5 + 0.5 * s,
        "y_m": 3.0,
        "z_m": 1.2 + 1.0 * s,
        "pan_deg": 180.0 - 10.0 * s,
        "tilt_deg": -5.0 - 15.0 * s,
        "roll_deg": 0.0,
        "focal_mm": 35.0 + 15.0 * s,
        "f_stop": 2.8,
        "focus_m": 4.0 - 1.0 * s,
    }


# --- FreeD D1 -------------------------------------------------------------------------------------


def int24(value):
    """Big-endian 24-bit two's complement of a signed value that must fit."""
    if not -(1 << 23) <= value < (1 << 23):
        raise ValueError(f"{value} does not fit in 24 signed bits")
    return (value & 0xFFFFFF).to_bytes(3, "big")


def uint24(value):
    if not 0 <= value < (1 << 24):
        raise ValueError(f"{value} does not fit in 24 unsigned bits")
    return value.to_bytes(3, "big")


def freed_checksum(first28):
    return (0x40 - sum(first28)) % 256


def make_freed(frame):
    pose = camera1_pose(frame)
    body = bytearray([0xD1, FREED_CAMERA_ID])
    for angle in (pose["pan_deg"], pose["tilt_deg"], pose["roll_deg"]):
        body += int24(int(round(angle * 32768.0)))
    for position in (pose["x_mm"], pose["y_mm"], pose["z_mm"]):
        body += int24(int(round(position * 64.0)))
    body += uint24(pose["zoom_raw"])
    body += uint24(pose["focus_raw"])
    body += b"\x00\x00"  # spare
    body.append(freed_checksum(body))
    assert len(body) == FREED_LENGTH
    return bytes(body)


# --- OpenTrackIO ----------------------------------------------------------------------------------


def timecode(frame):
    """01:00:00:00 at 50 frames per second, advancing one frame per sample."""
    seconds, frames = divmod(frame, RATE_HZ)
    minutes, seconds = divmod(seconds, 60)
    return {
        "hours": 1,
        "minutes": minutes,
        "seconds": seconds,
        "frames": frames,
        "frameRate": {"num": RATE_HZ, "denom": 1},
    }


def rounded(value, digits=6):
    return round(value, digits)


def make_sample(frame):
    pose = camera2_pose(frame)
    sample = {}
    if frame % STATIC_EVERY_FRAMES == 0:
        sample["static"] = {
            "camera": {
                "activeSensorPhysicalDimensions": {"height": 18.66, "width": 33.41},
                "make": "SampleCameraMaker",
                "model": "Model S35",
                "label": "B",
            },
            "lens": {"make": "SampleLensMaker", "model": "Zoom 25-75"},
        }
    sample["tracker"] = {"notes": "Orvane sample session", "recording": False, "status": "Optical Good"}
    sample["timing"] = {
        "mode": "external",
        "sampleRate": {"num": RATE_HZ, "denom": 1},
        "sequenceNumber": frame,
        "timecode": timecode(frame),
    }
    sample["lens"] = {
        "fStop": rounded(pose["f_stop"]),
        "pinholeFocalLength": rounded(pose["focal_mm"]),
        "focusDistance": rounded(pose["focus_m"]),
    }
    sample["protocol"] = {"name": "OpenTrackIO", "version": [1, 0, 1]}
    sample["sampleId"] = "urn:uuid:" + str(uuid.uuid5(ID_NAMESPACE, f"camera-2-sample-{frame}"))
    sample["sourceId"] = SOURCE_ID
    sample["sourceNumber"] = OPENTRACKIO_SOURCE_NUMBER
    sample["transforms"] = [
        {
            "translation": {"x": rounded(pose["x_m"]), "y": rounded(pose["y_m"]), "z": rounded(pose["z_m"])},
            "rotation": {
                "pan": rounded(pose["pan_deg"]),
                "tilt": rounded(pose["tilt_deg"]),
                "roll": rounded(pose["roll_deg"]),
            },
            "id": "Camera",
        }
    ]
    return sample


def cbor_encode(value):
    """CBOR of JSON-like data: maps keep their order, every float is a float64."""
    def head(major, argument):
        if argument < 24:
            return bytes([(major << 5) | argument])
        for size, code in ((1, 24), (2, 25), (4, 26), (8, 27)):
            if argument < (1 << (8 * size)):
                return bytes([(major << 5) | code]) + argument.to_bytes(size, "big")
        raise ValueError("argument too large for CBOR")

    if value is None:
        return b"\xf6"
    if value is False:
        return b"\xf4"
    if value is True:
        return b"\xf5"
    if isinstance(value, int):
        return head(0, value) if value >= 0 else head(1, -1 - value)
    if isinstance(value, float):
        return b"\xfb" + struct.pack(">d", value)
    if isinstance(value, str):
        encoded = value.encode("utf-8")
        return head(3, len(encoded)) + encoded
    if isinstance(value, (list, tuple)):
        return head(4, len(value)) + b"".join(cbor_encode(item) for item in value)
    if isinstance(value, dict):
        return head(5, len(value)) + b"".join(cbor_encode(k) + cbor_encode(v) for k, v in value.items())
    raise TypeError(f"cannot encode {type(value).__name__} as CBOR")


def cbor_decode(data):
    """Decodes what cbor_encode writes (definite lengths, float16/32/64, simple values)."""
    def read(offset):
        initial = data[offset]
        major, info = initial >> 5, initial & 0x1F
        offset += 1
        if major == 7:
            if info == 20:
                return False, offset
            if info == 21:
                return True, offset
            if info == 22:
                return None, offset
            for code, size, fmt in ((25, 2, ">e"), (26, 4, ">f"), (27, 8, ">d")):
                if info == code:
                    return struct.unpack(fmt, data[offset:offset + size])[0], offset + size
            raise ValueError(f"unsupported CBOR simple value {info} at byte {offset - 1}")
        if info < 24:
            argument = info
        elif info in (24, 25, 26, 27):
            size = 1 << (info - 24)
            argument = int.from_bytes(data[offset:offset + size], "big")
            offset += size
        else:
            raise ValueError(f"indefinite or reserved CBOR length at byte {offset - 1}")
        if major == 0:
            return argument, offset
        if major == 1:
            return -1 - argument, offset
        if major in (2, 3):
            chunk = data[offset:offset + argument]
            return (bytes(chunk) if major == 2 else chunk.decode("utf-8")), offset + argument
        if major == 4:
            items = []
            for _ in range(argument):
                item, offset = read(offset)
                items.append(item)
            return items, offset
        if major == 5:
            result = {}
            for _ in range(argument):
                key, offset = read(offset)
                result[key], offset = read(offset)
            return result, offset
        raise ValueError(f"unsupported CBOR major type {major}")

    value, end = read(0)
    if end != len(data):
        raise ValueError(f"{len(data) - end} bytes after the CBOR item")
    return value


def fletcher16_mod256(data):
    """The header checksum: Fletcher-16 with modulus 256, as (sum2 << 8) | sum1."""
    sum1 = sum2 = 0
    for byte in data:
        sum1 = (sum1 + byte) % 256
        sum2 = (sum2 + sum1) % 256
    return (sum2 << 8) | sum1


def make_opentrackio(sequence, encoding, payload):
    if len(payload) > 0x7FFF:
        raise ValueError("payload too long for one segment")
    first14 = b"OTrk" + bytes([0, encoding]) + struct.pack(">HIH", sequence & 0xFFFF, 0, 0x8000 | len(payload))
    return first14 + struct.pack(">H", fletcher16_mod256(first14 + payload)) + payload


def make_opentrackio_datagram(frame):
    sample = make_sample(frame)
    if frame % CBOR_EVERY == CBOR_EVERY - 1:
        return make_opentrackio(frame, ENCODING_CBOR, cbor_encode(sample))
    payload = json.dumps(sample, separators=(",", ":"), ensure_ascii=True).encode("ascii")
    return make_opentrackio(frame, ENCODING_JSON, payload)


# --- Recording file -------------------------------------------------------------------------------


def build_session():
    """(seconds, datagram) pairs in time order."""
    events = []
    for frame in range(FRAME_COUNT):
        events.append((frame / RATE_HZ, make_freed(frame)))
        events.append((frame / RATE_HZ + OPENTRACKIO_OFFSET_S, make_opentrackio_datagram(frame)))
    events.sort(key=lambda event: event[0])
    return events


def write_recording(path, events):
    lines = [
        HEADER_LINE,
        "# Orvane sample session, written by Samples/Tracking/MakeSampleSession.py; do not edit by hand.",
        f"# {FRAME_COUNT} FreeD D1 datagrams (camera {FREED_CAMERA_ID}) and {FRAME_COUNT} OpenTrackIO datagrams "
        f"(source number {OPENTRACKIO_SOURCE_NUMBER}) at {RATE_HZ} Hz each.",
    ]
    for seconds, datagram in events:
        lines.append(f"{seconds:.6f} {datagram.hex().upper()}")
    # Write-then-rename, so a failed run never leaves half a recording behind.
    temporary = path.with_name(path.name + ".tmp")
    temporary.write_text("\n".join(lines) + "\n", encoding="ascii", newline="\n")
    temporary.replace(path)


def read_recording(path):
    """(line number, seconds, datagram) for each datagram line; raises ValueError naming the line."""
    events = []
    with open(path, encoding="ascii") as stream:
        for number, line in enumerate(stream, start=1):
            line = line.rstrip("\r\n")
            if number == 1:
                if line != HEADER_LINE:
                    raise ValueError(f"{path}:1: the first line must be '{HEADER_LINE}'")
                continue
            if not line.strip() or line.startswith("#"):
                continue
            fields = line.split()
            if len(fields) != 2:
                raise ValueError(f"{path}:{number}: expected '<seconds> <hex bytes>'")
            seconds = float(fields[0])
            events.append((number, seconds, bytes.fromhex(fields[1])))
    return events


# --- Check ----------------------------------------------------------------------------------------


def check_freed(where, datagram, expected_frame):
    if len(datagram) != FREED_LENGTH:
        raise ValueError(f"{where}: FreeD datagram of {len(datagram)} bytes, expected {FREED_LENGTH}")
    if sum(datagram) % 256 != 0x40:
        raise ValueError(f"{where}: FreeD checksum does not hold (sum of bytes mod 256 is {sum(datagram) % 256:#x})")
    if datagram[1] != FREED_CAMERA_ID:
        raise ValueError(f"{where}: FreeD camera id {datagram[1]}, expected {FREED_CAMERA_ID}")

    def signed24(offset):
        value = int.from_bytes(datagram[offset:offset + 3], "big")
        return value - (1 << 24) if value & 0x800000 else value

    pose = camera1_pose(expected_frame)
    decoded = {
        "pan_deg": signed24(2) / 32768.0,
        "tilt_deg": signed24(5) / 32768.0,
        "roll_deg": signed24(8) / 32768.0,
        "x_mm": signed24(11) / 64.0,
        "y_mm": signed24(14) / 64.0,
        "z_mm": signed24(17) / 64.0,
    }
    for key, value in decoded.items():
        # One LSB of rounding at most.
        tolerance = 1.0 / 32768.0 if key.endswith("_deg") else 1.0 / 64.0
        if abs(value - pose[key]) > tolerance:
            raise ValueError(f"{where}: FreeD {key} decodes to {value}, expected {pose[key]}")


def check_opentrackio(where, datagram, expected_frame):
    if len(datagram) < OPENTRACKIO_HEADER_LENGTH or datagram[:4] != b"OTrk":
        raise ValueError(f"{where}: not an OpenTrackIO datagram")
    reserved, encoding = datagram[4], datagram[5]
    sequence, offset, flag_and_length, checksum = struct.unpack(">HIHH", datagram[6:16])
    payload = datagram[16:]
    if reserved != 0:
        raise ValueError(f"{where}: reserved byte is {reserved}")
    if sequence != expected_frame & 0xFFFF:
        raise ValueError(f"{where}: sequence {sequence}, expected {expected_frame}")
    if offset != 0 or not flag_and_length & 0x8000:
        raise ValueError(f"{where}: expected a single, last segment")
    if flag_and_length & 0x7FFF != len(payload):
        raise ValueError(f"{where}: header says {flag_and_length & 0x7FFF} payload bytes, datagram has {len(payload)}")
    if fletcher16_mod256(datagram[:14] + payload) != checksum:
        raise ValueError(f"{where}: checksum {checksum:#06x} does not match the header and payload")
    if encoding == ENCODING_JSON:
        sample = json.loads(payload.decode("ascii"))
    elif encoding == ENCODING_CBOR:
        sample = cbor_decode(payload)
    else:
        raise ValueError(f"{where}: encoding {encoding:#x}")
    if sample != make_sample(expected_frame):
        raise ValueError(f"{where}: the payload does not decode to the sample of frame {expected_frame}")
    if sample["protocol"] != {"name": "OpenTrackIO", "version": [1, 0, 1]}:
        raise ValueError(f"{where}: protocol {sample['protocol']}")
    if sample["sourceNumber"] != OPENTRACKIO_SOURCE_NUMBER or sample["timing"]["sequenceNumber"] != expected_frame:
        raise ValueError(f"{where}: source number or sequence number is wrong")
    return encoding, "static" in sample


def check_recording(path):
    events = read_recording(path)
    previous = -1.0
    freed_frames = opentrackio_frames = cbor_count = static_count = 0
    for number, seconds, datagram in events:
        where = f"{path}:{number}"
        if seconds < previous:
            raise ValueError(f"{where}: time {seconds} goes back from {previous}")
        previous = seconds
        if datagram[:1] == b"\xd1":
            check_freed(where, datagram, freed_frames)
            if abs(seconds - freed_frames / RATE_HZ) > 1e-6:
                raise ValueError(f"{where}: FreeD frame {freed_frames} at {seconds} s")
            freed_frames += 1
        else:
            encoding, has_static = check_opentrackio(where, datagram, opentrackio_frames)
            if abs(seconds - (opentrackio_frames / RATE_HZ + OPENTRACKIO_OFFSET_S)) > 1e-6:
                raise ValueError(f"{where}: OpenTrackIO frame {opentrackio_frames} at {seconds} s")
            cbor_count += encoding == ENCODING_CBOR
            static_count += has_static
            opentrackio_frames += 1
    expected_static = (FRAME_COUNT + STATIC_EVERY_FRAMES - 1) // STATIC_EVERY_FRAMES
    if (freed_frames, opentrackio_frames, cbor_count, static_count) != (
            FRAME_COUNT, FRAME_COUNT, FRAME_COUNT // CBOR_EVERY, expected_static):
        raise ValueError(
            f"{path}: {freed_frames} FreeD, {opentrackio_frames} OpenTrackIO ({cbor_count} CBOR, "
            f"{static_count} with static data); expected {FRAME_COUNT}, {FRAME_COUNT} "
            f"({FRAME_COUNT // CBOR_EVERY}, {expected_static})")
    total_bytes = sum(len(datagram) for _, _, datagram in events)
    print(f"{path}: OK: {len(events)} datagrams, {total_bytes} bytes, {previous:.3f} s; "
          f"{freed_frames} FreeD, {opentrackio_frames} OpenTrackIO ({cbor_count} CBOR, {static_count} with static data)")


def main():
    default_path = Path(__file__).resolve().with_name("SampleSession.orvrec")
    parser = argparse.ArgumentParser(description=__doc__.split("\n\n")[0])
    parser.add_argument("--check", nargs="?", const=str(default_path), metavar="FILE",
                        help="decode a recording and verify every datagram instead of writing one")
    parser.add_argument("--output", default=str(default_path), help="where to write the recording")
    args = parser.parse_args()
    try:
        if args.check:
            check_recording(Path(args.check))
        else:
            output = Path(args.output)
            write_recording(output, build_session())
            print(f"Wrote {output}")
    except (OSError, ValueError, UnicodeDecodeError) as error:
        print(f"MakeSampleSession: {error}", file=sys.stderr)
        return 1
    return 0


if __name__ == "__main__":
    sys.exit(main())
