# The library exports its four entry points and nothing else, and needs nothing but the language's runtime.
# cmake -DNM=nm -DREADELF=readelf -DLIBRARY=file -P ExportedSymbols.cmake
execute_process(COMMAND ${NM} --dynamic --defined-only --format=posix ${LIBRARY} OUTPUT_VARIABLE table
                COMMAND_ERROR_IS_FATAL ANY)
string(REGEX MATCHALL "[^\n]+" rows "${table}")
list(TRANSFORM rows REPLACE " .*" "")
list(SORT rows)
set(expected DllCanUnloadNow DllGetClassObject DllRegisterServer DllUnregisterServer)
if(NOT rows STREQUAL expected)
  message(FATAL_ERROR "exported: ${rows}\nexpected: ${expected}")
endif()

execute_process(COMMAND ${READELF} --dynamic ${LIBRARY} OUTPUT_VARIABLE dynamic COMMAND_ERROR_IS_FATAL ANY)
string(REGEX MATCHALL "NEEDED[^\n]*" needed "${dynamic}")
foreach(entry IN LISTS needed)
  if(NOT entry MATCHES "\\[(libstdc\\+\\+|libm|libgcc_s|libc|libdl|ld-linux[^]]*)\\.so[^]]*\\]")
    message(FATAL_ERROR "the library needs more than the language's runtime: ${entry}")
  endif()
endforeach()
