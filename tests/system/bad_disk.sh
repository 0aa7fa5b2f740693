#!/usr/bin/env bash
# Everything the program writes, onto a disk that is full and into folders without rights: it names
# the reason in German, ends in an orderly way, and every file is as it was.
#   bad_disk.sh full|rights KORVINTH WINDOW_SESSION
# 77 when this machine allows no such disk.
set -u
trouble=$1 korvinth=$(readlink -f "$2") session=$(readlink -f "$3")

skip() {
    echo "ÜBERSPRUNGEN ($trouble): $1" >&2
    exit 77
}

# Root may write everywhere and has to become somebody else; only he may mount without more ado.
if [ -z "${KORVINTH_INSIDE:-}" ]; then
    export KORVINTH_INSIDE=1
    if [ "$trouble" = rights ]; then
        [ "$(id -u)" = 0 ] || exec "$0" "$@"
        as_nobody=(setpriv --reuid=65534 --regid=65534 --clear-groups)
        "${as_nobody[@]}" test -x "$session" || skip "ein anderer Benutzer kann die Programme nicht starten"
        exec "${as_nobody[@]}" "$0" "$@"
    fi
    unshare --mount --map-root-user true 2>/dev/null || skip "kein eigener Namensraum"
    exec unshare --mount --map-root-user "$0" "$@"
fi

top=$(mktemp -d) || exit 1
disk=$top/disk
mkdir "$disk"
trap 'cd /; chmod -R u+w "$disk"; [ "$trouble" = rights ] || umount "$disk"; rm -rf "$top"' EXIT
if [ "$trouble" = full ]; then
    mount -t tmpfs -o size=512k korvinth "$disk" || skip "kein Dateisystem lässt sich einhängen"
    reason="Auf dem Datenträger ist kein Platz mehr"
else
    reason="Der Zugriff ist nicht erlaubt"
fi
cd "$disk" || exit 1
mkdir home all new
pictures="a.png a.svg a.pdf a.emf"
window_lines=()
for file in $pictures; do window_lines+=("export w$file"); done
window_lines+=("print druck.pdf" "save a.txt" "flush")

run_window() {
    printf '%s\n' "row $1" "${window_lines[@]}" "menu mn_emf" "menu mn_saveopt" close |
        (cd "$disk" && QT_LOGGING_RULES="*=false" "$session" "$disk/home")
}
draw() { "$korvinth" --zeichne "$1" --ausgabe "$2" 2>&1; }
draw_all() { "$korvinth" --sammlung "$top/all.txt" --alle --ausgabe all/ 2>&1; }
snapshot() { find . -type f ! -name filler -exec sha256sum {} + | sort -k2; }

failures=0
wrong() {
    echo "FALSCH: $*" >&2
    failures=$((failures + 1))
}
expect() {
    local name=$1 wanted=$2 seen=$3
    case $seen in
    *"$wanted"*) echo "gut: $name" ;;
    *) wrong "$name: erwartet „$wanted“, gesehen „$seen“" ;;
    esac
}

# The files of before; all of it has to succeed.
printf '[Funktionenplotter]\r\n{short:eins\r\nf(x)=x}\r\n{short:zwei\r\nf(x)=2*x}' >"$top/all.txt"
for file in $pictures; do draw 'x^2' "$file" || wrong "vorher $file"; done
draw_all || wrong "vorher --alle"
told=$(run_window 'x^2')
expect "vorher im Fenster" "done: close" "$told"
case $told in *"|"*) wrong "vorher schon eine Meldung: $told" ;; esac
snapshot >"$top/before"
[ "$(wc -l <"$top/before")" -ge 16 ] || wrong "zu wenige Dateien vorher: $(cat "$top/before")"

if [ "$trouble" = full ]; then
    dd if=/dev/zero of=filler bs=4k 2>/dev/null
else
    chmod a-w home all new .
fi

for file in $pictures new/neu.png; do
    told=$(draw 'sin(x)' "$file")
    expect "Exit-Status für $file" 1 $?
    expect "Meldung für $file" "$reason" "$told"
done
told=$(draw_all)
expect "Exit-Status für --alle" 1 $?
expect "Meldung für --alle" "zwei“: $reason" "$told"
if [ -c /dev/full ]; then
    told=$("$korvinth" --rechne 1+1 2>&1 >/dev/full)
    expect "Meldung der Ausgabe" "Die Ausgabe konnte nicht geschrieben werden" "$told"
fi

told=$(run_window 'sin(x)')
for line in "${window_lines[@]}"; do
    expect "Meldung für $line" "$reason" \
        "$(awk -v end="done: $line" '/^done: / && $0 != end { told = "" } $0 == end { print told; exit }
            !/^done: / { told = told $0 }' <<<"$told")"
done
expect "das Fenster läuft weiter" "done: close" "$told"

snapshot >"$top/after"
diff "$top/before" "$top/after" >&2 || wrong "die Dateien sind andere als vorher"
[ "$failures" = 0 ]
