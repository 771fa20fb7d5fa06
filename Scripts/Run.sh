#!/usr/bin/env bash
# Copyright Orvane. All Rights Reserved.
#
# Builds everything, then runs the main job: the complete setup in the headless editor on a throwaway copy
# of the sample project. Extra arguments go to `orvane editor --setup complete` (a later --setup wins).
set -euo pipefail

Root="$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)"

"$Root/Scripts/Build.sh" default
"$Root/build/default/Binaries/Linux/orvane" editor --setup complete "$@"
