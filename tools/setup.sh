# shellcheck shell=bash
# What ./run, ./test and tools/check_style share; to be sourced in the project's root folder.

readonly logs=build/log

# A build folder that was moved or copied along with the project is made anew.
for folder in build build-*; do
    configured=$(sed -n 's/^CMAKE_HOME_DIRECTORY:INTERNAL=//p' "$folder/CMakeCache.txt" 2>/dev/null || true)
    if [[ -n $configured && ! $configured -ef . ]]; then
        rm -rf "$folder"
    fi
done
mkdir -p "$logs"

# Copies stdin to a log. The newest count in it ("[12/159] ...", "3/27 Test ...", "Setting up ...")
# stays in sight: on a terminal in a line that is rewritten, elsewhere in a line now and then. With
# "rest", all other lines but those of tests that start or pass are shown as well.
follow() {
    local log=$1 rest=${2:-} line count total='' shown=$SECONDS
    local -A counts=()
    local of_build='^\[([0-9]+/[0-9]+)\]' of_tests='^ *([0-9]+/[0-9]+) Test.* Passed '
    while IFS= read -r line || [[ -n $line ]]; do
        printf '%s\n' "$line" >&3
        count=
        if [[ $line =~ $of_build || $line =~ $of_tests ]]; then
            count=${BASH_REMATCH[1]}
        elif [[ $line =~ ([0-9]+)" newly installed" ]]; then
            total=${BASH_REMATCH[1]}
        elif [[ -n $total && $line =~ ^(Get:|Unpacking|"Setting up") ]]; then
            count=${BASH_REMATCH[1]/Get:/Fetching}
            counts[$count]=$((${counts[$count]:-0} + 1))
            count="$count ${counts[$count]}/$total"
        elif [[ -n $rest && ! $line =~ ^" "+Start ]]; then
            printf '%s%s\n' "${clear_line}" "$line"
        fi
        if [[ -n $count && -n $clear_line ]]; then
            printf '%s  %s' "$clear_line" "$count"
        elif [[ -n $count ]] && ((SECONDS - shown >= 30)); then
            printf '  %s\n' "$count"
            shown=$SECONDS
        fi
    done 3>"$log"
    printf '%s' "$clear_line"
}
clear_line=
[[ -t 1 ]] && clear_line=$'\r\033[K'

# Runs one step with its output in a log; ends the script, with the end of the log, when it fails.
# usage: step LOG "What it does" COMMAND [ARGUMENT ...]
step() {
    local log=$logs/$1.log status=0
    echo "$2 (log: $log)"
    shift 2
    "$@" </dev/null 2>&1 | follow "$log" || status=$?
    if ((status != 0)); then
        printf '%s\n' '...' "$(tail -n 40 "$log")" "This failed with status $status: $*" >&2
        exit "$status"
    fi
}

# Runs the tests of a preset; what CTest says of those that fail, and its summary, is shown.
run_tests() {
    local log=$logs/test-$1.log status=0
    echo "Running the tests ($1): about a minute (log: $log)"
    # Those of the screens mostly wait for the display.
    ctest --preset "$1" --parallel $((2 * $(nproc))) </dev/null 2>&1 | follow "$log" rest || status=$?
    exit "$status"
}

# Prints the packages of the named purposes that are missing, with their alternatives, a line each.
missing_packages() {
    local line words package installed
    # shellcheck disable=SC2016 # the dollar is for dpkg-query
    installed=$(dpkg-query -W -f='${Package} ${db:Status-Status}\n')
    while read -r line; do
        read -r -a words <<<"${line//|/ }"
        if [[ -z $line || $line == \#* || " $* " != *" ${words[-1]} "* ]]; then
            continue
        fi
        unset 'words[-1]'
        for package in "${words[@]}"; do
            grep -qxF "$package installed" <<<"$installed" && continue 2
        done
        echo "${words[*]}"
    done <dependencies
}

# Prints the first of some packages that the release has.
first_available() {
    local package found
    for package in "$@"; do
        found=$(LC_ALL=C apt-cache policy "$package")
        [[ $found != *"Candidate: "[^\(]* ]] || break
    done
    echo "$package"
}

# Installs the packages of the named purposes that are missing; without Debian's package manager it
# leaves that to the user.
install_dependencies() {
    local -a missing=() packages=() as_root=() alternatives
    local entry
    if ! command -v dpkg-query >/dev/null || ! command -v apt-get >/dev/null; then
        echo "No apt-get here: going on with what is installed (dependencies lists what it takes)."
        return
    fi
    mapfile -t missing < <(missing_packages "$@")
    if ((${#missing[@]} == 0)); then
        return
    fi
    if ((EUID != 0)); then
        as_root=(sudo)
        if ! command -v sudo >/dev/null; then
            echo "Only root may install, and there is no sudo. As root: apt-get install ${missing[*]%% *}" >&2
            exit 1
        fi
        sudo --validate # asks for the password, if for any, before the output goes to a log
    fi
    # Another installation may be running: a fresh desktop updates itself in the background.
    local -a apt_get=(apt-get -q -o DPkg::Lock::Timeout=300)
    step packages-list "Reading the lists of packages: some seconds" \
        "${as_root[@]}" "${apt_get[@]}" update
    for entry in "${missing[@]}"; do
        read -r -a alternatives <<<"$entry"
        packages+=("$(first_available "${alternatives[@]}")")
    done
    step "packages-${!#}" "Installing ${packages[*]} and what they need: a minute or two" \
        "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive \
        "${apt_get[@]}" install -y --no-install-recommends "${packages[@]}"
}

# Configures a preset and builds targets of it.
# usage: build PRESET TIME [CMAKE_OPTION ...] -- [TARGET ...]
build() {
    local preset=$1 time=$2
    local -a options=()
    shift 2
    while [[ $1 != -- ]]; do
        options+=("$1")
        shift
    done
    shift
    step "configure-$preset" "Configuring ($preset): some seconds" cmake --preset "$preset" "${options[@]}"
    step "build-$preset" "Building ${*:-everything} ($preset): $time" \
        cmake --build --preset "$preset" ${1:+--target "$@"}
}
