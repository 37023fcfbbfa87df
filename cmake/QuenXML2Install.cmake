# SPDX-License-Identifier: Apache-2.0
# What an installation consists of: headers, library, CMake package, pkg-config file.
install(DIRECTORY include/quenxml2 DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} FILES_MATCHING PATTERN "*.h")
install(TARGETS QuenXML2 EXPORT QuenXML2Targets
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
  ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR})

set(quenxml2_package_dir "${CMAKE_INSTALL_LIBDIR}/cmake/QuenXML2")
install(EXPORT QuenXML2Targets NAMESPACE QuenXML2:: DESTINATION ${quenxml2_package_dir})
configure_package_config_file(cmake/QuenXML2Config.cmake.in
  "${CMAKE_CURRENT_BINARY_DIR}/QuenXML2Config.cmake"
  INSTALL_DESTINATION ${quenxml2_package_dir})
write_basic_package_version_file("${CMAKE_CURRENT_BINARY_DIR}/QuenXML2ConfigVersion.cmake"
  COMPATIBILITY SameMajorVersion)
install(FILES
  "${CMAKE_CURRENT_BINARY_DIR}/QuenXML2Config.cmake"
  "${CMAKE_CURRENT_BINARY_DIR}/QuenXML2ConfigVersion.cmake"
  DESTINATION ${quenxml2_package_dir})

if(BUILD_SHARED_LIBS)
  set(quenxml2_pc_requires "Requires.private: xerces-c, libcrypto")
  set(quenxml2_pc_libs_private "")
else()
  set(quenxml2_pc_requires "Requires: xerces-c, libcrypto")
  set(quenxml2_pc_libs_private " -lxalan-c -lxalanMsg")
endif()
configure_file(cmake/quenxml2.pc.in "${CMAKE_CURRENT_BINARY_DIR}/quenxml2.pc" @ONLY)
install(FILES "${CMAKE_CURRENT_BINARY_DIR}/quenxml2.pc"
  DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
