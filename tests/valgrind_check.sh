#!/usr/bin/env bash
# Runs the launcher under valgrind memcheck on a set of legacy lines: every error and every
# byte definitely, indirectly or possibly lost fails the check.
set -euo pipefail
bin=$1
tokens=()
for ((i = 0; i < 5000; i++)); do tokens+=(-F --local=/srv/repo); done

lines=(
  "compare -F -D -l /srv/repo -e 1,2 -i 3 -m 7X21 --xml -L"
  "update --noinventory --host=10.0.0.5 --update-args=--user=a,--password=b,--backup -m 7X21"
  "acquire -l /srv/repo -m 7X21 -o rhel8 --proxy-address=p --proxy-port=8 --proxy-user=u --proxy-password=s"
  "quenmark -s --vq-address=10.1.1.1 --vq-user=USERID --vq-password=PASSW0RD"
  "compare -x a b"
  "Update -F"
  "acquire --proxy-user=u"
  ""
)
run() {
  valgrind --quiet --leak-check=full --show-leak-kinds=definite,indirect,possible \
    --errors-for-leak-kinds=definite,indirect,possible --error-exitcode=99 \
    "$bin/tovak" "$@" >/dev/null
  local status=$?
  if [ "$status" -eq 99 ]; then
    echo "valgrind found errors for: tovak $*" | cut -c1-200
    exit 1
  fi
}
set +e
for line in "${lines[@]}"; do
  # shellcheck disable=SC2086 # the lines are split into arguments on purpose
  run $line
done
run compare "${tokens[@]}"
echo "valgrind: no errors and no leaks in $(( ${#lines[@]} + 1 )) runs (the last with ${#tokens[@]} tokens)"
