# The documents, and what CPack makes of the installed components: four Debian packages, or a zip for
# Windows. scripts/package runs it.

# Made by scripts/docs; left out where it isn't there.
set(KVGEOM_HTML
    ${PROJECT_SOURCE_DIR}/build/docs
    CACHE PATH "The manual as HTML, to be installed")
install(
  FILES README.md CHANGELOG.md LICENSE
  DESTINATION ${CMAKE_INSTALL_DOCDIR}
  COMPONENT documentation)
install(
  DIRECTORY docs
  DESTINATION ${CMAKE_INSTALL_DOCDIR}
  COMPONENT documentation
  FILES_MATCHING
  PATTERN *.md
  PATTERN *.png
  PATTERN *.svg)
install(
  DIRECTORY ${KVGEOM_HTML}/
  DESTINATION ${CMAKE_INSTALL_DOCDIR}/html
  COMPONENT documentation
  OPTIONAL
  PATTERN *.tag EXCLUDE)

# Part of another project, it is packed as that one says.
if(NOT PROJECT_IS_TOP_LEVEL)
  return()
endif()

set(CPACK_PACKAGE_NAME kvgeom)
# Each package has its own.
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "")
set(CPACK_PACKAGE_VENDOR "The kvgeom authors")
set(CPACK_RESOURCE_FILE_LICENSE ${PROJECT_SOURCE_DIR}/LICENSE)
set(CPACK_VERBATIM_VARIABLES ON)

if(WIN32)
  set(CPACK_GENERATOR ZIP)
  set(CPACK_STRIP_FILES ON)
  math(EXPR kvgeom_bits "8 * ${CMAKE_SIZEOF_VOID_P}")
  set(CPACK_PACKAGE_FILE_NAME kvgeom-${PROJECT_VERSION}-windows${kvgeom_bits})
  include(CPack)
  return()
endif()

set(CPACK_GENERATOR DEB)
set(CPACK_COMPONENTS_ALL runtime development documentation)
if(KVGEOM_BUILD_PROBE)
  list(APPEND CPACK_COMPONENTS_ALL kvprobe)
endif()
set(CPACK_DEB_COMPONENT_INSTALL ON)
# The files know where they will be: gdb looks for its printers under the library's own path.
set(CPACK_SET_DESTDIR ON)
set(CPACK_INSTALL_PREFIX ${CMAKE_INSTALL_PREFIX})
# Completes the trees by what Debian asks of a package.
set(CPACK_PRE_BUILD_SCRIPTS ${PROJECT_SOURCE_DIR}/cmake/CompleteDebianTrees.cmake)
set(CPACK_KVGEOM_SOURCES ${PROJECT_SOURCE_DIR})

set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_PACKAGE_MAINTAINER "The kvgeom authors <kvgeom@packages.invalid>")
set(CPACK_DEBIAN_PACKAGE_SOURCE kvgeom)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# kvprobe's own library is found here, and in no installed package.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${PROJECT_BINARY_DIR}/kvgeom)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
# Strips the packages and puts what they lose into packages of their own.
set(CPACK_DEBIAN_DEBUGINFO_PACKAGE ON)

set(kvgeom_runtime libkvgeom${PROJECT_VERSION_MAJOR})
set(kvgeom_debian_version ${PROJECT_VERSION}-${CPACK_DEBIAN_PACKAGE_RELEASE})
set(kvgeom_about
    "kvgeom answers elementary questions of 3D models: may this pipe touch that\nobject? Its records are plain values, its operations never throw, and the same\ninputs give the same bits in every build."
)

set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME ${kvgeom_runtime})
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_RUNTIME_DESCRIPTION
    "geometry kernel of plain value records\n${kvgeom_about}\n\nThis is the library that programs run with.")

# Packages of programs that are linked with the library will depend on this one, and the linker's cache
# learns of it.
set(control ${PROJECT_BINARY_DIR}/control)
file(WRITE ${control}/shlibs
     "libkvgeom ${PROJECT_VERSION_MAJOR} ${kvgeom_runtime} (>= ${PROJECT_VERSION})\n")
file(WRITE ${control}/triggers "activate-noawait ldconfig\n")
set(CPACK_DEBIAN_RUNTIME_PACKAGE_CONTROL_EXTRA ${control}/shlibs ${control}/triggers)

set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME libkvgeom-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS "${kvgeom_runtime} (= ${kvgeom_debian_version})")
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SUGGESTS kvgeom-doc)
set(CPACK_DEBIAN_DEVELOPMENT_DESCRIPTION
    "geometry kernel of plain value records - development files\n${kvgeom_about}\n\nThese are the headers and what CMake and pkg-config need.")

set(CPACK_DEBIAN_KVPROBE_PACKAGE_NAME kvprobe)
set(CPACK_DEBIAN_KVPROBE_PACKAGE_SECTION graphics)
set(CPACK_DEBIAN_KVPROBE_PACKAGE_DEPENDS "${kvgeom_runtime} (= ${kvgeom_debian_version})")
set(CPACK_DEBIAN_KVPROBE_DESCRIPTION
    "tell which objects of a 3D model a probe may touch\nkvprobe reads a model in any format that Assimp knows and tells which of its\nobjects a pipe, a fence, a window, a cone, a frustum or a prism may touch,\nholds or crosses, as a table, as JSON and as a drawing.")

set(CPACK_DEBIAN_DOCUMENTATION_PACKAGE_NAME kvgeom-doc)
set(CPACK_DEBIAN_DOCUMENTATION_PACKAGE_SECTION doc)
set(CPACK_DEBIAN_DOCUMENTATION_PACKAGE_ARCHITECTURE all)
set(CPACK_DEBIAN_DOCUMENTATION_PACKAGE_SHLIBDEPS OFF)
set(CPACK_DEBIAN_DOCUMENTATION_DESCRIPTION
    "geometry kernel of plain value records - documentation\n${kvgeom_about}\n\nThis is the manual, with the error bounds of all operations.")

include(CPack)
