#!/usr/bin/env bash
# Runs the launcher under valgrind memcheck on every line of the given case file (the part
# between ": " and " =>", split at blanks) and on one of 10,000 tokens: every error and every
# byte definitely, indirectly or possibly lost fails the check.
set -uo pipefail
bin=$1
tokens=()
for ((i = 0; i < 5000; i++)); do tokens+=(-F --local=/srv/repo); done
run() {
  valgrind --quiet --leak-check=full --show-leak-kinds=definite,indirect,possible \
    --errors-for-leak-kinds=definite,indirect,possible --error-exitcode=99 \
    "$bin/tovak" "$@" >/dev/null
  if [ $? -eq 99 ]; then echo "valgrind found errors for: tovak $*" | cut -c1-200; exit 1; fi
}
runs=0
while IFS= read -r line; do
  words=${line#*: }
  # shellcheck disable=SC2086 # split into arguments on purpose; quotes stay in the words
  run ${words%% =>*}
  runs=$((runs + 1))
done < <(grep -v '^#' "$2")
run compare "${tokens[@]}"
echo "valgrind: no errors and no leaks in $((runs + 1)) runs (the last with ${#tokens[@]} tokens)"
