#!/bin/bash
# Usage: debian_changelog.sh SECONDS
# Prints debian/changelog, which is made since the version stands elsewhere, with a date in seconds since 1970.
set -euo pipefail
root=$(dirname "$(dirname "$(realpath "$0")")")
version=$("$root/scripts/version.sh")

cat << END
k-cnvrt ($version) unstable; urgency=medium

  * Version $version; CHANGELOG.md lists what is new.

 -- $(sed -n 's/^Maintainer: //p' "$root/debian/control")  $(LC_ALL=C date --utc --rfc-email --date="@$1")
END
