#!/bin/sh
# Builds the benchmarks, runs them in rounds, one process per case and one case after the other, and prints the tables.
# The single results stay in build/benchmarks/results.tsv.
#   --quick        one round of short runs and fewer cases
#   --rounds N     3 unless told otherwise
#   --work "A B"   only these: screens opengl new pan window logarithmic first-pan large thin sparse heat ten idle units
#                  kit waterfall streams
#   --count        thousands of instructions instead of milliseconds, where the machine is busy: of whole screens and of
#                  logarithmic axes, with 1e3 and 1e5 samples
#   --tables       only the tables of the last run
set -eu
cd "$(dirname "$0")/.."
build=build/benchmarks
results=$build/results.tsv
rounds=3
seconds=0.7
quick=no
works="screens opengl new pan window logarithmic first-pan large thin sparse heat ten idle units kit waterfall streams"
tables_only=no
count=no
while [ $# -gt 0 ]; do
    case $1 in
    --quick) quick=yes rounds=1 seconds=0.2 ;;
    --rounds) rounds=$2; shift ;;
    --work) works=$2; shift ;;
    --count) count=yes rounds=1 seconds=0 works="screens logarithmic" ;;
    --tables) tables_only=yes ;;
    *) echo "Not understood: $1" >&2; exit 2 ;;
    esac
    shift
done

if [ $tables_only = no ]; then
    cmake -S . -B $build -G Ninja -DCMAKE_BUILD_TYPE=Release -DBUILD_TESTING=OFF -DGRAPH_BENCHMARKS=ON >/dev/null
    # The plugin itself is not needed: the benchmarks link its classes.
    cmake --build $build --target benchmarks
    : >$results
fi

contenders="floor items"
for peer in qcustomplot qwt qtcharts; do
    if [ -x $build/bin/benchmark_$peer ]; then
        contenders="$contenders $peer"
    else
        echo "Left out, because its Debian package is not installed: $peer"
    fi
done

# What a chart is not asked for: from there on a frame takes seconds.
too_many() {
    case $1 in
    qwt) [ "$2" -gt 1000000 ] ;;
    qtcharts) [ "$2" -gt 1000000 ] || { [ $quick = yes ] && [ "$2" -gt 100000 ]; } ;;
    *) false ;;
    esac
}

# What comes before the command: a display and OpenGL, for some.
prefix=

# measure ROUND TABLE CONTENDER SAMPLES ARGUMENTS...
measure() {
    round=$1 table=$2 contender=$3 samples=$4
    shift 4
    [ -x $build/bin/benchmark_"$contender" ] || return 0
    if too_many "$contender" "$samples"; then return 0; fi
    if [ $count = yes ]; then
        count_instructions "$@"
        return
    fi
    # shellcheck disable=SC2086
    if timeout 120 $prefix $build/bin/benchmark_"$contender" --samples "$samples" --seconds $seconds "$@" \
        >$build/line 2>$build/log; then
        sed "s/^/$table	$round	/" $build/line >>$results
    else
        echo "$contender, $samples samples, $*: failed" >&2
        cat $build/log >&2
    fi
}

# The instructions of the frames that would be timed, in the column of the medians.
count_instructions() {
    rm -f $build/counted*
    line=$(timeout 600 valgrind --tool=callgrind --instr-atstart=no --callgrind-out-file=$build/counted \
        $build/bin/benchmark_"$contender" --samples "$samples" --seconds 0 "$@" 2>$build/log) || {
        cat $build/log >&2
        return 0
    }
    sed -n 's/^totals: //p' $build/counted.1 | {
        read -r total
        echo "$line" | awk -v total="$total" -v table="$table" -v round="$round" -F '\t' \
            '{ OFS = FS; $7 = total / $6 / 1000; print table, round, $0 }' >>$results
    }
}

# The same with a display in memory, and OpenGL there.
measure_gl() {
    prefix="xvfb-run -a env QT_QPA_PLATFORM=xcb QT_QUICK_BACKEND= LIBGL_ALWAYS_SOFTWARE=1"
    measure "$@"
    prefix=
}

sizes="1000 10000 100000 1000000 10000000"
screen_sizes="800x480 1024x600 1920x1080"
screen_traces="1 4"
sparse_sizes="100 200 500 1000 1500 1900"
if [ $quick = yes ]; then
    sizes="1000 100000 1000000"
    screen_sizes=800x480
    screen_traces=4
    sparse_sizes="100 500 1900"
