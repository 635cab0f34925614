# All of the project's code is formatted as .clang-format says.
# cmake -DCLANG_FORMAT=clang-format -DROOT=folder -P Formatting.cmake
file(GLOB_RECURSE files ${ROOT}/addin/*.cpp ${ROOT}/addin/*.h ${ROOT}/forms/*.cpp ${ROOT}/forms/*.h ${ROOT}/bench/*.cpp
     ${ROOT}/bench/*.h ${ROOT}/examples/*.cpp ${ROOT}/tests/*.cpp ${ROOT}/tests/*.h)
execute_process(COMMAND ${CLANG_FORMAT} --dry-run --Werror ${files} RESULT_VARIABLE result)
if(result)
  message(FATAL_ERROR "clang-format -i puts these right")
endif()
