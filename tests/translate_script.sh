# A script in legacy syntax: each launch is followed by "s", which logs its status.
tovak compare -F -l /srv/repo -L   # nightly
  tovak co -D -m 7X21 --xml>/dev/null 2>&1 && tovak up -F --noinventory; s
@BIN@/tovak acquire -l /srv/a -o rhel8 --meta-only -r --ignore-req; s
@LINK@/tovak ac -i 3,4 -m 7X21 --proxy-address=p --proxy-port=8 --proxy-user=u --proxy-password=w; s
tovak quenmark -s --vq-address=10.0.0.1 --vq-user=u --vq-password='p w'; s
env tovak update --host=10.1.1.1 --update-args=--user=admin,--password=pw,--backup; s
if tovak update -s x -u; then echo yes >/dev/null; else s; fi; s
while tovak compare -F -i 5; do break; done; s
until tovak compare -F -l 'a  b'; do break; done; s
if false; then :; elif tovak co -D; then tovak co -F; else tovak co -L; fi; s
tovak acquire --proxy-user=admin; s
y=1; tovak compare -l 'a $y' -F; tovak co -l '`echo 2`$y'; s
tovak compare -l 'a"b' -F; s
tovak compare -l 'line
two'; s
x=$( (:) ; tovak co -F ); s
cat <<-E >/dev/null; s
	tovak co -F
	E
cat <<'EOT' >>"$FENDIX_LOG"; s
tovak compare -F
EOT
tovak co 3<>/dev/null 9>|/dev/null 0<&0 6>&1 7>> /dev/null -F 2>&1; s
x=$(: # it's
); echo ')
tovak compare -F
' >>"$FENDIX_LOG"; s
for x in 1; do tovak co -i 2; done; _a=1 a1=2 tovak co -F; 1a=3 tovak co -D 2>/dev/null; s
sudo tovak co -F 2>/dev/null; (exec tovak co -F); time tovak co -D 2>/dev/null; cat <<<x; s
sudo -u fw nice -n 10 tovak co -F; timeout -s KILL 600 tovak co -D; env -i FENDIX_LOG="$FENDIX_LOG" tovak co -L; s
tovak co -F >>"$HOME/out" 2>&1 <"$FENDIX_LOG"; nohup ionice -c3 tovak qk -s 2>"$HOME/err"; s
tovak co \
    -F -l /srv \
    -L; stdbuf -oL setsid -w chrt -b 0 taskset -c 0 flock lock time -p tovak ac -r 2>/dev/null; s
$T co -F; "${T}" co -D; sudo -i tovak co -L; $NOTHING tovak co -F; f() { tovak co -L; }; f; sh -c 'tovak co -F'; s
case co in tovak) tovak co -F;; (co|x) tovak co -D;; esac; for x in tovak; do echo "$x" >>"$FENDIX_LOG"; done; s
tovak co -F >"$HOME/o"; grep -c 'return code' "$HOME/o" >>"$FENDIX_LOG"; s
tovak co -D | sed -n 's/.*fendx return code is: //p' >>"$FENDIX_LOG"; s
tovak up -F <<E; s
input
E
R=$(command -v tovak); "$R" co -D; run() { "$@"; }; run tovak co -F; echo 'tovak co -L' | sh; s
printf 'BMC_USER=admin\nBMC_PASS=pw\n' >"$HOME/creds"; . "$HOME/creds"; REPO=/srv/repo; for h in 10.0.0.1 10.0.0.2; do
  tovak update -F -l "$REPO" --host=$h --update-args="--user=$BMC_USER,--password=$BMC_PASS"; s; done
