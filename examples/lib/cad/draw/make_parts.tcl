# Models the CAD parts of the demo and of the tests, in mm. examples/inputs/make_parts.rb lists them.
source common.tcl

proc write_step {shape file name} {
    uplevel #0 "NewDocument W_$shape BinXCAF; XAddShape W_$shape $shape 0; SetName W_$shape 0:1:1:1 $name"
    attempt "$file could not be written" "WriteStep W_$shape $file"
}

# Takes a cylinder along z away from a shape.
proc drill {shape radius x y z depth} {
    uplevel #0 "pcylinder hole $radius $depth; ttranslate hole $x $y $z; bcut $shape $shape hole"
}

# The upright edges of a shape: those whose bounding box is a line along z.
proc upright_edges {shape} {
    set found {}
    foreach edge [uplevel #0 "explode $shape e"] {
        lassign [uplevel #0 "bounding $edge -optimal -noTriangulation"] x0 y0 z0 x1 y1 z1
        if {$x1 - $x0 < 0.01 && $y1 - $y0 < 0.01 && $z1 - $z0 > 1} { lappend found $edge }
    }
    return $found
}

step 0 20 "Making plain parts"
box cube 40 30 20
box bar 10 10 100
pcylinder cylinder 10 30
box plate 80 50 10
drill plate 10 40 25 -5 20
foreach {x y} {8 8 72 8 8 42 72 42} { drill plate 4 $x $y -5 20 }
explode plate so
copy plate_1 plate
# Its revision: a wider bore, and a pad on top
copy plate plate_b
drill plate_b 12 40 25 -5 20
box pad 15 15 10 10 10 5
bfuse plate_b plate_b pad
explode plate_b so
copy plate_b_1 plate_b
write_step plate_b plate_b.step plate_b
write_step cube box.step box
write_step bar bar.step bar
write_step cylinder cylinder.step cylinder
write_step plate plate.step plate
attempt "plate.iges could not be written" {brepiges plate plate.iges}
attempt "plate.brep could not be written" {save plate plate.brep}

# A foot with rounded corners and four holes, a barrel on a rib, a bore and holes for grease.
proc bearing_block {shape bore rib grease_holes} {
    uplevel #0 {box foot -60 -25 0 120 50 14}
    set rounding {blend foot foot}
    foreach edge [upright_edges foot] { append rounding " 10 $edge" }
    uplevel #0 $rounding
    uplevel #0 [string map [list BORE [expr {$bore / 2.0}] RIB $rib HALF [expr {$rib / 2.0}]] {
        pcylinder barrel 30 60; trotate barrel 0 0 0 1 0 0 90; ttranslate barrel 0 30 60
        polyline outline -52 -HALF 13  52 -HALF 13  24 -HALF 62  -24 -HALF 62  -52 -HALF 13
        mkplane wedge outline; prism wedge wedge 0 RIB 0
        box stem -22 -20 10 44 40 50
        bfuse body foot stem; bfuse body body wedge; bfuse body body barrel
        pcylinder hole BORE 80; trotate hole 0 0 0 1 0 0 90; ttranslate hole 0 40 60
        bcut body body hole
    }]
    foreach {x y} {-46 -13 -46 13 46 -13 46 13} { drill body 4.5 $x $y -10 40 }
    foreach y $grease_holes { drill body 3 0 $y 60 60 }
    uplevel #0 "explode body so; copy body_1 $shape" ;# out of the compound, which an assembly would take for a part
}

step 20 50 "Making a bearing block"
bearing_block block 36 10 0
step 50 80 "Making its revision"
bearing_block block_b 38 11 {0 15}
write_step block bearing_block.step bearing_block
write_step block_b bearing_block_b.step bearing_block_b
attempt "bearing_block.iges could not be written" {brepiges block bearing_block.iges}
attempt "bearing_block.brep could not be written" {save block bearing_block.brep}

step 80 90 "Making an assembly"
pcylinder shaft 17.9 260; trotate shaft 0 0 0 1 0 0 90; ttranslate shaft 0 30 60
pcylinder collar 26 12
pcylinder hole 18 40
bcut collar collar hole
explode collar so
copy collar_1 collar
trotate collar 0 0 0 1 0 0 90
foreach {copy original y z} {block_2 block -200 0 near collar -34 60 far collar -154 60} {
    copy $original $copy
    ttranslate $copy 0 $y $z
}
compound block block_2 shaft near far unit
NewDocument W_unit BinXCAF
XAddShape W_unit unit 1
foreach {shape name} {unit shaft_unit block bearing_block shaft shaft collar collar} {
    SetName W_unit [XFindShape W_unit $shape] $name
}
attempt "shaft_unit.step could not be written" {WriteStep W_unit shaft_unit.step}

step 90 100 "Making a cover that lacks a face"
box cover 80 60 20
explode cover f
sewing open 1e-4 cover_1 cover_2 cover_3 cover_4 cover_5
write_step open cover_unclosed.step cover_unclosed
tell DONE ""
