# The files that `cmake --install` puts below the prefix. The programs find the library and the examples relative to
# their own location, so an installed tree may be moved, and these folders are fixed. The three components are also
# three packages.
include(CMakePackageConfigHelpers)

# The add-in, and the program that plays scripts against it.
install(TARGETS OrvelCalibrateS LIBRARY DESTINATION lib/helmsway COMPONENT addin)
install(TARGETS helmsway-replay RUNTIME DESTINATION bin COMPONENT addin)
install(DIRECTORY examples/ DESTINATION share/helmsway/examples COMPONENT addin)

# The bench's window.
if(HELMSWAY_DESKTOP)
  install(TARGETS helmsway-bench RUNTIME DESTINATION bin COMPONENT bench)
  install(FILES bench/desktop/helmsway-bench.desktop DESTINATION share/applications COMPONENT bench)
  install(FILES bench/desktop/helmsway-bench.svg DESTINATION share/icons/hicolor/scalable/apps COMPONENT bench)
endif()

# The development files for a host: headers by their path from the project's root, and find_package(Helmsway).
set(host_headers
    addin/contract/Component.h addin/contract/HelmswayCmds.h addin/base/Boundary.h addin/base/Implements.h
    addin/base/Ref.h addin/base/Texts.h addin/shell/Identities.h forms/Design.h forms/Surface.h)
foreach(header IN LISTS host_headers)
  get_filename_component(folder ${header} DIRECTORY)
  install(FILES ${header} DESTINATION include/helmsway/${folder} COMPONENT dev)
endforeach()

add_library(helmsway_contract INTERFACE)
set_target_properties(helmsway_contract PROPERTIES EXPORT_NAME contract)
target_compile_features(helmsway_contract INTERFACE cxx_std_20)
target_include_directories(helmsway_contract INTERFACE $<INSTALL_INTERFACE:include/helmsway>)
install(TARGETS helmsway_contract EXPORT HelmswayTargets)

set(package_folder share/cmake/Helmsway)
install(EXPORT HelmswayTargets NAMESPACE Helmsway:: DESTINATION ${package_folder} COMPONENT dev)
configure_package_config_file(cmake/HelmswayConfig.cmake.in ${CMAKE_BINARY_DIR}/HelmswayConfig.cmake
                              INSTALL_DESTINATION ${package_folder})
# Headers only, so they fit every machine.
write_basic_package_version_file(${CMAKE_BINARY_DIR}/HelmswayConfigVersion.cmake COMPATIBILITY SameMajorVersion
                                 ARCH_INDEPENDENT)
install(FILES ${CMAKE_BINARY_DIR}/HelmswayConfig.cmake ${CMAKE_BINARY_DIR}/HelmswayConfigVersion.cmake
        DESTINATION ${package_folder} COMPONENT dev)
