# SPDX-License-Identifier: Apache-2.0
# The target "reference": the reference of the public headers as HTML in reference/html, by Doxygen. A member without
# a comment, and a comment that does not fit its member, are errors.
find_program(QUENXML2_DOXYGEN doxygen DOC "Doxygen, for the reference")
mark_as_advanced(QUENXML2_DOXYGEN)
if(NOT QUENXML2_DOXYGEN)
  return()
endif()
set(quenxml2_reference "${CMAKE_CURRENT_BINARY_DIR}/reference")
configure_file(docs/reference/Doxyfile.in "${quenxml2_reference}/Doxyfile" @ONLY)
add_custom_target(reference COMMAND "${QUENXML2_DOXYGEN}" -q "${quenxml2_reference}/Doxyfile"
  WORKING_DIRECTORY "${CMAKE_CURRENT_SOURCE_DIR}" COMMENT "Writing the reference" VERBATIM)
install(DIRECTORY "${quenxml2_reference}/html" DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT documentation OPTIONAL)
