# add_widget_layer(NAME target...)
#
# A layer that knows Qt; see Layer.cmake.
function(add_widget_layer name)
  set(CMAKE_AUTOMOC ON)
  file(GLOB sources CONFIGURE_DEPENDS *.cpp *.h)
  add_library(${name} STATIC ${sources})
  target_include_directories(${name} PUBLIC ${PROJECT_SOURCE_DIR})
  target_link_libraries(${name} PUBLIC ${ARGN} Qt6::Widgets)
  target_compile_definitions(${name} PUBLIC QT_NO_KEYWORDS QT_NO_CAST_FROM_ASCII)
endfunction()
