#!/usr/bin/env bash
# Compares the dynamic symbols libtovak.so defines with the expected interface: nothing
# missing, nothing extra. Constructors and destructors appear once per emitted variant
# (complete, base, deleting); the comparison is on the set of distinct demangled names.
set -euo pipefail
library=$1
expected=$2
actual=$(nm -D --defined-only "$library" | awk '{print $3}' | c++filt | LC_ALL=C sort -u)
wanted=$(LC_ALL=C sort -u "$expected")
raw=$(nm -D --defined-only "$library" | wc -l)
if [ "$actual" != "$wanted" ]; then
  echo "exported symbols differ from $expected (< missing, > extra):"
  diff <(echo "$wanted") <(echo "$actual") || true
  exit 1
fi
echo "libtovak.so exports $(echo "$actual" | wc -l) distinct names ($raw symbols), as expected"
