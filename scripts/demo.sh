#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# Builds corvane and takes the sample station through its work, step by step: look at it, check it
# against the schema, change it, bring a file into schema order, check the results, follow its
# inputs, rename an IED, pack a station and unpack it. Files written go to out/demo.
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/setup.sh
out=out/demo
mkdir -p "$out"
echo "Building ..."
if ! scripts/build.sh release corvane-cli EditStation >"$out/build.log" 2>&1; then
    cat "$out/build.log" >&2
    exit 1
fi

corvane=build/release/bin/corvane
station=samples/station.scd
schema=samples/SCL.xsd

steps=0
step() {
    steps=$((steps + 1))
    printf '\n%d. %s\n' "$steps" "$1"
}
# Shows a command, runs it, and shows what it prints, indented. Any failure ends the script.
run() {
    printf '   $ %s\n' "$*"
    "$@" | sed 's/^/   /'
}
# The same for a long answer, of which the last lines tell all.
run_and_show_last() {
    local lines=$1
    shift
    printf '   $ %s\n   ...\n' "$*"
    "$@" | tail -n "$lines" | sed 's/^/   /'
}
# The same for a command that must answer that the file falls short, with exit status 1.
run_falling_short() {
    local status=0
    run "$@" || status=$?
    [ "$status" -eq 1 ] || exit 1
}
outcome() { printf '   => %s\n' "$1"; }

step "What the station holds"
run "$corvane" info "$station"
outcome "read"

step "The process-bus side of one IED, three levels deep"
run "$corvane" tree --path 'IED[name=E01F1]/AccessPoint[name=G1]' --depth 3 "$station"
outcome "found"

step "Is it valid?"
run "$corvane" validate --schema "$schema" "$station"
outcome "valid"

step "Describe an IED through the library, and hear of each change"
run build/release/bin/EditStation "$schema" "$station" "$out/edited.scd"
outcome "$out/edited.scd written"

step "A file whose elements stand in the wrong order"
# Moves the Header, lines included, behind everything else.
awk '/<Header /, /<\/Header>/ { header = header $0 "\n"; next }
     /<\/SCL>/ { printf "%s", header }
     { print }' "$station" >"$out/disordered.scd"
run_falling_short "$corvane" validate --schema "$schema" "$out/disordered.scd"
outcome "not valid, as meant"

step "Written anew, in schema order"
run "$corvane" format --schema "$schema" --output "$out/formatted.scd" "$out/disordered.scd"
outcome "$out/formatted.scd written"

step "Are the results valid?"
run "$corvane" validate --schema "$schema" "$out/edited.scd" "$out/formatted.scd"
outcome "valid"

step "What one merging unit receives, by control block"
run "$corvane" subscriptions --ied E01U1 "$station"
outcome "found"

step "Is each input fed, and does it lead somewhere?"
run_and_show_last 4 "$corvane" resolve "$station"
outcome "all inputs resolve"

step "Do the multicast addresses clash?"
run_and_show_last 6 "$corvane" addresses "$station"
outcome "no"

step "A GOOSE that has lost its entry gets one"
sed 's/ldInst="RPIT" cbName="gocb1"/ldInst="RPIT" cbName="gone"/' "$station" >"$out/stale.scd"
run "$corvane" addresses --update --schema "$schema" "$out/stale.scd" -o "$out/updated.scd"
run_and_show_last 1 "$corvane" addresses "$out/updated.scd"
outcome "$out/updated.scd has addresses for all control blocks"

step "Who is wired to whom?"
run "$corvane" cables "$station" --svg "$out/cables.svg"
outcome "$out/cables.svg shows it"

step "Rename that merging unit, at every place that names it"
run_and_show_last 4 "$corvane" rename-ied "$station" E01U1 E01U9 --wide --schema "$schema" -o "$out/renamed.scd"
run "$corvane" validate --schema "$schema" "$out/renamed.scd"
run_and_show_last 1 "$corvane" resolve "$out/renamed.scd"
outcome "$out/renamed.scd is valid, and all inputs resolve"

step "Store the CRCs of the virtual terminals, and see whether they hold"
run "$corvane" crc --schema "$schema" --update --output "$out/coded.scd" "$station"
run "$corvane" crc --schema "$schema" "$out/coded.scd"
outcome "all stored codes hold"

step "An address changes: which CRCs, and why?"
sed 's/>01-0C-CD-01-01-11</>01-0C-CD-01-01-19</' "$out/coded.scd" >"$out/recoded.scd"
run_falling_short "$corvane" crc-diff --schema "$schema" "$out/coded.scd" "$out/recoded.scd"
outcome "those of the sender and its receiver"

step "Through the binary image and back"
mkdir -p "$out/unpacked"
run "$corvane" pack "$out/formatted.scd" -o "$out/formatted.image"
run "$corvane" unpack "$out/formatted.image" --schema "$schema" -o "$out/unpacked/formatted.scd"
run cmp "$out/formatted.scd" "$out/unpacked/formatted.scd"
outcome "not a byte is lost"

printf '\nAll %d steps went well.\n' "$steps"
