# What differs between the two packages; read by CPack once for each.
if(CPACK_GENERATOR STREQUAL "DEB")
  set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
else()
  # The folder that an update puts in the place of the installed one: the program and nothing of a desktop.
  set(CPACK_PACKAGING_INSTALL_PREFIX /Tavrin.app)
  string(REPLACE ";ALL;" ";program;" CPACK_INSTALL_CMAKE_PROJECTS "${CPACK_INSTALL_CMAKE_PROJECTS}")
  set(CPACK_INCLUDE_TOPLEVEL_DIRECTORY OFF)
  set(CPACK_COMPONENT_INCLUDE_TOPLEVEL_DIRECTORY OFF)
  set(CPACK_PACKAGE_FILE_NAME ${CPACK_TAVRIN_BUNDLE_FILE_NAME})
endif()
