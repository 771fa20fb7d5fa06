#!/usr/bin/env bash
# Copyright Orvane. All Rights Reserved.
#
# Configures and builds one preset (default: "default"; "asan" for the sanitizer build).
set -euo pipefail

Root="$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)"
Preset="${1:-default}"

"$Root/Scripts/Setup.sh"
cd "$Root"
cmake --preset "$Preset" >/dev/null
cmake --build --preset "$Preset"
