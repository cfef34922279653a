#!/usr/bin/env bash
# Installs the build into a temporary prefix and uses it the way an adopter would: the
# installed tovak-translate, a one-file program through pkg-config, and the installed
# launcher with a stand-in Fendix copied beside it for the occasion.
#
# usage: install_check.sh [BUILD [PREFIX]]
# With PREFIX, the build was configured for that prefix (its directories may be absolute)
# and is installed where it was configured to go.
set -euo pipefail
build=${1:-build}
work=$(mktemp -d)
if [ $# -ge 2 ]; then
  prefix=$2
  trap 'rm -rf "$work"' EXIT
  cmake --install "$build" >/dev/null
else
  prefix=$(mktemp -d)
  trap 'rm -rf "$prefix" "$work"' EXIT
  cmake --install "$build" --prefix "$prefix" >/dev/null
fi
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

for page in tovak.1.gz; do
  gzip -t "$prefix/share/man/man1/$page" || { echo "no manual page $page"; exit 1; }
done
bash -n "$prefix/share/bash-completion/completions/tovak"
grep -q '^License: Expat$' "$prefix"/share/doc/*/copyright

# The example's own build line, with the run-time path its comment gives.
export PKG_CONFIG_PATH="$(dirname "$library")/pkgconfig"
[ "$(pkg-config --variable=libdir tovak)" -ef "$(dirname "$library")" ] \
  || { echo "tovak.pc: libdir $(pkg-config --variable=libdir tovak)"; exit 1; }
# shellcheck disable=SC2046 # pkg-config's flags are meant to be split
c++ -std=c++17 -Wall -Wextra -Wpedantic -Werror examples/pkg-config/main.cpp \
  $(pkg-config --cflags --libs tovak) -Wl,-rpath,"$(pkg-config --variable=libdir tovak)" \
  -o "$work/derive"
"$work/derive"

"$prefix/bin/tovak" --help | grep -q '^Usage: tovak'
cp "$build/bin/Fendix" "$prefix/bin/Fendix"
FENDIX_EXIT_CODE=3 "$prefix/bin/tovak" qk -s --vq-address=10.1.1.1 && status=0 || status=$?
rm "$prefix/bin/Fendix"
[ "$status" -eq 3 ] || { echo "installed tovak exited $status, not 3"; exit 1; }
echo "install check passed"
