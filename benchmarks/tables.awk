# Prints tables from the results: for each contender (or unit) and number of samples the median over the rounds of the
# median frame, with half the distance of the rounds from each other in percent of it; then medians over the rounds of
# the ratios in a round, in which contenders run next to each other.
#
# Fields: table round work name samples size pen frames cpu-median cpu-min cpu-max wall-median held peak
BEGIN {
    FS = "\t"
    title["new"] = "New trace: all samples replaced, 800x480, pen 2"
    title["pan"] = "Pan: same data, visible range moved, full extent, 800x480, pen 2"
    title["thin"] = "New trace, their pens 1 pixel wide, ours 2"
    title["large"] = "New trace, 1920x1080, pen 2"
    title["window"] = "Pan of a window of 1 % of the data"
    title["first-pan"] = "The frame after new data that builds the pyramid"
    title["heat"] = "Heat map of 4096 x 512 cells"
    title["ten"] = "Ten traces, all new"
    title["idle"] = "A second in which nothing changes"
    title["units"] = "Numeric units"
    title["kit: new"] = "Trace of graph_kit beside GraphPlot: new trace, 800x480, pen 2"
    title["kit: pan"] = "Trace of graph_kit beside GraphPlot: pan"
    title["waterfall"] = "Waterfall of 2048 columns and 1000 rows, 1024x600: a new row"
    title["streams"] = "Live data, and a chain of computed traces, 1024x600"
    title["streams: memory"] = "Memory of live data"
    title["streams: dropped"] = "Live data that was pushed and dropped"
    unitOf["streams: memory"] = "bytes a sample"
    unitOf["streams: dropped"] = "samples"
}
{
    key = $1 SUBSEP $4 SUBSEP $5
    if (!($1 in tables)) {
        tables[$1] = 1
        order[++tableCount] = $1
    }
    if (!(($1, $4) in names)) {
        names[$1, $4] = 1
        nameOf[$1, ++nameCount[$1]] = $4
    }
    if (!(($1, $5) in sizes)) {
        sizes[$1, $5] = 1
        sizeOf[$1, ++sizeCount[$1]] = $5
    }
    value[key, ++count[key]] = $9
    ofRound[key, $2] = $9
    rounds = $2 > rounds ? $2 : rounds
    held[key, count[key]] = $13
    peak[key, count[key]] = $14
}

function sorted(array, key,    i, j, v, n) {
    n = count[key]
    for (i = 1; i <= n; i++) {
        v = array[key, i] + 0
        for (j = i - 1; j > 0 && list[j] > v; j--)
            list[j + 1] = list[j]
        list[j + 1] = v
    }
    return n
}

function median(array, key,    n) {
    n = sorted(array, key)
    return n % 2 ? list[(n + 1) / 2] : (list[n / 2] + list[n / 2 + 1]) / 2
}

function spread(key,    n, m) {
    m = median(value, key)
    n = count[key]
    return m > 0 ? 100 * (list[n] - list[1]) / m : 0
}

function number(v) {
    return v >= 100 ? sprintf("%.0f", v) : v >= 10 ? sprintf("%.1f", v) : v >= 0.1 ? sprintf("%.2f", v) : sprintf("%.4f", v)
}

function power(n,    e, m) {
    e = int(log(n) / log(10) + 1e-9)
    m = n / 10 ^ e
    return m == 1 && e > 2 ? "1e" e : n
}

function header(t, first,    i, line, rule) {
    line = "| " first " |"
    rule = "|---|"
    for (i = 1; i <= sizeCount[t]; i++) {
        line = line " " power(sizeOf[t, i]) " |"
        rule = rule "---|"
    }
    print line
    print rule
}

# The cost of the best of the other libraries in a round; 0 if none was measured.
function bestOther(t, size, round,    k, key, best) {
    for (k = 1; k <= nameCount[t]; k++) {
        key = t SUBSEP nameOf[t, k] SUBSEP size SUBSEP round
        if (nameOf[t, k] !~ /^(items|byhand|kit|floor|empty)$/ && key in ofRound && (!best || ofRound[key] < best))
            best = ofRound[key]
    }
    return best + 0
}

# One line of ratios: medians over the rounds of what was measured side by side.
function ratios(t, label, above, below, best,    i, r, n, a, b, line, any) {
    line = "| " label " |"
    for (i = 1; i <= sizeCount[t]; i++) {
        n = 0
        for (r = 1; r <= rounds; r++) {
            a = best ? bestOther(t, sizeOf[t, i], r) : ofRound[t, above, sizeOf[t, i], r]
            b = ofRound[t, below, sizeOf[t, i], r]
            if (a > 0 && b > 0)
                quotient["ratio", ++n] = a / b
        }
        count["ratio"] = n
        any = any || n
        line = line (n ? sprintf(" **%.2f** |", median(quotient, "ratio")) : " - |")
    }
    if (any)
        print line
}

END {
    for (t = 1; t <= tableCount; t++) {
        name = order[t]
        print ""
        print "### " (name in title ? title[name] : name ~ /^screen/ ? "Whole " name : "Line of samples, 1920x1080: " name)
        print ""
        header(name, name in unitOf ? unitOf[name] : unit)
        for (k = 1; k <= nameCount[name]; k++) {
            line = "| " nameOf[name, k] " |"
            for (i = 1; i <= sizeCount[name]; i++) {
                key = name SUBSEP nameOf[name, k] SUBSEP sizeOf[name, i]
                line = line (count[key] ? sprintf(" %s ±%.0f%% |", number(median(value, key)), spread(key) / 2) : " - |")
            }
            print line
        }
        ratios(name, "items over floor", "items", "floor", 0)
        ratios(name, "kit over items", "kit", "items", 0)
        ratios(name, "kit over byhand", "kit", "byhand", 0)
        ratios(name, "items over an empty window", "items", "empty", 0)
        ratios(name, "best of the others over items", "", "items", name != "units")
    }
    if ("pan" in tables) {
        print ""
        print "### Memory after a new trace and a pan, bytes a sample beyond the caller's array: held, at most"
        print ""
        header("pan", "")
        for (k = 1; k <= nameCount["pan"]; k++) {
            line = "| " nameOf["pan", k] " |"
            for (i = 1; i <= sizeCount["pan"]; i++) {
                key = "pan" SUBSEP nameOf["pan", k] SUBSEP sizeOf["pan", i]
                # Below that the window's own memory hides it.
                line = line (count[key] && sizeOf["pan", i] >= 1000000 ? sprintf(" %.2f, %.2f |", median(held, key), median(peak, key)) : " - |")
            }
            print line
        }
    }
}
