# Meshes a part and writes it in other formats. Settings: input, faces, deflection (relative to the diagonal), angle,
# formats (separated by blanks). Writes made.<format>.
source common.tcl
set input [setting input]
step 0 40 "Reading $input"
read_part $input part [setting faces]
set diagonal [measure_box $input part]
check $input part $diagonal
step 40 80 "Meshing $input"
mesh $input part [expr {[setting deflection] * $diagonal}] [setting angle]
step 80 100 "Writing $input"
if {![isdraw D_part]} {
    NewDocument D_part BinXCAF
    XAddShape D_part part 1
}
array set writers {
    stl {writestl part made.stl} glb {WriteGltf D_part made.glb} obj {WriteObj D_part made.obj}
    wrl {WriteVrml D_part made.wrl} step {WriteStep D_part made.step} iges {WriteIges D_part made.iges}
    brep {save part made.brep}
}
foreach format [setting formats] { attempt "$input could not be written as $format" $writers($format) }
tell DONE ""
