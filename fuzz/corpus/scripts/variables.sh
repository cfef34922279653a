H#!/bin/sh
. /etc/fw.conf
for h in $HOSTS; do
  tovak update -F -l "$REPO" --host=$h --update-args="--user=$U,--password=${P}" >>"$LOG"
done
tovak co -e "$X" -m ${M}x
