# frozen_string_literal: true

require_relative "zip_archive"

# Meshes as 3MF files, for printers: a ZIP archive of three XML files. Lengths in mm.
module ThreeMf
  DECLARATION = '<?xml version="1.0" encoding="UTF-8"?>'
  PACKAGES = "http://schemas.openxmlformats.org/package/2006"
  PRINTING = "http://schemas.microsoft.com/3dmanufacturing"

  CONTENT_TYPES = <<~XML
    #{DECLARATION}
    <Types xmlns="#{PACKAGES}/content-types">
    <Default Extension="rels" ContentType="application/vnd.openxmlformats-package.relationships+xml"/>
    <Default Extension="model" ContentType="application/vnd.ms-package.3dmanufacturing-3dmodel+xml"/>
    </Types>
  XML

  RELATIONS = <<~XML
    #{DECLARATION}
    <Relationships xmlns="#{PACKAGES}/relationships">
    <Relationship Target="/3D/3dmodel.model" Id="rel0" Type="#{PRINTING}/2013/01/3dmodel"/>
    </Relationships>
  XML

  # The bytes of a 3MF file of a Mesh whose triangles have been joined to a Topology.
  def self.encode(topology)
    ZipArchive.pack("[Content_Types].xml" => CONTENT_TYPES, "_rels/.rels" => RELATIONS,
                    "3D/3dmodel.model" => model(topology))
  end

  def self.model(topology)
    vertices = topology.vertices.map { |point| format('<vertex x="%.7g" y="%.7g" z="%.7g"/>', *point) }
    corners = topology.corners.each_slice(3).reject { |a, b, c| a == b || b == c || c == a }
    triangles = corners.map { |a, b, c| "<triangle v1=\"#{a}\" v2=\"#{b}\" v3=\"#{c}\"/>" }
    <<~XML
      #{DECLARATION}
      <model unit="millimeter" xml:lang="en-US" xmlns="#{PRINTING}/core/2015/02">
      <resources><object id="1" type="model"><mesh>
      <vertices>
      #{vertices.join("\n")}
      </vertices>
      <triangles>
      #{triangles.join("\n")}
      </triangles>
      </mesh></object></resources>
      <build><item objectid="1"/></build>
      </model>
    XML
  end
  private_class_method :model
end
