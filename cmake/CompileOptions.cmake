# Options for all of the project's own code.
add_compile_options(
  -Wall -Wextra -Wpedantic -Werror -Wshadow -Wconversion -Wsign-conversion -Wold-style-cast -Wnon-virtual-dtor
  -Woverloaded-virtual -Wcast-align
  # A fused multiply-add would round once where the instrument's arithmetic rounds twice.
  -ffp-contract=off)

if(CMAKE_CXX_COMPILER_ID STREQUAL GNU)
  # g++ 12 wrongly reports overlaps in "literal" + std::string, and warns about members that a designated initializer
  # leaves out on purpose.
  add_compile_options(-Wno-restrict -Wno-missing-field-initializers)
endif()

if(HELMSWAY_SANITIZE)
  add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=undefined -fno-omit-frame-pointer)
  add_link_options(-fsanitize=address,undefined)
endif()
