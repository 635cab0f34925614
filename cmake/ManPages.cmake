# Manual pages of the programs, generated from their --help if help2man is found at configure time.
find_program(HELP2MAN help2man)
if(NOT HELP2MAN)
  message(STATUS "help2man isn't installed: no manual pages")
  return()
endif()

# add_man_page(PROGRAM COMPONENT "what it is")
function(add_man_page program component summary)
  set(page ${CMAKE_BINARY_DIR}/man/${program}.1)
  add_custom_command(
    OUTPUT ${page}
    COMMAND ${PROJECT_SOURCE_DIR}/cmake/man-page ${HELP2MAN} $<TARGET_FILE:${program}> ${CMAKE_BINARY_DIR} ${page}
            ${summary}
    DEPENDS ${program} ${PROJECT_SOURCE_DIR}/cmake/man-page
    VERBATIM)
  add_custom_target(${program}-man ALL DEPENDS ${page})
  install(FILES ${page} DESTINATION share/man/man1 COMPONENT ${component})
endfunction()

add_man_page(helmsway-replay addin "play a script against the add-in OrvelCalibrateS")
if(HELMSWAY_DESKTOP)
  add_man_page(helmsway-bench bench "stand-in for the Helmsway host, with a simulated Marivane")
endif()
