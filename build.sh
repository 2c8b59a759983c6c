#!/usr/bin/env bash
# One entry for everything: deps | demo | test | sanitize | tsan | bench | fuzz [SECONDS].
set -euo pipefail
cd "$(dirname "$0")"

PACKAGES=(build-essential cmake ninja-build pkg-config clang libclang-rt-14-dev zlib1g-dev
          libminizip-dev libexpat1-dev libgtest-dev libgmock-dev libbenchmark-dev
          nlohmann-json3-dev libcli11-dev libsndfile1-dev zip unzip binutils)
JOBS=$(nproc 2>/dev/null || echo 2)

say() { printf '%s\n' "$*" >&2; }

deps() {
    local missing=()
    for p in "${PACKAGES[@]}"; do
        dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed" ||
            missing+=("$p")
    done
    [ ${#missing[@]} -eq 0 ] && return 0
    say "installing: ${missing[*]}"
    local sudo=""
    [ "$(id -u)" -eq 0 ] || sudo="sudo"
    $sudo apt-get update -qq
    DEBIAN_FRONTEND=noninteractive $sudo apt-get install -y -qq "${missing[@]}" >/dev/null
}

# configure DIR [cmake options...]
configure() {
    local dir=$1
    shift
    cmake -S . -B "$dir" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo "$@" >/dev/null
}

build() {
    local dir=$1
    shift
    configure "$dir" "$@"
    cmake --build "$dir" -j "$JOBS"
}

run_tests() {
    ctest --test-dir "$1" --output-on-failure -j "$JOBS" --timeout 600
}

cmd=${1:-}
case "$cmd" in
deps)
    deps
    ;;
demo)
    deps
    build build
    demo_dir=build/demo
    rm -rf "$demo_dir"
    mkdir -p "$demo_dir"
    sample=build/examples/sample-project/sample.corvelle
    session=build/examples/session/session.json
    say "== the example session exported as a workstation exports it ($demo_dir/session.corvelle)"
    build/refhost/corvelle-host export "$session" "$demo_dir/session.corvelle" \
        --session-out "$demo_dir/session-after.json"
    build/tools/corvelle info "$demo_dir/session.corvelle"
    build/tools/corvelle check "$demo_dir/session.corvelle"
    say "== that package imported into a session whose project is empty ($demo_dir/imported.json)"
    cp build/examples/session/empty-session.json "$demo_dir/"
    build/refhost/corvelle-host import "$demo_dir/empty-session.json" "$demo_dir/session.corvelle" \
        --session-out "$demo_dir/imported.json"
    build/refhost/corvelle-host show "$demo_dir/imported.json"
    say "== the imported project exported again ($demo_dir/imported.corvelle)"
    build/refhost/corvelle-host export "$demo_dir/imported.json" "$demo_dir/imported.corvelle"
    build/tools/corvelle info "$demo_dir/imported.corvelle"
    say "== the module, loaded as a host loads it"
    build/refhost/corvelle-host plugin
    say "== the sample package ($sample)"
    build/tools/corvelle info "$sample"
    say "== the sample read and written again ($demo_dir/sample-repacked.corvelle)"
    build/tools/corvelle repack "$sample" "$demo_dir/sample-repacked.corvelle"
    build/tools/corvelle info "$demo_dir/sample-repacked.corvelle"
    say "== an example project built in code, written and read back ($demo_dir/example.corvelle)"
    build/tools/corvelle new "$demo_dir/example.corvelle"
    build/tools/corvelle info "$demo_dir/example.corvelle"
    ;;
test)
    deps
    build build
    run_tests build
    ;;
sanitize)
    deps
    build build-asan -DCORVELLE_SANITIZE=ON
    ASAN_OPTIONS=detect_leaks=1 UBSAN_OPTIONS=print_stacktrace=1 run_tests build-asan
    ;;
tsan)
    deps
    build build-tsan -DCORVELLE_TSAN=ON -DCMAKE_C_COMPILER=clang -DCMAKE_CXX_COMPILER=clang++
    run_tests build-tsan
    ;;
bench)
    deps
    build build-bench -DCORVELLE_BENCH=ON -DCORVELLE_TESTS=OFF -DCMAKE_BUILD_TYPE=Release
    for program in build-bench/bench/*_bench; do
        say "== ${program##*/}"
        "$program"
    done
    ;;
fuzz)
    deps
    seconds=${2:-60}
    build build-fuzz -DCORVELLE_FUZZ=ON -DCORVELLE_TESTS=OFF \
        -DCMAKE_C_COMPILER=clang -DCMAKE_CXX_COMPILER=clang++
    for fuzzer in build-fuzz/fuzz/*_fuzzer; do
        name=${fuzzer##*/}
        corpus=build-fuzz/corpus/$name
        mkdir -p "$corpus"
        seeds=()
        [ -d "build-fuzz/fuzz/seeds/$name" ] && seeds=("build-fuzz/fuzz/seeds/$name")
        say "== $name for ${seconds}s"
        dict=()
        [ -f "fuzz/$name.dict" ] && dict=(-dict="fuzz/$name.dict")
        "$fuzzer" "${dict[@]}" -max_total_time="$seconds" -print_final_stats=1 "$corpus" "${seeds[@]}" \
            2>"build-fuzz/$name.log" || { tail -n 40 "build-fuzz/$name.log" >&2; exit 1; }
        grep -E 'stat::number_of_executed_units|stat::peak_rss_mb' "build-fuzz/$name.log" >&2 || true
    done
    ;;
*)
    cat >&2 <<USAGE
usage: ./build.sh COMMAND
  deps       install the Debian packages that are missing (apt, idempotent)
  demo       build and run the main job on the embedded sample
  test       build and run every test
  sanitize   build with AddressSanitizer and UndefinedBehaviorSanitizer and run every test
  tsan       build with ThreadSanitizer and run every test
  bench      build the benchmark programs and run each (prints ratios against peers)
  fuzz [S]   build the libFuzzer targets (clang) and run each for S seconds (default 60)
USAGE
    [ -z "$cmd" ] || [ "$cmd" = "--help" ] || [ "$cmd" = "-h" ] || exit 1
    ;;
esac
