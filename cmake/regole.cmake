# The shipped rules: copied beside the programs in the build tree, so that a program run from there reads
# them as an installed one does (the Windows build under Wine too), and installed with every package.
file(GLOB regole_spedite CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/regole/*.json)
set(regole_build ${PROJECT_BINARY_DIR}/cli/regole)
set(copie_regole "")
foreach(file ${regole_spedite})
  get_filename_component(nome ${file} NAME)
  add_custom_command(OUTPUT ${regole_build}/${nome}
    COMMAND ${CMAKE_COMMAND} -E copy_if_different ${file} ${regole_build}/${nome}
    DEPENDS ${file} VERBATIM)
  list(APPEND copie_regole ${regole_build}/${nome})
endforeach()
add_custom_target(regole ALL DEPENDS ${copie_regole})
add_dependencies(checkordl-cli regole)