fi

if [ $count = yes ]; then
    sizes="1000 100000"
    screen_sizes=800x480
    screen_traces=4
fi

run_work() {
    round=$1 work=$2
    case $work in
    new | pan)
        for n in $sizes; do
            for c in $contenders; do measure "$round" "$work" "$c" "$n" --work "$work"; done
        done ;;
    screens)
        for size in $screen_sizes; do
            for traces in $screen_traces; do
                for change in new pan window cursor; do
                    for n in $sizes; do
                        for c in items byhand kit qcustomplot qwt qtcharts; do
                            measure "$round" "screen: $change, traces: $traces, $size" $c "$n" --work $change \
                                --traces "$traces" --size "$size"
                        done
                    done
                done
            done
        done ;;
    opengl)
        # Without a display of its own. The charts on widgets do not use OpenGL.
        command -v xvfb-run >/dev/null || { echo "Left out: no xvfb-run" >&2; return 0; }
        for change in new pan window cursor; do
            for n in 1000 100000; do
                table="screen on OpenGL: $change, traces: 4, 800x480"
                measure_gl "$round" "$table" items "$n" --work empty
                for c in items qtcharts; do
                    measure_gl "$round" "$table" $c "$n" --work $change --traces 4
                done
            done
        done ;;
    thin)
        for n in $sizes; do
            for c in items qcustomplot qwt; do
                pen=1
                [ $c != items ] || pen=2
                measure "$round" thin $c "$n" --work new --pen $pen
            done
        done ;;
    large)
        for n in $sizes; do
            for c in $contenders; do
                [ "$c" = qtcharts ] && [ "$n" -gt 100000 ] && continue
                measure "$round" large "$c" "$n" --work new --size 1920x1080
            done
        done ;;
    window | first-pan)
        for n in 1000000 10000000; do
            for c in floor items; do measure "$round" "$work" $c $n --work "$work"; done
        done ;;
    logarithmic)
        for change in new pan window; do
            for n in $sizes; do
                measure "$round" "linear axis: $change" items "$n" --work $change
                measure "$round" "logarithmic axis: $change" items "$n" --work $change --scale logarithmic
            done
        done ;;
    sparse)
        for pen in 2 8 16; do
            for n in $sparse_sizes 100000; do
                measure "$round" "sparse, pen $pen" items "$n" --work new --size 1920x1080 --pen $pen
            done
        done ;;
    heat)
        for c in floor items; do measure "$round" heat $c 2097152 --work heat; done ;;
    ten | idle)
        measure "$round" "$work" items 100000 --work "$work" ;;
    units)
        for n in $sizes; do measure "$round" units units "$n"; done ;;
    kit)
        for change in new pan; do
            for n in $sizes; do
                for c in items kit; do measure "$round" "kit: $change" $c "$n" --work $change; done
            done
        done ;;
    waterfall) measure "$round" waterfall kit 2048 --work waterfall --size 1024x600 ;;
    streams)
        # Each run is several works, and numbers that are no times.
        for n in $sizes; do
            [ "$n" -ge 100000 ] || continue
            measure "$round" streams streams "$n" --size 1024x600
            measure "$round" streams qcustomplot "$n" --work roll --size 1024x600
        done
        awk 'BEGIN { FS = OFS = "\t" } $1 == "streams" && $3 != "stream" { $1 = "streams: " $3 } { print }' $results >$results.sorted
        mv $results.sorted $results ;;
    *) echo "Not understood: $work" >&2; exit 2 ;;
    esac
}

if [ $tables_only = no ]; then
    load_before=$(cut -d ' ' -f 1-3 /proc/loadavg)
    round=1
    while [ $round -le "$rounds" ]; do
        for work in $works; do
            echo "round $round of $rounds: $work" >&2
            run_work "$round" "$work"
        done
        round=$((round + 1))
    done
    {
        grep -m 1 'model name' /proc/cpuinfo | sed 's/.*: //' || uname -m
        echo "$(nproc) cores, load before $load_before, after $(cut -d ' ' -f 1-3 /proc/loadavg); $rounds rounds, $(date -u +%Y-%m-%d)"
    } >$build/machine.txt
fi
cat $build/machine.txt
awk -v unit="$([ $count = yes ] && echo 'thousand instructions a frame' || echo 'ms a frame, processor')" \
    -f benchmarks/tables.awk $results
