#!/usr/bin/env bash
# Installs the build into a temporary prefix and checks the files, the desktop entry, and that
# the program started from the read-only prefix seeds its per-user folder.
set -euo pipefail
build=$1
tmp=$(mktemp -d)
trap 'chmod -R u+w "$tmp"; rm -rf "$tmp"' EXIT
prefix=$tmp/prefix
cmake --install "$build" --prefix "$prefix" >/dev/null

for f in bin/ketrel bin/ketrel-export bin/ketrel-sim share/ketrel/System/LogRecords.db \
         share/ketrel/System/KetrelHistory.txt share/ketrel/Help/01_contents.html \
         share/applications/ketrel.desktop share/icons/hicolor/scalable/apps/ketrel.svg; do
    [ -e "$prefix/$f" ] || { echo "not installed: $f"; exit 1; }
done
desktop-file-validate "$prefix/share/applications/ketrel.desktop"

chmod -R a-w "$prefix"
export XDG_DATA_HOME=$tmp/data XDG_CONFIG_HOME=$tmp/config QT_QPA_PLATFORM=offscreen
out=$(timeout 30 "$prefix/bin/ketrel" --quit-after-start)
echo "$out"
# As root the prefix stays writable, so the folder chosen is checked, not a failed write.
[ "$out" = "Application folder: $XDG_DATA_HOME/Ketrel" ] || { echo "wrong folder"; exit 1; }
user=$XDG_DATA_HOME/Ketrel
for f in System/LogRecords.db System/Requirement.txt Help/01_contents.html; do
    cmp "$prefix/share/ketrel/$f" "$user/$f" || { echo "not seeded: $f"; exit 1; }
done
[ -d "$user/Log" ] || { echo "no Log folder"; exit 1; }
[ ! -e "$prefix/bin/System" ] || { echo "wrote into the prefix"; exit 1; }
# The tools share the folder: the catalogue is read from the seeded copy.
timeout 30 "$prefix/bin/ketrel-export" --list
echo "install check passed"
