# Sourced by run, test, bench.sh and .ci/run: the packages the project needs, and one way to build.

# Everything that the program, its tests and the scripts call, even if another package happens to bring it
# along today: scripts/minimal-root tries the list on a Debian with nothing else. xdg-mime cannot tell the
# type of a file without `file`, nor npm reach its registry without `ca-certificates`.
VELTRANE_PACKAGES=(
    git ca-certificates
    g++ cmake ninja-build ccache lld clang libclang-rt-14-dev clang-format clang-tidy
    qt6-base-dev qt6-base-dev-tools qt6-svg-dev libgl-dev libical-dev
    unixodbc unixodbc-dev odbcinst tdsodbc odbc-postgresql
    postgresql-15
    xvfb xauth openbox xdg-utils file breeze-icon-theme fonts-dejavu-core procps util-linux
)

# A desktop session has a folder for what lives as long as it does; without one the toolkit complains at every start.
if [ -z "${XDG_RUNTIME_DIR:-}" ]; then
    export XDG_RUNTIME_DIR=${TMPDIR:-/tmp}/runtime-$(id -un)
    mkdir -p -m 700 "$XDG_RUNTIME_DIR"
fi

# Installs what is missing, and says what.
install_packages()
{
    local missing=() package
    for package in "${VELTRANE_PACKAGES[@]}"; do
        [ "$(dpkg-query -W -f='${db:Status-Status}' "$package" 2>/dev/null)" = installed ] || missing+=("$package")
    done
    # The file engine is fetched by npm, which is needed only until the engine is in the cache.
    command -v npm > /dev/null || missing+=(npm)
    [ ${#missing[@]} -gt 0 ] || return 0

    local as_root=()
    if [ "$(id -u)" -ne 0 ]; then
        command -v sudo > /dev/null || {
            echo "These Debian packages are missing, and installing them needs root or sudo: ${missing[*]}" >&2
            return 1
        }
        as_root=(sudo)
    fi
    echo "Installing Debian packages: ${missing[*]}"
    "${as_root[@]}" apt-get update -qq &&
        "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive \
            apt-get install -y -qq --no-install-recommends "${missing[@]}" > /dev/null
}

# build PRESET [cmake --build arguments]
build()
{
    local preset=$1
    shift
    export CCACHE_BASEDIR=$PWD CCACHE_NOHASHDIR=1 CCACHE_SLOPPINESS=pch_defines,time_macros
    cmake --preset "$preset" > /dev/null && cmake --build --preset "$preset" "$@"
}
