#!/usr/bin/env bash
# check.sh [--fast] - installs the test tools that are missing, builds everything and runs all tests: optimised, and
# again under the sanitizers. --fast leaves out the long randomised tests and the sanitizers. Fails when any test fails.
set -euo pipefail
cd "$(dirname "$0")"

packages=(g++ make cmake perl libgtest-dev libbenchmark-dev libgif-dev libgd-dev imagemagick fonts-dejavu-core lighttpd ffmpeg python3 python3-pil)

install_missing()
{
    local missing=() package
    for package in "${packages[@]}"; do
        dpkg-query -W -f '${Status}' "$package" 2>/dev/null | grep -q 'ok installed' || missing+=("$package")
    done
    [ ${#missing[@]} = 0 ] && return
    if [ "$(id -u)" != 0 ]; then
        echo "Test tools are missing. Please run: sudo apt-get install -y ${missing[*]}" >&2
        exit 1
    fi
    apt-get update -qq
    DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
}

# Builds one preset and runs its tests; further arguments go to ctest.
check()
{
    local preset=$1
    shift
    echo "== $preset"
    cmake --preset "$preset" >/dev/null
    cmake --build --preset "$preset" -j "$(nproc)" -- --no-print-directory -s
    ctest --test-dir "build/$preset" -j "$(nproc)" --output-on-failure --no-tests=error "$@" | grep -Ev '^ *(Start|[0-9]+/[0-9]+ Test.* Passed)'
}

install_missing
if [ "${1:-}" = --fast ]; then
    check check -LE random
else
    check check
    check asan
fi
