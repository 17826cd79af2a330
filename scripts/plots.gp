# Draws what bench_processes printed: gnuplot -e "figures = 'FILE'; folder = 'FOLDER'" plots.gp
# Columns: bytes of the document, process, CPU ms, CPU time against Jansson's, the tool's against it, memory.

set terminal svg size 760,430 dynamic font "Helvetica,Arial,sans-serif,13" background "white" enhanced
set border 3 linecolor "#555555"
set tics nomirror textcolor "#333333"
unset key

ours_new = "#0b6e4f"
ours_old = "#3aa17e"
theirs = "#8a8f98"
jansson = "#c0563b"

# Cost against size.
set output folder."/cost-by-size.svg"
set title "CPU time of a whole process, by the size of the document\n".\
          "{/*0.85 (kcnvrt converts it; the others read it and write it as it is)}" textcolor "#111111"
set logscale xy
set xrange [60e3:24e6]
set yrange [1:400]
set xtics ("100 KB" 1e5, "300 KB" 3e5, "1 MB" 1e6, "3 MB" 3e6, "10 MB" 1e7)
set ytics ("1 ms" 1, "3 ms" 3, "10 ms" 10, "30 ms" 30, "100 ms" 100, "300 ms" 300)
set grid xtics ytics linecolor "#e4e6ea" linetype 1
set lmargin 8
set rmargin 3

last(name) = system(sprintf("awk '$2 == \"%s\" { ms = $3 } END { print ms }' '%s'", name, figures)) + 0
end(name) = system(sprintf("awk '$2 == \"%s\" { size = $1 } END { print size }' '%s'", name, figures)) + 0
has(name) = end(name) > 0
line(name) = name eq "to-new" ? "kcnvrt to-new" : name eq "to-old" ? "kcnvrt to-old" : name
color(name) = name eq "to-new" ? ours_new : name eq "to-old" ? ours_old : name eq "Jansson" ? jansson : theirs
# Lines that end close together have their names apart.
shift(name) = name eq "to-new" ? 1.14 : name eq "to-old" ? 0.84 : name eq "jq" ? 1.08 : name eq "Jansson" ? 1.06 : name eq "node" ? 0.98 : 1
names = "node python3 jq Jansson to-old to-new"
do for [name in names] {
    if (has(name)) {
        set label line(name) at end(name) * 1.09, last(name) * shift(name) textcolor rgb color(name)
    }
}
rows(name) = sprintf("< awk '$2 == \"%s\"' '%s'", name, figures)
set linetype 1 linecolor rgb color("node") linewidth 1.5 dashtype 4
set linetype 2 linecolor rgb color("python3") linewidth 1.5 dashtype 1
set linetype 3 linecolor rgb color("jq") linewidth 1.5 dashtype 2
set linetype 4 linecolor rgb color("Jansson") linewidth 1.5
set linetype 5 linecolor rgb color("to-old") linewidth 2.6
set linetype 6 linecolor rgb color("to-new") linewidth 2.6
plot for [i = 1:words(names)] rows(word(names, i)) using 1:3 with linespoints linetype i pointtype 7 pointsize 0.45

# The whole process at the middle size, against Jansson's own.
reset
set border 1 linecolor "#555555"
set tics nomirror textcolor "#333333"
unset key
set output folder."/whole-process.svg"
old_size = system(sprintf("awk '$2 == \"to-new\" { print $1 }' '%s' | sed -n 3p", figures)) + 0
new_size = system(sprintf("awk '$2 == \"to-old\" { print $1 }' '%s' | sed -n 3p", figures)) + 0
set title sprintf("CPU time of a whole process on the example grown to its tenfold (%.0f KB in the old layout,".\
                  " %.0f KB in the new),\n".\
                  "as a ratio to parsing and printing the same document with Jansson", old_size / 1e3, new_size / 1e3) \
    font ",12" textcolor "#111111"
unset ytics
set xtics scale 0
set xrange [-0.7:4.7]
ratio(size, name) = system(sprintf("awk '$1 == %d && $2 == \"%s\" { print $4 }' '%s'", size, name, figures)) + 0
others = "Jansson python3 jq node"
set xtics ("kcnvrt" 0)
do for [i = 1:words(others)] { set xtics add (word(others, i) i) }
most = 1
do for [name in others] { most = ratio(old_size, name) > most ? ratio(old_size, name) : most }
set yrange [0:most * 1.12]
set style fill solid 1 noborder
$bars << END
0 0
END
middle(i, side) = i + (side == 0 ? -0.2 : 0.2)
bar(i, side) = i == 0 ? (side == 0 ? ratio(old_size, "to-new") : ratio(new_size, "to-old")) \
                        : ratio(side == 0 ? old_size : new_size, word(others, i))
tint(i, side) = i == 0 ? (side == 0 ? ours_new : ours_old) : i == 1 ? (side == 0 ? jansson : "#d98c77") \
                       : (side == 0 ? theirs : "#b9bdc4")
object = 1
do for [i = 0:words(others)] {
    do for [side = 0:1] {
        height = bar(i, side)
        if (height > 0) {
            set object object rectangle from middle(i, side) - 0.19, 0 to middle(i, side) + 0.19, height \
                fillcolor rgb tint(i, side) fillstyle solid noborder
            set label sprintf("%.2f", height) at middle(i, side), height + most * 0.025 center \
                textcolor rgb "#333333" font ",11"
            object = object + 1
        }
    }
}
set label "left: the document in the old layout (kcnvrt to-new)     right: in the new layout (kcnvrt to-old)" \
    at graph 0.5, graph -0.13 center textcolor "#555555" font ",11"
set bmargin 4.5
plot $bars using 1:2 with points pointtype 0 linecolor rgb "white"
