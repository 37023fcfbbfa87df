# SPDX-License-Identifier: Apache-2.0
# What the library stands on, and what its tests and benchmarks need. Debian's Xerces-C and Xalan-C bring
# no CMake configuration of their own, so CMake's find modules serve.
find_package(XercesC 3.2 REQUIRED)
find_package(XalanC 1.12 REQUIRED)
find_package(OpenSSL 3.0 REQUIRED COMPONENTS Crypto)

# quenxml2_option(NAME TEXT NEEDS): an option that is on by default in a top-level build whose needs are met.
macro(quenxml2_option name text needs)
  set(quenxml2_default ${PROJECT_IS_TOP_LEVEL})
  if(NOT "${needs}" STREQUAL "" AND quenxml2_default)
    if("${needs}" STREQUAL "GTest")
      find_package(GTest QUIET)
      set(quenxml2_default ${GTest_FOUND})
    elseif("${needs}" STREQUAL "Bench")
      find_package(benchmark QUIET)
      find_package(pugixml QUIET)
      find_package(LibXml2 QUIET)
      if(benchmark_FOUND AND pugixml_FOUND AND LibXml2_FOUND)
        set(quenxml2_default ON)
      else()
        set(quenxml2_default OFF)
      endif()
    elseif("${needs}" STREQUAL "Fuzz")
      set(quenxml2_default OFF)
    endif()
  endif()
  option(${name} "${text}" ${quenxml2_default})
endmacro()
