# Runs when CPack has installed the components and before it packs them. Gives each tree the
# changelog and the copyright that Debian asks for, and compresses them and the manual pages.

foreach(component IN LISTS CPACK_COMPONENTS_ALL)
  string(TOUPPER ${component} upper)
  set(tree ${CPACK_TEMPORARY_DIRECTORY}/${component}/usr/share)
  set(documents ${tree}/doc/${CPACK_DEBIAN_${upper}_PACKAGE_NAME})
  file(COPY ${CPACK_KVGEOM_SOURCES}/packaging/debian/changelog
            ${CPACK_KVGEOM_SOURCES}/packaging/debian/copyright DESTINATION ${documents})
  file(RENAME ${documents}/changelog ${documents}/changelog.Debian)
  # That is what the copyright file says.
  file(REMOVE ${documents}/LICENSE)
  file(GLOB_RECURSE compressed ${tree}/man/*.1 ${documents}/changelog.Debian)
  foreach(file IN LISTS compressed)
    execute_process(COMMAND gzip -9n ${file} COMMAND_ERROR_IS_FATAL ANY)
  endforeach()
endforeach()
