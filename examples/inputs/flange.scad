// A pipe flange with a hub; flanges.csv holds a family of them. Lengths in mm.
outer = 165;  // diameter of the rim
bore = 61;
circle = 125; // diameter of the bolt circle
bolts = 4;
bolt = 18;    // diameter of their holes
thick = 18;
hub = 84;
height = 45;

assert(bore < hub && hub < circle - bolt && circle + bolt < outer, "the bolt holes do not fit between hub and rim");
$fn = 48;

difference() {
    union() {
        cylinder(d = outer, h = thick);
        cylinder(d = hub, h = height);
    }
    translate([0, 0, -1]) cylinder(d = bore, h = height + 2);
    for (i = [0 : bolts - 1])
        rotate(360 / bolts * i) translate([circle / 2, 0, -1]) cylinder(d = bolt, h = thick + 2);
}
