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

# Installs the packages of the named purposes that are missing.
install_dependencies() {
    local purposes=" $* " package purpose
    local -a missing=() become_root=()
    while read -r package purpose; do
        if [[ $package != \#* && $purposes == *" $purpose "* ]] &&
            [[ $(dpkg-query -W -f='${db:Status-Status}' "$package" 2>/dev/null) != installed ]]; then
            missing+=("$package")
        fi
    done < <(grep -v '^$' dependencies)
    if ((${#missing[@]} == 0)); then
        echo "All packages for: $* are installed."
        return
    fi
    echo "Installing: ${missing[*]}"
    if ((EUID != 0)); then
        become_root=(sudo)
    fi
    attempt "${become_root[@]}" apt-get -q update
    attempt "${become_root[@]}" env DEBIAN_FRONTEND=noninteractive \
        apt-get -q install -y --no-install-recommends "${missing[@]}"
}

# Configures and builds the named targets of a preset; further words up to -- go to the configuration.
build() {
    local preset=$1
    shift
    local -a options=()
    while (($# > 0)) && [[ $1 != -- ]]; do
        options+=("$1")
        shift
    done
    shift
    echo "Configuring and building: ${*:-everything} ($preset)"
    attempt cmake --preset "$preset" "${options[@]}" --log-level=WARNING
    attempt cmake --build --preset "$preset" ${1:+--target "$@"}
}
