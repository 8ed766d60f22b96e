# What `cmake --install` puts where, and the packages CPack makes of it: a Debian package natively; in the
# Windows build a per-user installer (NSIS) and a zip of the same files. Included at the end of the top
# CMakeLists.txt, when every program target is known.
include(GNUInstallDirs)
set(pacchetto ${PROJECT_SOURCE_DIR}/pacchetto)
# SOURCE_DATE_EPOCH, where set, makes the dates those of a reproducible build.
string(TIMESTAMP CHECKORDL_DATA_RILASCIO "%Y-%m-%d" UTC)
string(TIMESTAMP CHECKORDL_DATA_CHANGELOG "%a, %d %b %Y 00:00:00 +0000" UTC)

if(WIN32)
  # Both executables side by side at the top of the folder, which is their program folder.
  set(cartella_programmi .)
else()
  set(cartella_programmi ${CMAKE_INSTALL_BINDIR})
endif()
install(TARGETS checkordl-cli RUNTIME DESTINATION ${cartella_programmi})
if(TARGET checkordl)
  install(TARGETS checkordl RUNTIME DESTINATION ${cartella_programmi})
endif()

# The shipped rules: beside the programs on Windows (the program folder a supporter knows), in the package's
# shared folder elsewhere, which the programs look for from their own folder.
if(WIN32)
  set(cartella_regole regole)
else()
  set(cartella_regole ${CMAKE_INSTALL_DATAROOTDIR}/checkordl/regole)
endif()
install(DIRECTORY ${PROJECT_SOURCE_DIR}/regole/ DESTINATION ${cartella_regole} FILES_MATCHING PATTERN "*.json")

if(WIN32)
  # Beside the programs, for a Windows user who got them in a zip or the installer: the support address,
  # which a supporter changes without a compiler, and what to do with the download. Windows' line ends.
  set(testi_windows ${CMAKE_CURRENT_BINARY_DIR}/pacchetto_windows)
  file(CONFIGURE OUTPUT ${testi_windows}/contatto.txt CONTENT "${CHECKORDL_SUPPORT_EMAIL}\n" NEWLINE_STYLE CRLF)
  configure_file(${pacchetto}/windows/README.txt.in ${testi_windows}/README.txt @ONLY NEWLINE_STYLE CRLF)
  install(FILES ${testi_windows}/contatto.txt ${testi_windows}/README.txt DESTINATION ${cartella_programmi})
endif()

if(NOT WIN32)
  # Manual pages and the changelog, compressed as Debian keeps them; the tool's page is made from its usage
  # table.
  set(manuali ${CMAKE_CURRENT_BINARY_DIR}/pacchetto)
  file(MAKE_DIRECTORY ${manuali})
  add_custom_command(OUTPUT ${manuali}/checkordl-cli.1.gz ${manuali}/checkordl.1.gz
    COMMAND sh -c "\"$1\" --man | gzip -9n > checkordl-cli.1.gz && gzip -9n < \"$2\" > checkordl.1.gz"
            manuale $<TARGET_FILE:checkordl-cli> ${pacchetto}/checkordl.1
    DEPENDS checkordl-cli ${pacchetto}/checkordl.1
    WORKING_DIRECTORY ${manuali}
    VERBATIM)
  add_custom_target(manuali ALL DEPENDS ${manuali}/checkordl-cli.1.gz ${manuali}/checkordl.1.gz)
  install(FILES ${manuali}/checkordl-cli.1.gz DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)

  configure_file(${pacchetto}/changelog.in ${manuali}/changelog @ONLY)
  add_custom_command(OUTPUT ${manuali}/changelog.gz
    COMMAND sh -c "gzip -9n < changelog > changelog.gz"
    DEPENDS ${manuali}/changelog
    WORKING_DIRECTORY ${manuali}
    VERBATIM)
  add_custom_target(storia_pacchetto ALL DEPENDS ${manuali}/changelog.gz)
  install(FILES ${pacchetto}/copyright ${manuali}/changelog.gz
          DESTINATION ${CMAKE_INSTALL_DATAROOTDIR}/doc/checkordl)

  # The desktop's entry, icon and software-centre description belong to the window program.
  if(TARGET checkordl)
    install(FILES ${manuali}/checkordl.1.gz DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
    install(FILES ${pacchetto}/org.checkordl.CheckORDL.desktop DESTINATION ${CMAKE_INSTALL_DATAROOTDIR}/applications)
    configure_file(${pacchetto}/org.checkordl.CheckORDL.metainfo.xml.in
                   ${CMAKE_CURRENT_BINARY_DIR}/org.checkordl.CheckORDL.metainfo.xml @ONLY)
    install(FILES ${CMAKE_CURRENT_BINARY_DIR}/org.checkordl.CheckORDL.metainfo.xml
            DESTINATION ${CMAKE_INSTALL_DATAROOTDIR}/metainfo)
    install(FILES ${pacchetto}/icone/checkordl.svg
            DESTINATION ${CMAKE_INSTALL_DATAROOTDIR}/icons/hicolor/scalable/apps)
    foreach(n 16 22 24 32 48 64 128 256)
      install(FILES ${pacchetto}/icone/checkordl-${n}.png
              DESTINATION ${CMAKE_INSTALL_DATAROOTDIR}/icons/hicolor/${n}x${n}/apps RENAME checkordl.png)
    endforeach()
  endif()
endif()

set(CPACK_PACKAGE_NAME CheckORDL)
set(CPACK_PACKAGE_VENDOR "CheckORDL")
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "support tool for level editor and level archive installations")
# Lines as the Debian description shows them (cpack indents them, and keeps them as they are).
string(CONCAT CPACK_PACKAGE_DESCRIPTION
    "CheckORDL serves both ends of a support case for people who build levels\n"
    "with the Tomb Raider Level Editor and keep them in the level-archive manager\n"
    "Ordelio. On the user's computer it finds both installations, records what is\n"
    "missing and packs everything into one snapshot file; on the supporter's\n"
    "computer it shows a snapshot as plain-text reports. On Linux it works on the\n"
    "Windows machine of a Wine prefix.\n"
    "\n"
    "The package holds the window program checkordl and the headless tool\n"
    "checkordl-cli.")
set(CPACK_PACKAGE_INSTALL_DIRECTORY CheckORDL)
set(CPACK_STRIP_FILES ON)
set(CPACK_PROJECT_CONFIG_FILE ${PROJECT_SOURCE_DIR}/cmake/cpack_generatore.cmake)

if(WIN32 AND CMAKE_SIZEOF_VOID_P EQUAL 4)
  # The 32-bit program, for every Windows from 7 on: a zip.
  set(CPACK_GENERATOR ZIP)
elseif(WIN32)
  set(CPACK_GENERATOR NSIS ZIP)
  # Our own installer script: per user, no administrator rights (CPack's own asks for them).
  list(PREPEND CMAKE_MODULE_PATH ${PROJECT_SOURCE_DIR}/cmake/nsis)
  set(CPACK_NSIS_MUI_ICON ${pacchetto}/icone/checkordl.ico)
  set(CPACK_NSIS_COMPRESSOR "/SOLID lzma")
else()
  set(CPACK_GENERATOR DEB)
  set(CPACK_DEBIAN_PACKAGE_NAME checkordl)
  set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
  set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
  set(CPACK_DEBIAN_PACKAGE_SECTION utils)
  set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
  set(CPACK_DEBIAN_PACKAGE_MAINTAINER "CheckORDL developers <${CHECKORDL_SUPPORT_EMAIL}>")
endif()
include(CPack)
