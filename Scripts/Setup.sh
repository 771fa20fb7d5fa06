#!/usr/bin/env bash
# Copyright Orvane. All Rights Reserved.
#
# Installs, from Debian's packages, what building Orvane needs and this machine lacks.
set -euo pipefail

Packages=(g++ python3 cmake ninja-build ccache pkg-config libgtest-dev libgmock-dev libbenchmark-dev nlohmann-json3-dev clang-format clang libclang-rt-14-dev)

Missing=()
for Package in "${Packages[@]}"; do
	if ! dpkg-query -W -f='${Status}' "$Package" 2>/dev/null | grep -q "install ok installed"; then
		Missing+=("$Package")
	fi
done

if [ ${#Missing[@]} -eq 0 ]; then
	exit 0
fi

echo "Installing: ${Missing[*]}"
Sudo=""
if [ "$(id -u)" -ne 0 ]; then
	Sudo="sudo"
fi
export DEBIAN_FRONTEND=noninteractive
$Sudo apt-get update -qq
$Sudo apt-get install -y -qq --no-install-recommends "${Missing[@]}"
