# add_layer(NAME [DEPENDS target...])
#
# One static library from all sources of the folder that calls it. Headers are included by their path from the project's
# root; tests/build/Layers.cmake checks the includes. Position-independent with hidden symbols, so that both the add-in
# library and a program can contain a layer.
function(add_layer name)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "DEPENDS")
  file(GLOB sources CONFIGURE_DEPENDS *.cpp)
  if(sources)
    add_library(${name} STATIC ${sources})
    set(scope PUBLIC)
    set_target_properties(${name} PROPERTIES POSITION_INDEPENDENT_CODE ON CXX_VISIBILITY_PRESET hidden
                                             VISIBILITY_INLINES_HIDDEN ON)
  else()
    add_library(${name} INTERFACE)
    set(scope INTERFACE)
  endif()
  target_include_directories(${name} ${scope} ${PROJECT_SOURCE_DIR})
  target_link_libraries(${name} ${scope} ${arg_DEPENDS})
endfunction()
