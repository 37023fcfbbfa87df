# SPDX-License-Identifier: Apache-2.0
# The Debian packages: libquenxml2-2 with the library, libquenxml2-dev to compile with, libquenxml2-doc with the
# documents. "cpack" makes them in a build that has the prefix /usr; cmake/make-packages does all of it.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME quenxml2)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_VENDOR QuenXML2)
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "")  # each package has its own
set(QUENXML2_PACKAGE_MAINTAINER "QuenXML2 maintainers <maintainers@quenxml2.invalid>" CACHE STRING
  "Who answers for the packages: name and address")
set(CPACK_PACKAGE_CONTACT "${QUENXML2_PACKAGE_MAINTAINER}")
set(CPACK_PACKAGING_INSTALL_PREFIX "${CMAKE_INSTALL_PREFIX}")
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
  OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_ALL runtime development documentation)
set(CPACK_COMPONENTS_GROUPING ONE_PER_GROUP)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)

set(quenxml2_text "A tree of typed values addressed by path, a document layer of handles on nodes,
XML messages, and XSL transformation, over Xerces-C and Xalan-C. Every class
exists for UTF-8 and for UTF-16.")
# quenxml2_package(COMPONENT NAME SECTION SUMMARY LAST): the fields that the three packages share.
function(quenxml2_package component name section summary last)
  string(TOUPPER ${component} upper)
  set(CPACK_DEBIAN_${upper}_PACKAGE_NAME ${name} PARENT_SCOPE)
  set(CPACK_DEBIAN_${upper}_PACKAGE_SECTION ${section} PARENT_SCOPE)
  set(CPACK_DEBIAN_${upper}_DESCRIPTION "${summary}\n${quenxml2_text}\n\n${last}" PARENT_SCOPE)
  set(doc "${CMAKE_INSTALL_DATAROOTDIR}/doc/${name}")
  install(FILES cmake/debian/copyright DESTINATION ${doc} COMPONENT ${component} EXCLUDE_FROM_ALL)
  install(FILES "${quenxml2_changelog}.gz" DESTINATION ${doc} COMPONENT ${component} EXCLUDE_FROM_ALL)
endfunction()

# SOURCE_DATE_EPOCH, where it is set, makes the packages the same each time.
string(TIMESTAMP quenxml2_changelog_date "%a, %d %b %Y %H:%M:%S +0000" UTC)
set(quenxml2_changelog "${CMAKE_CURRENT_BINARY_DIR}/debian/changelog")
configure_file(cmake/debian/changelog.in "${quenxml2_changelog}" @ONLY)
execute_process(COMMAND gzip -9nkf "${quenxml2_changelog}" COMMAND_ERROR_IS_FATAL ANY)

quenxml2_package(runtime libquenxml2-${PROJECT_VERSION_MAJOR} libs
  "XML by path, by node, as messages and through XSLT" "This package has the shared library.")
quenxml2_package(development libquenxml2-dev libdevel
  "XML by path, by node, as messages and through XSLT (development)"
  "This package has headers, the CMake package QuenXML2 and quenxml2.pc.")
quenxml2_package(documentation libquenxml2-doc doc
  "XML by path, by node, as messages and through XSLT (documentation)"
  "This package has the reference and the documents.")

set(CPACK_DEBIAN_RUNTIME_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS_POLICY ">=")
# Of the engines the headers need Xerces-C's.
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS
  "libquenxml2-${PROJECT_VERSION_MAJOR} (= ${PROJECT_VERSION}), libxerces-c-dev (>= 3.2)")
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SUGGESTS libquenxml2-doc)
set(CPACK_DEBIAN_DOCUMENTATION_PACKAGE_ARCHITECTURE all)
include(CPack)
