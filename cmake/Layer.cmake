# add_layer(NAME [DEPENDS target...])
#
# One static library for the folder it is called in, made of all the folder's sources. A layer sees only the headers of
# the layers that it names, by their path from the project's root; an include that runs upwards shows in the link.
# Position-independent with hidden symbols, so that a layer can stand in the add-in library and in a program.
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
