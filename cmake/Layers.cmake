# controller_add_layer(NAME BELOW layer ... [LIBRARIES target ...] SOURCES file ...)
#
# Adds one layer of a shared library, as objects. BELOW lists the layers below it that it uses; check.layers compares them with its
# table. LIBRARIES lists third-party libraries that only this layer uses.
function(controller_add_layer name)
  cmake_parse_arguments(PARSE_ARGV 1 layer "" "" "BELOW;LIBRARIES;SOURCES")
  add_library(${name} OBJECT ${layer_SOURCES})
  target_link_libraries(${name} PRIVATE controller_flags ${layer_LIBRARIES} PUBLIC controller_headers ${layer_BELOW})
  controller_precompile_headers(${name})
endfunction()

# controller_join_layers(NAME layer ...): a target that links NAME contains the objects of these layers.
function(controller_join_layers name)
  add_library(${name} INTERFACE)
  target_link_libraries(${name} INTERFACE controller_headers)
  foreach(layer IN LISTS ARGN)
    target_sources(${name} INTERFACE $<TARGET_OBJECTS:${layer}>)
  endforeach()
endfunction()
