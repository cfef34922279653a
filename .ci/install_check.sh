#!/usr/bin/env bash
# Installs the build into a temporary prefix and uses it the way an adopter would: the
# installed tovak-translate, a one-file program through pkg-config, and the installed
# launcher with a stand-in Fendix copied beside it for the occasion.
set -euo pipefail
build=${1:-build}
prefix=$(mktemp -d)
work=$(mktemp -d)
trap 'rm -rf "$prefix" "$work"' EXIT

cmake --install "$build" --prefix "$prefix" >/dev/null
echo "installed into $prefix:"
(cd "$prefix" && find . -type f | sort | sed 's/^/  /')

if find "$prefix" -name Fendix | grep -q .; then
  echo "an installed file is named Fendix"; exit 1
fi
library=$(find "$prefix" -name libtovak.so)
readelf -d "$library" | grep -q 'Library soname: \[libtovak.so\]' || { echo "wrong soname"; exit 1; }
readelf -d "$library" | grep -q 'Library runpath: \[\$ORIGIN:\$ORIGIN/\.\./\.\.\]' \
  || { echo "wrong RUNPATH"; readelf -d "$library"; exit 1; }
echo "soname libtovak.so, RUNPATH \$ORIGIN:\$ORIGIN/../.."

line=(compare -F -l /srv/repo -L -m 7X21)
translated=$("$prefix/bin/tovak-translate" "${line[@]}" 2>/dev/null)
launched=$("$build/bin/tovak" "${line[@]}" | sed -n 's|^.*/\./Fendix |Fendix |p')
echo "tovak-translate: $translated"
[ "$translated" = "$launched" ] || { echo "build/bin/tovak ran: $launched"; exit 1; }

export PKG_CONFIG_PATH="$(dirname "$library")/pkgconfig"
# shellcheck disable=SC2046 # pkg-config's flags are meant to be split
c++ -std=c++17 -Wall -Wextra -Wpedantic -Werror examples/pkg-config/main.cpp \
  $(pkg-config --cflags --libs tovak) -Wl,-rpath,"$(dirname "$library")" -o "$work/derive"
"$work/derive"

cp "$build/bin/Fendix" "$prefix/bin/Fendix"
FENDIX_EXIT_CODE=3 "$prefix/bin/tovak" qk -s --vq-address=10.1.1.1 && status=0 || status=$?
rm "$prefix/bin/Fendix"
[ "$status" -eq 3 ] || { echo "installed tovak exited $status, not 3"; exit 1; }
echo "install check passed"
