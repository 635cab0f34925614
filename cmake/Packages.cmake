# Debian packages of the installed components, by `cpack -G DEB` in the build folder: the add-in with helmsway-replay,
# the bench's window, and the development files for a host. A machine without Qt needs only the first.
set(CPACK_PACKAGE_NAME orvelcalibrates)
set(CPACK_PACKAGE_CONTACT "The Helmsway maintainers <helmsway@localhost>")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_COMPONENTS_ALL addin dev)
if(HELMSWAY_DESKTOP)
  list(APPEND CPACK_COMPONENTS_ALL bench)
endif()

set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION science)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(same_version "orvelcalibrates (= ${PROJECT_VERSION})")
set(CPACK_DEBIAN_ADDIN_PACKAGE_NAME orvelcalibrates)
set(CPACK_COMPONENT_ADDIN_DESCRIPTION "Add-in that calibrates the syringe axis of a Marivane
 With helmsway-replay, which plays scripts of host, operator and instrument against it.")
set(CPACK_DEBIAN_BENCH_PACKAGE_NAME helmsway-bench)
set(CPACK_DEBIAN_BENCH_PACKAGE_DEPENDS "${same_version}")
set(CPACK_COMPONENT_BENCH_DESCRIPTION "Stand-in for the Helmsway host with a simulated Marivane
 A window to train on and to try configurations in, without an instrument.")
set(CPACK_DEBIAN_DEV_PACKAGE_NAME helmsway-dev)
set(CPACK_DEBIAN_DEV_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEV_PACKAGE_ARCHITECTURE all)
set(CPACK_DEBIAN_DEV_PACKAGE_SHLIBDEPS OFF)
set(CPACK_DEBIAN_DEV_PACKAGE_RECOMMENDS "${same_version}")
set(CPACK_COMPONENT_DEV_DESCRIPTION "Headers for hosts of Helmsway add-ins
 The contract between host and add-in, and a CMake package.")
include(CPack)
