include(CMakePackageConfigHelpers)

install(TARGETS vorn EXPORT VornLibTargets
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
  ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR}
  RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
install(DIRECTORY vorn/ DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/vorn
  FILES_MATCHING PATTERN "*.h")

set(VORN_CMAKE_DIR ${CMAKE_INSTALL_LIBDIR}/cmake/VornLib)
install(EXPORT VornLibTargets NAMESPACE VornLib:: DESTINATION ${VORN_CMAKE_DIR})
configure_package_config_file(cmake/VornLibConfig.cmake.in
  ${PROJECT_BINARY_DIR}/VornLibConfig.cmake
  INSTALL_DESTINATION ${VORN_CMAKE_DIR})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/VornLibConfigVersion.cmake
  COMPATIBILITY SameMajorVersion)
install(FILES
  ${PROJECT_BINARY_DIR}/VornLibConfig.cmake
  ${PROJECT_BINARY_DIR}/VornLibConfigVersion.cmake
  DESTINATION ${VORN_CMAKE_DIR})

# The .pc file finds the prefix from its own place, so an install moved with
# `cmake --install --prefix` or DESTDIR still points at its own headers.
file(RELATIVE_PATH VORN_PC_TO_PREFIX
     "/prefix/${CMAKE_INSTALL_LIBDIR}/pkgconfig" "/prefix")
configure_file(cmake/vornlib.pc.in ${PROJECT_BINARY_DIR}/vornlib.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/vornlib.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
