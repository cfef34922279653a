# A script in legacy syntax: each launch is followed by "s", which logs its status.
tovak compare -F -l /srv/repo -L   # nightly
s
  tovak co -D -m 7X21 --xml>/dev/null 2>&1 && tovak up -F --noinventory; s
@BIN@/tovak acquire -l /srv/a -o rhel8 --meta-only -r --ignore-req; s
@LINK@/tovak ac -i 3,4 -m 7X21 --proxy-address=p --proxy-port=8 --proxy-user=u --proxy-password=w; s
tovak quenmark -s --vq-address=10.0.0.1 --vq-user=u --vq-password='p w'; s
tovak qk; s
env tovak update --host=10.1.1.1 --update-args=--user=admin,--password=pw,--backup; s
command tovak compare -e all -L; nice tovak compare -e 1,2 -i 3; s
A=1 B='x y' tovak compare -l "/srv/a b (old)" -f a -o b; s
if tovak update -s x -u; then echo yes >/dev/null; else s; fi; s
! tovak compare --vmware-esxi=6.7 -m '7X'"21"; s
{ tovak compare -l "a;b"; s; } 2>/dev/null
(tovak compare -l 'x|y' 2>/dev/null); s
tovak compare -l '#x' ; tovak compare -l 'a&&b'; s
y=1; tovak compare -l 'a $y' -F; tovak co -l '`echo 2`$y'; s
tovak compare -l 'a"b' -F; s
tovak compare -l 'a$b' -l2 -F 2>/dev/null; s
tovak compare -l a\ b -m \$x; s
tovak compare -l '*' -F; s
tovak compare -l '~' -F; s
tovak compare -l ' x ' -F; s
tovak compare -l "a	b"; s
tovak compare -l 'line
two'; s
tovak compare -l /srv/* -F; s
tovak compare -l ~/repo; s
tovak compare -l "$HOME" \
  -F; s
x=$(tovak compare -F) && echo "$x" >/dev/null; s
x=$( (:) ; tovak co -F ); s
tovak acquire --proxy-user=admin; s
tovak update -F --noinventory=1; s
cat <<-E >/dev/null; s
	tovak co -F
	E
tovak Compare -F; s
tovak compare -F </dev/null | cat >/dev/null; s
tovak compare -F 2>&1 | (cat >/dev/null; tovak compare -D >/dev/null); s
tovak compare -F <<EOT; s
tovak compare -D
EOT
cat <<'EOT' >>"$FENDIX_LOG"; s
tovak compare -F
EOT
echo tovak compare -F >>"$FENDIX_LOG"; echo "tovak compare -D" >>"$FENDIX_LOG"; s
sh -c 'tovak compare -F' 2>/dev/null; s
tovak >out.txt compare -D 2>/dev/null -F; cat out.txt >/dev/null; s
tovak co 3<>/dev/null 9>|/dev/null 0<&0 6>&1 7>> /dev/null -F 2>&1; s
tovak compare -F -D -f 1 -o 2 -e 3 -i 4 -m 7X21 --xml; s
tovak up --noinventory -l /srv/r -s x --vmware-esxi=6.7 --host=h --update-args=--user=u,--password=p; s
tovak acquire -i 1,2 -L -m 7X21 --proxy-address=px --no-proxy; s
tovak ac -L -o rhel8 --proxy-address='a b' --proxy-port=1; s
tovak qk --vq-address=10.0.0.2 --vq-user="u s"; s
nohup tovak compare -F -l '(x)' >/dev/null 2>&1; s
while tovak compare -F -i 5; do break; done; s
until tovak compare -F -l 'a  b'; do break; done; s
x=$(: # it's
); echo ')
tovak compare -F
' >>"$FENDIX_LOG"; s
if false; then :; elif tovak co -D; then tovak co -F; else tovak co -L; fi; s
for x in 1; do tovak co -i 2; done; _a=1 a1=2 tovak co -F; 1a=3 tovak co -D 2>/dev/null; s
sudo tovak co -F 2>/dev/null; (exec tovak co -F); time tovak co -D 2>/dev/null; cat <<<x; s
