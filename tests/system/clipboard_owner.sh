#!/usr/bin/env bash
# A program that owns the clipboard is killed; ours pastes nothing then and goes on. What ours has put
# there others can read as long as it runs.
#   clipboard_owner.sh WINDOW_SESSION
# 77 without Xvfb and xclip.
set -u
session=$1
for tool in Xvfb xclip; do
    command -v $tool >/dev/null || { echo "ÜBERSPRUNGEN: $tool fehlt" >&2; exit 77; }
done

top=$(mktemp -d) || exit 1
trap 'kill $server $owner $SESSION_PID 2>/dev/null; rm -rf "$top"' EXIT
owner= server= SESSION_PID=
mkfifo "$top/display"
Xvfb -displayfd 3 -screen 0 1400x1000x24 -nolisten tcp 3>"$top/display" 2>/dev/null &
server=$!
read -r number <"$top/display" || { echo "ÜBERSPRUNGEN: Xvfb startet nicht" >&2; exit 77; }
export DISPLAY=:$number QT_QPA_PLATFORM=xcb
mkdir "$top/home"
coproc SESSION { "$session" "$top/home" 2>/dev/null; }

# Runs a command of the session; its answer, up to the line that ends it.
say() {
    local line
    echo "$1" >&"${SESSION[1]}"
    while read -r line <&"${SESSION[0]}"; do
        [ "$line" = "done: $1" ] && return
        echo "$line"
    done
    echo "das Programm lebt nicht mehr"
}
own() {
    printf '%s' "$1" >"$top/text"
    xclip -selection clipboard -quiet -i "$top/text" 2>/dev/null &
    owner=$!
    until [ "$(timeout 20 xclip -selection clipboard -o 2>/dev/null)" = "$1" ]; do kill -0 $owner || exit 1; done
}
failures=0
expect() {
    [ "$2" = "$3" ] && echo "gut: $1" && return
    echo "FALSCH: $1: erwartet „$2“, gesehen „$3“" >&2
    failures=$((failures + 1))
}

own 'x^3'
expect "einfügen" "row: f(x) = x^3" "$(say paste; say tell)"
own 'x^5'
kill -9 $owner
expect "einfügen ohne Besitzer" "row:" "$(say paste; say tell)"
expect "es geht weiter" "row: f(x) = sin(x)" "$(say 'row sin(x)'; say tell)"
say 'menu mn_copytermo'
expect "die eigenen Terme" "f(x)=sin(x)" "$(timeout 20 xclip -selection clipboard -o | tr -d '\r' | head -1)"
say 'menu mn_copytoclip'
expect "das eigene Bild" PNG "$(timeout 20 xclip -selection clipboard -o -t image/png | head -c 4 | tail -c 3)"
expect "schließen" "" "$(say close)"
[ "$failures" = 0 ]
