#!/usr/bin/env bash
# Four parallel chunks over HTTP and HTTPS in a network lab: Tolvo, a bare libcurl program and curl --parallel, in turns.
#   transfer_bench.sh NET-LAB-RUN TRANSFER-BENCH [ROUNDS [CHUNK-BYTES]]
set -eu
if [ -z "${NETLAB:-}" ]; then
    exec "$1" --trust-ca -- "$0" "$@"
fi
bench=$2 rounds=${3:-3} bytes=${4:-500000000}
head -c "$bytes" /dev/zero >"$NETLAB_LOGS/body"

# peer DIRECTION URL: the same with the command-line program.
peer() {
    local transfer=() arguments=()
    [ "$1" = down ] && transfer=("$2/__down?bytes=$bytes") || transfer=("$2/__up" --data-binary "@$NETLAB_LOGS/body" -H Expect:)
    for _ in 1 2 3 4; do
        arguments+=(--next --http1.1 -s -o /dev/null "${transfer[@]}")
    done
    local TIMEFORMAT='%R %U %S' times
    times=$({ time curl --parallel --parallel-immediate "${arguments[@]:1}" >/dev/null 2>&1; } 2>&1)
    awk -v bytes="$bytes" '{ printf "curl   MB=%.0f MB/s=%.1f cpu_s/GB=%.3f\n", 4*bytes/1e6, 4*bytes/1e6/$1, ($2+$3)/(4*bytes/1e9) }' <<<"$times"
}

for direction in down up; do
    for url in "$NETLAB_HTTP" "$NETLAB_HTTPS"; do
        echo "== $direction $url"
        for _ in $(seq "$rounds"); do
            "$bench" ours "$direction" "$url" "$bytes" 4
            "$bench" bare "$direction" "$url" "$bytes" 4
            peer "$direction" "$url"
        done
    done
done
