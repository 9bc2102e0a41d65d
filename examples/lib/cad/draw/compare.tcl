# What a second revision takes away from a part and adds to it. Settings: first, first_faces, second, second_faces,
# deflection. Writes removed.stl and added.stl, each unless there is nothing.
source common.tcl
set progress 0
foreach shape {first second} {
    set file [setting $shape]
    step $progress [incr progress 15] "Reading $file"
    read_part $file $shape [setting ${shape}_faces]
    set diagonal [measure_box $file $shape]
    check $file $shape $diagonal
    if {[count $shape SOLID] == 0} { fail "$file holds no solid, so that it cannot be compared" }
}
# One intersection serves both differences.
step 30 80 "Intersecting"
bclearobjects
bcleartools
baddobjects first
baddtools second
attempt "the parts could not be intersected" bfillds
step 80 90 "Subtracting"
attempt "the parts could not be subtracted" "bbop removed 2"
attempt "the parts could not be subtracted" "bbop added 3"
foreach shape {first second removed added} { value volume_$shape [mass vprops $shape] }
step 90 100 "Meshing the differences"
foreach shape {removed added} {
    if {[count $shape FACE] == 0} { continue }
    measure_box "what was $shape" $shape
    mesh "what was $shape" $shape [expr {[setting deflection] * $diagonal}] 20
    attempt "what was $shape could not be written" "writestl $shape $shape.stl"
}
tell DONE ""
