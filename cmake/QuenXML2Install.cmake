# SPDX-License-Identifier: Apache-2.0
# What an installation consists of, in the three parts that become packages: the library (runtime); headers,
# CMake package and pkg-config file (development); the documents (documentation).
install(TARGETS QuenXML2 EXPORT QuenXML2Targets
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT runtime NAMELINK_COMPONENT development
  ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT development)
install(DIRECTORY include/quenxml2 "${CMAKE_CURRENT_BINARY_DIR}/include/quenxml2"
  DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} COMPONENT development FILES_MATCHING PATTERN "*.h")

set(quenxml2_package_dir "${CMAKE_INSTALL_LIBDIR}/cmake/QuenXML2")
install(EXPORT QuenXML2Targets NAMESPACE QuenXML2:: DESTINATION ${quenxml2_package_dir} COMPONENT development)
configure_package_config_file(cmake/QuenXML2Config.cmake.in
  "${CMAKE_CURRENT_BINARY_DIR}/QuenXML2Config.cmake"
  INSTALL_DESTINATION ${quenxml2_package_dir})
write_basic_package_version_file("${CMAKE_CURRENT_BINARY_DIR}/QuenXML2ConfigVersion.cmake"
  COMPATIBILITY SameMajorVersion)
install(FILES
  "${CMAKE_CURRENT_BINARY_DIR}/QuenXML2Config.cmake"
  "${CMAKE_CURRENT_BINARY_DIR}/QuenXML2ConfigVersion.cmake"
  DESTINATION ${quenxml2_package_dir} COMPONENT development)

# The prefix is told relative to the file itself: "cmake --install --prefix" chooses it later than this runs.
file(RELATIVE_PATH quenxml2_pc_prefix
  "${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig" "${CMAKE_INSTALL_PREFIX}")
string(REGEX REPLACE "/$" "" quenxml2_pc_prefix "${quenxml2_pc_prefix}")
set(quenxml2_pc_libdir "\${prefix}")
cmake_path(APPEND quenxml2_pc_libdir "${CMAKE_INSTALL_LIBDIR}")
set(quenxml2_pc_includedir "\${prefix}")
cmake_path(APPEND quenxml2_pc_includedir "${CMAKE_INSTALL_INCLUDEDIR}")
# The headers name the namespace of Xerces-C. A program that links the static library has to link the engines
# too, by "pkg-config --static"; they are named one by one, since Debian's xerces-c.pc would have such a
# program link a libcurl that nothing here needs.
if(BUILD_SHARED_LIBS)
  set(quenxml2_pc_engines "Requires.private: xerces-c")
else()
  set(quenxml2_pc_engines "Libs.private: -lxalan-c -lxalanMsg -lxerces-c -lcrypto")
endif()
configure_file(cmake/quenxml2.pc.in "${CMAKE_CURRENT_BINARY_DIR}/quenxml2.pc" @ONLY)
install(FILES "${CMAKE_CURRENT_BINARY_DIR}/quenxml2.pc"
  DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig COMPONENT development)

install(DIRECTORY docs/ DESTINATION ${CMAKE_INSTALL_DOCDIR}/docs COMPONENT documentation
  FILES_MATCHING PATTERN "*.md")
install(FILES README.md CHANGELOG.md THIRD-PARTY.md DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT documentation)
