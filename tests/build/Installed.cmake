# An installed tree, moved to another folder, works: the programs find the library and the examples, and a host that is
# built outside of this project, against the installed package alone, loads the add-in.
# cmake -DBUILD=folder -DWORK=folder -DVERSION=1.2.3 -DCOMPILER=g++ -DGENERATOR=Ninja -DDESKTOP=ON
# -P Installed.cmake
cmake_minimum_required(VERSION 3.25)
function(run result)
  execute_process(COMMAND ${ARGN} OUTPUT_VARIABLE output ERROR_VARIABLE output RESULT_VARIABLE status TIMEOUT 120)
  if(status)
    message(FATAL_ERROR "${ARGN}\nended with ${status}:\n${output}")
  endif()
  set(${result} "${output}" PARENT_SCOPE)
endfunction()

function(expect what actual pattern)
  if(NOT actual MATCHES "${pattern}")
    message(FATAL_ERROR "${what}: \"${actual}\" doesn't match \"${pattern}\"")
  endif()
endfunction()

file(REMOVE_RECURSE ${WORK})
file(MAKE_DIRECTORY ${WORK}/home)
run(ignored ${CMAKE_COMMAND} --install ${BUILD} --prefix ${WORK}/first)
set(prefix ${WORK}/prefix)
file(RENAME ${WORK}/first ${prefix})
set(examples ${prefix}/share/helmsway/examples)
set(library ${prefix}/lib/helmsway/libOrvelCalibrateS.so)

# The host, whose sources are installed too. The page for authors of hosts shows it as it is.
file(READ ${CMAKE_CURRENT_LIST_DIR}/../../docs/hosts.md page)
file(READ ${examples}/host/TinyHost.cpp host)
string(FIND "${page}" "```cpp\n${host}```" shown)
if(shown EQUAL -1)
  message(FATAL_ERROR "docs/hosts.md shows another host than examples/host/TinyHost.cpp")
endif()
file(COPY ${examples}/host DESTINATION ${WORK})
run(ignored ${CMAKE_COMMAND} -S ${WORK}/host -B ${WORK}/host-build -DCMAKE_PREFIX_PATH=${prefix}
    -G ${GENERATOR} -DCMAKE_CXX_COMPILER=${COMPILER}
    "-DCMAKE_CXX_FLAGS=-Wall -Wextra -Wpedantic -Wshadow -Wconversion -Werror")
run(ignored ${CMAKE_COMMAND} --build ${WORK}/host-build)
run(lines ${WORK}/host-build/tiny-host ${library})
expect("what the host prints" "${lines}" "^REV\n$")

run(version ${prefix}/bin/helmsway-replay --version)
expect("the version" "${version}" "^helmsway-replay ${VERSION}\n$")
run(trace ${prefix}/bin/helmsway-replay ${examples}/scripts/quick-calibration.replay)
run(expected ${BUILD}/bin/helmsway-replay ${examples}/scripts/quick-calibration.replay)
if(trace STREQUAL "" OR NOT trace STREQUAL expected)
  message(FATAL_ERROR "the trace of the installed program differs from that of the one that was built")
endif()

if(DESKTOP)
  set(environment XDG_DATA_HOME=${WORK}/home XDG_RUNTIME_DIR=${WORK}/home QT_QPA_PLATFORM=offscreen)
  run(ignored ${CMAKE_COMMAND} -E env ${environment} ${prefix}/bin/helmsway-bench --quit-when-shown)
  file(READ ${WORK}/home/helmsway/add-ins/OrvelCalibrateS.Connect.addin registration)
  expect("the registration" "${registration}" "\nVersion=${VERSION}\nLibrary=${library}\n$")
  if(NOT EXISTS ${WORK}/home/helmsway/installation/Marivane.ini)
    message(FATAL_ERROR "the bench has made no installation of its own")
  endif()
endif()
file(REMOVE_RECURSE ${WORK})
