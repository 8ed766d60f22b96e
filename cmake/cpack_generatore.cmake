# Read by cpack once for each package it makes: each kind has a name of its own.
if(CPACK_GENERATOR STREQUAL "NSIS")
  set(CPACK_PACKAGE_FILE_NAME "CheckORDL-${CPACK_PACKAGE_VERSION}-setup")
elseif(CPACK_GENERATOR STREQUAL "ZIP")
  set(CPACK_PACKAGE_FILE_NAME "CheckORDL-${CPACK_PACKAGE_VERSION}-${CPACK_SYSTEM_NAME}")
endif()
