# The edges of a part in four views, hidden ones too. Settings: input, faces.
# Writes edges.txt, a line for each edge: view, "visible" or "hidden", and its points x y x y ...
source common.tcl
if {[catch {pload VISUALIZATION} why]} { fail "DRAWEXE lacks its command for hidden lines: $why" }
set input [setting input]
step 0 20 "Reading $input"
read_part $input part [setting faces]
check $input part [measure_box $input part]

# The projection looks down along z with x to the right: these angles around z, then around x, turn the part to it.
set views {top 0 0 front 0 -90 left 90 -90 aslant -45 -54.735610317245}
set points 48

proc write_edges {file view kind lines} {
    uplevel #0 "build3d $lines"
    foreach edge [uplevel #0 "explode $lines e"] {
        if {[catch {uplevel #0 "mkcurve curve $edge; bounds curve first last"}]} { continue }
        set line "$view $kind"
        for {set i 0} {$i <= $::points} {incr i} {
            append line " [point_of_curve [expr {$i / double($::points)}]]"
        }
        puts $file $line
    }
}
# The point that lies this part of the way along the curve.
proc point_of_curve {part} {
    uplevel #0 "dset at first+(last-first)*$part; cvalue curve at x y z"
    return [format "%.8g %.8g" [uplevel #0 {dval x}] [uplevel #0 {dval y}]]
}

set file [open edges.txt w]
set done 0
foreach {view around_z around_x} $views {
    step [expr {20 + 20 * $done}] [expr {40 + 20 * $done}] "Drawing $input, view $view"
    copy part turned
    trotate turned 0 0 0 0 0 1 $around_z
    trotate turned 0 0 0 1 0 0 $around_x
    attempt "the view $view of $input could not be drawn" "vcomputehlr turned drawn -algotype algo -showHiddenEdges on"
    lassign [explode drawn] visible hidden
    write_edges $file $view visible $visible
    write_edges $file $view hidden $hidden
    incr done
}
close $file
tell DONE ""
