# Sourced by ./run and ./test: Debian packages, configuration, build. Everything it says goes to
# stderr, so that stdout stays the program's own.

# require_packages NAME...: installs the missing ones through apt-get, or names them and stops.
require_packages()
{
    command -v dpkg-query > /dev/null || return 0  # not Debian: CMake tells what is missing
    local name status missing=()
    local -A installed=()
    while read -r name status; do
        [ "$status" = installed ] && installed[$name]=1
    done < <(dpkg-query -W -f '${Package} ${db:Status-Status}\n' "$@" 2> /dev/null)
    for name in "$@"; do
        [ "${installed[$name]:-}" ] || missing+=("$name")
    done
    [ "${#missing[@]}" -eq 0 ] && return 0

    echo "Korvinth braucht noch: ${missing[*]}" >&2
    local as_root=()
    if [ "$(id -u)" -ne 0 ]; then
        as_root=(sudo)
        [ -t 0 ] || as_root+=(-n)  # nobody there to type a password
    fi
    if { [ "${#as_root[@]}" -eq 0 ] || command -v sudo > /dev/null; } \
        && "${as_root[@]}" apt-get update -q >&2 \
        && "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive \
            apt-get install -q -y --no-install-recommends "${missing[@]}" >&2; then
        return 0
    fi
    echo "Die Pakete konnten nicht installiert werden. Bitte als Verwalter ausführen:" >&2
    echo "  apt-get install --no-install-recommends ${missing[*]}" >&2
    exit 1
}

# quietly NOTE COMMAND...: shows the note, and the command's output only when it fails. On a terminal
# the command may show its progress.
quietly()
{
    local note=$1 log
    shift
    echo "$note" >&2
    if [ -t 2 ]; then
        "$@" >&2 && return 0
    else
        log=$("$@" 2>&1) && return 0
        printf '%s\n' "$log" >&2
    fi
    echo "Das ist fehlgeschlagen: $*" >&2
    exit 1
}

# build PRESET TESTS TARGET: brings a target of build/PRESET up to date. TESTS is ON or OFF; a build
# folder that has the tests keeps them.
build()
{
    local preset=$1 tests=$2 target=$3 folder=build/$1
    mkdir -p "$folder"
    exec 9> "$folder/lock"
    flock 9  # two starts at once build one after the other
    if [ ! -e "$folder/build.ninja" ] \
        || { [ "$tests" = ON ] && ! grep -qx 'KORVINTH_TESTS:BOOL=ON' "$folder/CMakeCache.txt"; }; then
        quietly "Korvinth wird eingerichtet ..." \
            cmake --preset "$preset" -DKORVINTH_TESTS="$tests"
    fi
    if [ "$(ninja -C "$folder" --quiet -n "$target" 2>&1 | tail -n 1)" != "ninja: no work to do." ]; then
        quietly "Korvinth wird übersetzt ..." cmake --build "$folder" --target "$target"
    fi
    exec 9>&-
}
