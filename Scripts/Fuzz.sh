#!/usr/bin/env bash
# Copyright Orvane. All Rights Reserved.
#
# Builds the packet decoders' fuzz targets with clang (libFuzzer, AddressSanitizer, UndefinedBehaviorSanitizer)
# in build/fuzz and runs each for a while, seeded with the recorded tracking data. A target that finds a crash,
# a leak or a failed check leaves its reproducer in build/fuzz/FuzzFindings and makes the script fail.
#   Scripts/Fuzz.sh [seconds per target, default 20]
set -euo pipefail

Root="$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)"
Seconds="${1:-20}"
BuildDir="${ORVANE_FUZZ_BUILD_DIR:-$Root/build/fuzz}"
Targets=(OrvaneTrackingFreeDFuzz OrvaneTrackingOpenTrackIOFuzz)
Seeds="$Root/Resources/TestData/Tracking"

if ! [[ "$Seconds" =~ ^[0-9]+$ ]] || [ "$Seconds" -eq 0 ]; then
	echo "Fuzz.sh: the run time must be a whole number of seconds, not '$Seconds'." >&2
	exit 2
fi
if ! command -v clang >/dev/null 2>&1 || ! command -v clang++ >/dev/null 2>&1; then
	echo "Fuzz.sh: clang is not installed (Scripts/Setup.sh installs it); fuzzing skipped."
	exit 0
fi
Probe="$(mktemp -d)"
trap 'rm -rf "$Probe"' EXIT
printf 'extern "C" int LLVMFuzzerTestOneInput(const unsigned char*, unsigned long) { return 0; }\n' >"$Probe/Probe.cpp"
if ! clang++ -fsanitize=fuzzer "$Probe/Probe.cpp" -o "$Probe/Probe" >/dev/null 2>&1; then
	echo "Fuzz.sh: clang cannot link libFuzzer (package libclang-rt-14-dev); fuzzing skipped."
	exit 0
fi

# Everything built here is instrumented for libFuzzer's coverage and, through ORVANE_SANITIZE, for
# AddressSanitizer and UndefinedBehaviorSanitizer. clang 14 needs a stand-in for std::source_location.
CC=clang CXX=clang++ cmake -S "$Root" -B "$BuildDir" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo \
	-DORVANE_SANITIZE=ON -DORVANE_FUZZ=ON \
	-DCMAKE_CXX_FLAGS="-fsanitize=fuzzer-no-link -include $Root/Headless/Fuzz/SourceLocationFallback.h" >/dev/null
cmake --build "$BuildDir" --target "${Targets[@]}"

export ASAN_OPTIONS="detect_leaks=1:abort_on_error=1"
export UBSAN_OPTIONS="print_stacktrace=1:halt_on_error=1"
Findings="$BuildDir/FuzzFindings"
mkdir -p "$Findings"
Failed=0
for Target in "${Targets[@]}"; do
	Corpus="$BuildDir/FuzzCorpus/$Target"
	Log="$BuildDir/$Target.log"
	mkdir -p "$Corpus"
	# A single allocation over 64 MB, or 2 GB in all, counts as a failure: bad input must not make the
	# decoders allocate without bound.
	if "$BuildDir/Binaries/Linux/$Target" -max_total_time="$Seconds" -max_len=65507 -timeout=10 \
		-malloc_limit_mb=64 -rss_limit_mb=2048 -print_final_stats=1 -artifact_prefix="$Findings/$Target-" \
		"$Corpus" "$Seeds" >"$Log" 2>&1; then
		Status="passed"
	else
		Status="FAILED (see $Log)"
		Failed=1
	fi
	Runs="$(sed -n 's/^stat::number_of_executed_units: *//p' "$Log" | tail -n 1)"
	echo "$Target: ${Runs:-0} executions in ${Seconds} s, ${Status}"
done
exit "$Failed"
