# The parts of an assembly. Settings: input, faces. Tells a ROW for each: how often it occurs, volume, area, size in x, y
# and z, name. A part is what has no components, and what occurs several times is modelled once.
source common.tcl
set input [setting input]
step 0 50 "Reading $input"
read_part $input whole [setting faces]
if {![isdraw D_whole]} { fail "$input holds no assembly" }

proc walk {label depth} {
    if {$depth > 100} { fail "$::input is nested too deep" }
    set components [uplevel #0 "XNbComponents D_whole $label"]
    if {![string is integer -strict $components] || $components == 0} {
        incr ::occurs($label)
        return
    }
    for {set i 1} {$i <= $components} {incr i} { walk [uplevel #0 "XGetReferredShape D_whole $label:$i"] [expr {$depth + 1}] }
}

array set occurs {}
foreach label [XGetFreeShapes D_whole] { walk $label 0 }
set done 0
foreach label [lsort -dictionary [array names occurs]] {
    step [expr {50 + 50 * $done / [array size occurs]}] [expr {50 + 50 * [incr done] / [array size occurs]}] "Measuring $input"
    XGetShape piece D_whole $label
    lassign [bounding piece -optimal] x0 y0 z0 x1 y1 z1
    set name $label
    catch { set name [GetName D_whole $label] }
    tell ROW [list $occurs($label) [mass vprops piece] [mass sprops piece] \
        [expr {$x1 - $x0}] [expr {$y1 - $y0}] [expr {$z1 - $z0}]]\ $name
}
tell DONE ""
