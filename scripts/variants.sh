#!/bin/bash
# Builds what no test builds: the libraries without the tool, as a device has them, everything by the debug preset, and
# the fuzz targets.
set -euo pipefail
. "$(dirname "$(realpath "$0")")/build.sh"

lock
need_packages "${test_packages[@]}" "${count_packages[@]}" "${fuzz_packages[@]}"
configure without_tool release OFF -DKCNVRT_TOOL=OFF -DKCNVRT_WERROR=ON
build without_tool all
configure debug debug ON -DKCNVRT_WERROR=ON -DKCNVRT_BENCH=ON
build debug all
build debug list_costs
configure fuzz fuzz OFF
build fuzz all
unlock
