0sudo -u fw nice -n 10 tovak co -F >>"$LOG" 2>&1
case $1 in
  tovak) echo legacy ;;
esac
tovak co \
  -l /srv -F | grep "return code"
T=/usr/bin/tovak
$T qk -s
