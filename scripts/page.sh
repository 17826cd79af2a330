#!/bin/bash
# The page that converts in a browser, one HTML file that loads nothing: build/page/k_cnvrt.html.
#   scripts/page.sh           builds it, where that is needed the module in it, too, and says where it lies
#   scripts/page.sh --test    and shows in a browser that it does what it should
set -euo pipefail
. "$(dirname "$(realpath "$0")")/build.sh"

"$root/scripts/wasm.sh"

page=$root/build/page
lock
quietly "$root/tests/conf/packages.sh" "$page/packages" "$root/page"
quietly node "$root/page/build.js" "$page/packages" "$root/build/wasm/package" "$page/k_cnvrt.html"
unlock
say "The page is $page/k_cnvrt.html, $(sha256sum "$page/k_cnvrt.html" | cut -d ' ' -f 1)"
[ "${1:-}" = --test ] || exit 0

echo "page k_cnvrt.html, bytes = $(stat -c %s "$page/k_cnvrt.html")" | check_limits page
need_packages "${page_test_packages[@]}"
quietly "$root/tests/conf/packages.sh" "$page/tools" "$root/tests/page"
exec "$root/tests/page/run.sh" "$page"
