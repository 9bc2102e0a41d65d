# What the scripts for DRAWEXE share; lib/cad/draw.rb hears what they tell.
# DRAWEXE's variables live in the scope that makes them, so that shapes are made at the outermost level.

proc setting {name} { return [dgetenv SETTING_[string toupper $name]] }
proc tell {kind text} {
    puts "[setting token] $kind [string map {\n { } \r { }} $text]"
    flush stdout
}
proc step {from to text} { tell STEP "$from $to $text" }
proc value {name what} { tell VALUE "$name $what" }
proc fail {text} {
    tell ERROR $text
    exit 1
}
proc attempt {text command} {
    if {[catch {uplevel #0 $command} answer]} { fail "$text: [string trim $answer]" }
    return $answer
}

if {[catch {pload MODELING DATAEXCHANGE OCAF} why]} { fail "DRAWEXE lacks its commands: $why" }
XProgress +c
regexp {Open CASCADE Technology (\S+)} [dversion] all version
value version $version

# How many faces, solids ... a shape has; one that occurs several times counts once, with -t each time.
proc count {shape kind {option ""}} {
    if {![regexp "$kind +: (\\d+)" [uplevel #0 "nbshapes $shape $option"] all number]} { return 0 }
    return $number
}

# The shape of a file, of which `faces` faces are expected.
proc read_part {file shape faces} {
    switch -- [file extension $file] {
        .step - .stp { attempt "$file is no readable STEP file" "ReadStep D_$shape $file" }
        .iges - .igs { attempt "$file is no readable IGES file" "ReadIges D_$shape $file" }
        default { attempt "$file is no readable BREP file" "restore $file $shape" }
    }
    if {[uplevel #0 "isdraw D_$shape"]} { attempt "$file holds no shape" "XGetOneShape $shape D_$shape" }
    if {![string match "*a shape*" [uplevel #0 "whatis $shape"]]} { fail "$file holds no shape" }
    set read [count $shape FACE]
    if {$read == 0} { fail "$file holds no faces that can be read" }
    value read_faces_$shape $read
    if {$read < $faces} { fail "$file is damaged: only $read of its $faces faces could be read" }
}

# The length of the bounding box's diagonal; tells the box as a value.
proc measure_box {file shape} {
    set box [uplevel #0 "bounding $shape -optimal"]
    if {[llength $box] != 6} { fail "the size of $file cannot be measured" }
    value box_$shape $box
    foreach place $box {
        if {abs($place) > 1e50} { fail "$file is damaged: one of its faces has no end" }
    }
    lassign $box x0 y0 z0 x1 y1 z1
    return [expr {sqrt(pow($x1 - $x0, 2) + pow($y1 - $y0, 2) + pow($z1 - $z0, 2))}]
}

# Volume (vprops) or area (sprops) of a shape, with all digits.
proc mass {command shape} {
    if {[catch {uplevel #0 "$command $shape -full"} text] || ![regexp {Mass : *(\S+)} $text all mass]} { return 0 }
    return $mass
}

# A warning for each kind of fault that the shape has.
proc check {file shape diagonal} {
    set found [uplevel #0 "checkshape $shape"]
    set valid [string match "*seems to be valid*" $found]
    value valid_$shape $valid
    if {!$valid} {
        set kinds [lsort -unique [regexp -all -inline {BRepCheck_\w+} $found]]
        tell NOTE "$file is not valid: [string map {BRepCheck_ {}} [join $kinds {, }]]"
    }
    set greatest 0
    foreach {all tolerance} [regexp -all -inline {Max +([0-9.e+-]+)} [uplevel #0 "maxtolerance $shape"]] {
        if {$tolerance > $greatest} { set greatest $tolerance }
    }
    value tolerance_$shape $greatest
    if {$greatest > 1e-3 * $diagonal} {
        tell NOTE "$file is inexact: its edges lie up to [format %.3g $greatest] beside its faces"
    }
}

proc mesh {file shape deflection angle} {
    attempt "$file could not be meshed" "incmesh $shape $deflection -angular $angle"
    if {![regexp {(\d+) triangles} [uplevel #0 "trinfo $shape"] all triangles] || $triangles == 0} {
        fail "$file could not be meshed"
    }
    value triangles_$shape $triangles
    if {[regexp {([1-9]\d*) empty faces} [uplevel #0 "trinfo $shape"] all empty]} {
        tell NOTE "$file: $empty of its faces could not be meshed"
    }
}
