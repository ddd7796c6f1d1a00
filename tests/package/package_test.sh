#!/usr/bin/env bash
# The Debian package built from this build folder: cpack makes it from what
# is built (nothing is rebuilt), dpkg -x unpacks it into a temporary root,
# and the installed programs run there against a fresh per-user folder.
#
#   package_test.sh <build folder>
set -euo pipefail
build=$(cd "$1" && pwd)
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
fail() { echo "FAILED: $*" >&2; exit 1; }
export ASAN_OPTIONS=detect_leaks=0

# 1. The package.
(cd "$work" && cpack --config "$build/CPackConfig.cmake" -B "$work/out" >"$work/cpack.log" 2>&1) ||
  { cat "$work/cpack.log"; fail "cpack"; }
deb=$(ls "$work"/out/*.deb)
[ "$(basename "$deb")" = mingjing_3.10_amd64.deb ] || fail "package name $(basename "$deb")"
info=$(dpkg-deb -f "$deb" Package Version Section Depends)
grep -q '^Package: mingjing$' <<<"$info" || fail "Package field: $info"
grep -q '^Version: 3.10$' <<<"$info" || fail "Version field: $info"
grep -q '^Section: education$' <<<"$info" || fail "Section field: $info"
grep -q 'libqt6core6' <<<"$info" || fail "Depends without Qt: $info"

# 2. Unpacked into a root of its own.
root="$work/root"
dpkg -x "$deb" "$root"
for f in usr/lib/mingjing/mingjing usr/lib/mingjing/mingjing-cli usr/lib/mingjing/lmdata; do
  [ -x "$root/$f" ] || fail "$f missing or not executable"
done
[ -f "$root/usr/lib/mingjing/mingjing.packaged" ] || fail "the marker of the installed folder"
[ "$(readlink "$root/usr/bin/mingjing")" = ../lib/mingjing/mingjing ] || fail "usr/bin/mingjing link"
[ "$(readlink "$root/usr/bin/mingjing-cli")" = ../lib/mingjing/mingjing-cli ] || fail "usr/bin/mingjing-cli link"
desktop="$root/usr/share/applications/mingjing.desktop"
grep -qx 'Name=明镜学习伴侣' "$desktop" || fail "desktop entry name"
grep -qx 'Exec=mingjing' "$desktop" || fail "desktop entry Exec"
grep -qx 'Icon=mingjing' "$desktop" || fail "desktop entry Icon"
grep -qx 'Categories=Education;' "$desktop" || fail "desktop entry category"
if command -v desktop-file-validate >/dev/null; then desktop-file-validate "$desktop" || fail "desktop-file-validate"; fi
for size in 32 48 64 128 256; do
  png="$root/usr/share/icons/hicolor/${size}x${size}/apps/mingjing.png"
  [ "$(head -c 8 "$png" | od -An -tx1 | tr -d ' \n')" = 89504e470d0a1a0a ] || fail "icon $size is no PNG"
done
for man in usr/share/man/zh_CN/man1/mingjing-cli.1.gz usr/share/man/man1/mingjing-cli.1.gz; do
  zcat "$root/$man" | grep -q '^\.SH 名称' || fail "manual page $man"
done
before=$(cd "$root" && find . | sort)

# 3. The installed command-line program on a fresh per-user folder: the
#    first use fills it from the data package.
export HOME="$work/home"
unset XDG_DATA_HOME
mkdir -p "$HOME"
out=$("$root/usr/bin/mingjing-cli" article 示例刑法 3) || fail "mingjing-cli article"
expected=$'《示例刑法》\n　　第三条　只有法律明文规定为犯罪的行为，才能依照法律定罪处刑；法律没有明文规定为犯罪的行为，不得定罪处刑。'
[ "$out" = "$expected" ] || fail "article printed: $out"
[ -d "$HOME/.local/share/mingjing/yibanti" ] || fail "the per-user folder was not filled"
# The help is read whole before it is searched: grep -q stops reading at the
# first match, and a help longer than one pipe write would end the program
# with SIGPIPE, which pipefail counts as a failure.
help=$("$root/usr/bin/mingjing-cli" --help) || fail "mingjing-cli --help ended with an error"
grep -q 'Usage: mingjing-cli COMMAND' <<<"$help" || fail "mingjing-cli --help"

# 4. The installed program, started offscreen on another fresh per-user
#    folder: it fills the folder, starts and keeps running until stopped.
rm -rf "$HOME"
mkdir -p "$HOME"
rc=0
QT_QPA_PLATFORM=offscreen timeout 15 "$root/usr/bin/mingjing" >"$work/program.log" 2>&1 || rc=$?
[ "$rc" = 124 ] || { cat "$work/program.log"; fail "the installed program ended with $rc instead of running"; }
[ -d "$HOME/.local/share/mingjing/yibanti" ] || fail "the program did not fill the per-user folder"
[ -f "$HOME/.local/share/mingjing/ini/userself.ini" ] || fail "the program did not start on the per-user folder"
grep -q 'AddressSanitizer\|runtime error' "$work/program.log" && { cat "$work/program.log"; fail "sanitizer report"; }

# 5. --folder names the folder instead: one the data package filled, and
#    the per-user folder stays untouched.
rm -rf "$HOME"
mkdir -p "$HOME"
other="$work/other"
"$root/usr/lib/mingjing/lmdata" --console "$other" >/dev/null || fail "lmdata --console $other"
rc=0
QT_QPA_PLATFORM=offscreen timeout 10 "$root/usr/bin/mingjing" --folder "$other" >"$work/program.log" 2>&1 || rc=$?
[ "$rc" = 124 ] || { cat "$work/program.log"; fail "the program on --folder ended with $rc instead of running"; }
[ -f "$other/ini/userself.ini" ] || fail "the program did not start on the folder of --folder"
[ ! -e "$HOME/.local/share/mingjing" ] || fail "the per-user folder was made although --folder was given"

# 6. Nothing was written into the installed folders.
after=$(cd "$root" && find . | sort)
[ "$before" = "$after" ] || fail "files appeared in the installed tree: $(diff <(echo "$before") <(echo "$after"))"
echo "package test passed: $(basename "$deb")"
