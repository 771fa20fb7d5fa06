#!/usr/bin/env bash
# Copyright Orvane. All Rights Reserved.
#
# Builds one preset (default: "default"; "asan" for the sanitizer build) and runs every test: the
# GoogleTest suites through CTest, then the automation tests through `orvane test`.
set -euo pipefail

Root="$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)"
Preset="${1:-default}"
Jobs="$(nproc)"

"$Root/Scripts/Build.sh" "$Preset"
cd "$Root"
if [ "$Preset" = "asan" ]; then
	export ASAN_OPTIONS="detect_leaks=1:abort_on_error=1"
	export UBSAN_OPTIONS="print_stacktrace=1:halt_on_error=1"
fi
ctest --preset "$Preset" --parallel "$Jobs" --exclude-regex '^AutomationTests$'
"$Root/build/$Preset/Binaries/Linux/orvane" test --junit "$Root/build/$Preset/automation-results.xml"
