# The shipped rules: copied beside the programs in the build tree, so that a program run from there reads
# them as an installed one does (the Windows build under Wine too), and installed with every package. The
# folder is made anew from the list of files, so that a rules file taken out of regole/ leaves the build
# tree too (the list is in the command, which runs again when it changes).
file(GLOB regole_spedite CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/regole/*.json)
set(regole_build ${PROJECT_BINARY_DIR}/cli/regole)
add_custom_command(OUTPUT ${PROJECT_BINARY_DIR}/regole.copiate
  COMMAND ${CMAKE_COMMAND} -E rm -rf ${regole_build}
  COMMAND ${CMAKE_COMMAND} -E make_directory ${regole_build}
  COMMAND ${CMAKE_COMMAND} -E copy ${regole_spedite} ${regole_build}
  COMMAND ${CMAKE_COMMAND} -E touch ${PROJECT_BINARY_DIR}/regole.copiate
  DEPENDS ${regole_spedite} VERBATIM)
add_custom_target(regole_spedite ALL DEPENDS ${PROJECT_BINARY_DIR}/regole.copiate)
add_dependencies(checkordl-cli regole_spedite)
