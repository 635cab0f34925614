# The project's version, which project() sets, for the code that shows it: HELMSWAY_VERSION, for targets that link to this.
add_library(helmsway_version INTERFACE)
target_compile_definitions(helmsway_version INTERFACE HELMSWAY_VERSION="${PROJECT_VERSION}")
