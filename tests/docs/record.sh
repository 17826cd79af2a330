#!/bin/bash
# Runs a test and keeps what it prints: record.sh FILE COMMAND...
set -uo pipefail
mkdir -p "$(dirname "$1")"
"${@:2}" | tee "$1"
