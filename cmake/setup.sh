# Shared by the commands ./run, ./test and .ci/run; to be sourced from the project's folder.

# install_packages [LIST]: installs the packages of the list (cmake/debian-packages.txt) that are
# missing, and removes none. Asks nothing of apt when all are there.
install_packages() {
    local missing=() package
    while read -r package; do
        case $package in ''|'#'*) continue ;; esac
        dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q 'ok installed' \
            || missing+=("$package")
    done < "${1:-cmake/debian-packages.txt}"
    [ ${#missing[@]} -eq 0 ] && return 0

    local as_root=()
    if [ "$(id -u)" -ne 0 ]; then
        command -v sudo >/dev/null || {
            echo "These packages are missing, and neither root nor sudo is at hand:" \
                 "${missing[*]}" >&2
            return 1
        }
        as_root=(sudo)
    fi
    echo "Installing: ${missing[*]}"
    "${as_root[@]}" apt-get update -qq
    "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive \
        apt-get install -y -qq --no-install-recommends --no-remove "${missing[@]}"
}

# build_preset NAME [TARGET...]: configures and builds one of the presets of CMakePresets.json.
build_preset() {
    local preset=$1
    shift
    cmake --preset "$preset" >"build/$preset.log" 2>&1 || { cat "build/$preset.log" >&2; return 1; }
    cmake --build --preset "$preset" ${@:+--target "$@"}
}

# run_tests PRESET [CTEST ARGUMENT...]: a test counts as failed when it fails three times in a row. A
# few wait for other processes; a machine that stands still for seconds is told from a fault thus.
run_tests() {
    local preset=$1
    shift
    ctest --preset "$preset" -j "$(nproc)" --repeat until-pass:3 "$@"
}

mkdir -p build
