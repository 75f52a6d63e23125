#!/usr/bin/env bash
# demo.sh [NAME] - installs what is missing, builds the release and draws the sample charts of demo/charts.txt (or the
# one called NAME) into demo/out/: each through the command line and through the posted form, which must agree.
set -euo pipefail
cd "$(dirname "$0")"

# What this script needs and how Debian calls it.
install_missing()
{
    command -v g++ >/dev/null && command -v cmake >/dev/null && command -v make >/dev/null && return
    if [ "$(id -u)" != 0 ]; then
        echo "A C++ compiler and CMake are missing. Please run: sudo apt-get install -y g++ make cmake" >&2
        exit 1
    fi
    apt-get update -qq
    DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends g++ make cmake >/dev/null
}

build()
{
    mkdir -p build
    cmake --preset release >build/demo.log 2>&1 && cmake --build --preset release -j "$(nproc)" >>build/demo.log 2>&1 && return
    cat build/demo.log >&2
    exit 1
}

# The package as an installation has it: report files and settings in the output directory, the scripts in cgi/.
lay_out_package()
{
    mkdir -p demo/out/gifs demo/out/set
    touch demo/out/gifs/old.gif # the first run would find nothing to remove, and rm would say so
    cp demo/reports/*.txt demo/reports/*.toc demo/out/
    cp demo/settings/*.set demo/out/set/
    export QUILLBROOK_HOME="$PWD/demo/" QUILLBROOK_OUT="$PWD/demo/out/" PERL_HOME=/usr/bin/perl
    export QBCHART="$PWD/build/release/qbchart"
}

# Runs a command with its output dropped, and prints how many milliseconds it took.
milliseconds()
{
    local start end
    start=$(date +%s%N)
    "$@" >/dev/null || { echo "failed: $*" >&2; return 1; }
    end=$(date +%s%N)
    printf '%d.%d' $(((end - start) / 1000000)) $(((end - start) / 100000 % 10))
}

post()
{
    REQUEST_METHOD=POST CONTENT_LENGTH=$(wc -c <"$1") demo/cgi/dispatch.cgi <"$1"
}

newest_gif()
{
    echo "demo/out/gifs/$(cat demo/out/gifs/0.ref)"
}

draw()
{
    local name=$1 nameBase=$2 what=$3 typed posted
    typed=$(milliseconds "$QBCHART" "$nameBase" "$name.set")
    cp "$(newest_gif)" "demo/out/$name.gif"
    posted=$(milliseconds post "demo/settings/$name.set")
    cmp -s "$(newest_gif)" "demo/out/$name.gif" || { echo "$name: the posted form draws another picture" >&2; exit 1; }
    printf '%-16s %-62s demo/out/%s.gif   %s ms, posted %s ms\n' "$name" "$what" "$name" "$typed" "$posted"
}

main()
{
    local only=${1:-} found=0 name nameBase what
    install_missing
    build
    lay_out_package
    while IFS=$'\t' read -r -u 3 name nameBase what; do
        [ "${name:0:1}" = "#" ] && continue
        [ -n "$only" ] && [ "$only" != "$name" ] && continue
        draw "$name" "$nameBase" "$what"
        found=1
    done 3<demo/charts.txt
    [ "$found" = 1 ] || { echo "no sample chart is called '$only'; see demo/charts.txt" >&2; exit 1; }
}

main "$@"
