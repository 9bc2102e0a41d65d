# frozen_string_literal: true

require "rbconfig"

# Where the CAD programs are that the scenarios start: in the environment variable of each, in PATH, or in a usual place.
module ToolPlaces
  Kind = Struct.new(:title, :names, :variable, :package, :download, :places, keyword_init: true)

  KINDS = {
    draw: Kind.new(title: "Open CASCADE's DRAWEXE", names: %w[occt-draw DRAWEXE occt-draw-7.6], variable: "CAD_DRAW",
                   package: "occt-draw", download: "dev.opencascade.org",
                   places: ["C:/OpenCASCADE*/opencascade-*/win64/vc*/bin", "C:/msys64/ucrt64/bin"]),
    freecad: Kind.new(title: "FreeCAD", names: %w[freecadcmd FreeCADCmd], variable: "CAD_FREECAD", package: "freecad",
                      download: "freecad.org", places: ["C:/Program Files/FreeCAD*/bin", "/opt/freecad/bin"]),
    openscad: Kind.new(title: "OpenSCAD", names: %w[openscad], variable: "CAD_OPENSCAD", package: "openscad",
                       download: "openscad.org", places: ["C:/Program Files/OpenSCAD", "C:/msys64/ucrt64/bin"]),
    gmsh: Kind.new(title: "Gmsh", names: %w[gmsh], variable: "CAD_GMSH", package: "gmsh", download: "gmsh.info",
                   places: ["C:/Program Files/gmsh*", "C:/gmsh*", "C:/Program Files/FreeCAD*/bin"]),
    ccx: Kind.new(title: "CalculiX", names: %w[ccx ccx_static], variable: "CAD_CCX", package: "calculix-ccx",
                  download: "calculix.de", places: ["C:/Program Files/FreeCAD*/bin"]),
    admesh: Kind.new(title: "ADMesh", names: %w[admesh], variable: "CAD_ADMESH", package: "admesh",
                     download: "github.com/admesh/admesh", places: ["C:/msys64/ucrt64/bin"])
  }.freeze

  WINDOWS = RbConfig::CONFIG["host_os"].match?(/mswin|mingw|cygwin/)

  # openscad.com is the one of OpenSCAD's two programs that prints to a console. A .bat would need a shell.
  EXTENSIONS = WINDOWS ? %w[.com .exe] : [""]

  # The path of the program, or nil. A variable that is set decides alone: what it names is used or missing.
  def self.find(kind)
    named = ENV.fetch(kind.variable, "")
    return (named if program?(named)) unless named.empty?

    directories = ENV.fetch("PATH", "").split(File::PATH_SEPARATOR) + kind.places.flat_map { |place| newest_first(place) }
    directories.product(kind.names, EXTENSIONS).map { |directory, name, extension| File.join(directory, name + extension) }
               .find { |path| program?(path) }
  end

  # What to install where a program is missing.
  def self.advice(kind)
    named = ENV.fetch(kind.variable, "")
    unless named.empty?
      return "#{kind.variable} names #{named}, which is no program; set it to the path of #{kind.title}, or unset it."
    end

    "#{kind.title} is not installed. On Debian: apt-get install #{kind.package}; elsewhere: #{kind.download}. " \
      "Or name its program in the environment variable #{kind.variable}."
  end

  def self.newest_first(place)
    Dir.glob(place).sort.reverse
  end
  private_class_method :newest_first

  def self.program?(path)
    File.file?(path) && File.executable?(path)
  end
  private_class_method :program?
end
