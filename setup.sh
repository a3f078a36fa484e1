#!/usr/bin/env bash
# One-step set-up on Debian 12:
#   ./setup.sh start     install what is missing, build (Release) and start Quorvane
#   ./setup.sh test      install what is missing, build (Release) and run every test headless
#   ./setup.sh package   install what is missing, build the programs and the Debian package
#                        build/quorvane_<version>_<arch>.deb (apt install ./build/quorvane_*.deb)
set -euo pipefail
cd "$(dirname "$0")"

mode=${1:-start}
case "$mode" in
    start|test|package) ;;
    *) echo "usage: $0 start|test|package" >&2; exit 2 ;;
esac

packages=(
    g++ make cmake pkg-config
    qtbase5-dev libqt5svg5-dev libqt5webkit5-dev libqcustomplot-dev
    librapidxml-dev libboost-dev libboost-regex-dev
    libgtest-dev libgmock-dev libbenchmark-dev
    xvfb xauth fonts-dejavu-core xdotool
    # The package and the desktop files, and the tools their tests check them with.
    dpkg-dev desktop-file-utils appstream shared-mime-info lintian man-db x11-utils
)

missing=()
for package in "${packages[@]}"; do
    if ! dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q "install ok installed"; then
        missing+=("$package")
    fi
done
if [ ${#missing[@]} -gt 0 ]; then
    echo "Installing: ${missing[*]}"
    sudo=""
    if [ "$(id -u)" -ne 0 ]; then sudo="sudo"; fi
    $sudo apt-get update
    $sudo env DEBIAN_FRONTEND=noninteractive apt-get install -y --no-install-recommends "${missing[@]}"
fi

jobs=$(nproc 2>/dev/null || echo 2)
cmake -S . -B build -DCMAKE_BUILD_TYPE=Release -DQUORVANE_WERROR=ON

if [ "$mode" = package ]; then
    # Only what goes into the package; the tests and benchmarks are not needed for it.
    cmake --build build -j"$jobs" \
        --target quorvane quorvane-eval quorvane-eval-schemas quorvane_install_docs
    (cd build && cpack -G DEB)
    ls -1 build/quorvane_*.deb
    exit 0
fi

cmake --build build -j"$jobs"

if [ "$mode" = start ]; then
    exec ./build/quorvane "${@:2}"
fi

cd build
exec ctest --output-on-failure -j"$jobs"
