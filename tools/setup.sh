# shellcheck shell=bash
# Set-up that ./run and ./test share; to be sourced in the project's root folder.

# Runs a command and says plainly which one failed if it does.
attempt() {
    "$@" || {
        local status=$?
        echo "This command failed with status $status: $*" >&2
        exit "$status"
    }
}

# Prints the packages of the named purposes that are not installed.
missing_packages() {
    local package purpose installed
    # shellcheck disable=SC2016 # the dollar is for dpkg-query
    installed=$(dpkg-query -W -f='${Package} ${db:Status-Status}\n')
    while read -r package purpose; do
        if [[ -n $package && $package != \#* && " $* " == *" $purpose "* ]] &&
            ! grep -qxF "$package installed" <<<"$installed"; then
            echo "$package"
        fi
    done <dependencies
}

# Installs the packages of the named purposes that are missing; without Debian's package manager it
# leaves that to the user.
install_dependencies() {
    local -a missing
    if ! command -v dpkg-query >/dev/null || ! command -v apt-get >/dev/null; then
        echo "No apt-get here: going on with what is installed (dependencies lists what it takes)."
        return
    fi
    read -r -a missing <<<"$(missing_packages "$@" | tr '\n' ' ')"
    if ((${#missing[@]} == 0)); then
        echo "All packages for: $* are installed."
        return
    fi
    echo "Installing: ${missing[*]}"
    local -a as_root=()
    if ((EUID != 0)); then
        as_root=(sudo)
        if ! command -v sudo >/dev/null; then
            echo "Only root may install, and there is no sudo. As root: apt-get install ${missing[*]}" >&2
            exit 1
        fi
    fi
    # Another installation may be running: a fresh desktop updates itself in the background.
    local -a apt_get=(apt-get -q -o DPkg::Lock::Timeout=300)
    attempt "${as_root[@]}" "${apt_get[@]}" update
    attempt "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive \
        "${apt_get[@]}" install -y --no-install-recommends "${missing[@]}"
}

# Configures and builds the named targets of a preset; further words up to -- go to the configuration.
build() {
    local preset=$1 folder=build cached
    shift
    local -a options=()
    while (($# > 0)) && [[ $1 != -- ]]; do
        options+=("$1")
        shift
    done
    shift
    [[ $preset == release ]] || folder=build-$preset
    # A build folder that was moved or copied along with the project is made anew.
    cached=$(sed -n 's/^CMAKE_HOME_DIRECTORY:INTERNAL=//p' "$folder/CMakeCache.txt" 2>/dev/null || true)
    if [[ -n $cached && ! $cached -ef . ]]; then
        rm -rf "$folder"
    fi
    echo "Configuring and building: ${*:-everything} ($preset)"
    attempt cmake --preset "$preset" "${options[@]}" --log-level=WARNING
    attempt cmake --build --preset "$preset" ${1:+--target "$@"}
}
