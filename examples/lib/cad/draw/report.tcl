# Checks, measures and meshes a part. Settings: input, faces, deflection (relative to the diagonal), angle. Writes part.stl.
source common.tcl
set input [setting input]
step 0 40 "Reading $input"
read_part $input part [setting faces]

step 40 60 "Checking $input"
set diagonal [measure_box $input part]
check $input part $diagonal
foreach kind {SOLID SHELL FACE EDGE} { value $kind [count part $kind -t] }

step 60 70 "Measuring $input"
value area [mass sprops part]
set body part
if {[count part SOLID] == 0} {
    # Prints how many edges stay free
    puts [sewing sewn [expr {1e-6 * $diagonal}] part]
    set body sewn
}
value volume [mass vprops $body]
if {[regexp {X = *(\S+)\s+Y = *(\S+)\s+Z = *(\S+)} [vprops $body -full] all x y z]} { value center "$x $y $z" }

step 70 100 "Meshing $input"
mesh $input part [expr {[setting deflection] * $diagonal}] [setting angle]
attempt "the mesh of $input could not be written" "writestl part part.stl"
tell DONE ""
