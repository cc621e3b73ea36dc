# cpack makes Debian packages, one a component: libqsv-3dprocess1 (the number is that of the interface),
# libqsv-3dprocess-dev and qsvtin. script/package does it from the beginning.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME qsv-3dprocess)
set(CPACK_PACKAGE_CONTACT "QSV_3DPROCESS developers <qsv-3dprocess@example.invalid>" CACHE STRING
  "Name and address that packages carry")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "")   # each package has its own, below
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
  OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_COMPONENTS_ALL runtime development)
if(TARGET qsvtin)
  list(APPEND CPACK_COMPONENTS_ALL tool)
endif()

set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_ENABLE_COMPONENT_DEPENDS ON)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${PROJECT_BINARY_DIR})

set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(qsv_debian_dir ${PROJECT_BINARY_DIR}/debian)
file(WRITE ${qsv_debian_dir}/triggers "activate-noawait ldconfig\n")
set(CPACK_DEBIAN_RUNTIME_PACKAGE_CONTROL_EXTRA ${qsv_debian_dir}/triggers)
set(CPACK_POST_BUILD_SCRIPTS ${CMAKE_CURRENT_LIST_DIR}/without_ldconfig_calls.cmake)

# The first line is the summary of the package.
set(qsv_about "QSV_3DPROCESS turns survey points and breaklines into a triangulated
terrain, edits it, asks it for heights, areas and normals, draws it and
stores it. The same points give the same triangles everywhere.")

set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME libqsv-3dprocess${PROJECT_VERSION_MAJOR})
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SHLIBDEPS ON)
set(CPACK_COMPONENT_RUNTIME_DESCRIPTION "triangulated terrain from survey points and breaklines
${qsv_about}
This package holds the dynamic library.")

set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME libqsv-3dprocess-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_COMPONENT_DEVELOPMENT_DESCRIPTION "triangulated terrain, for those who build on it
${qsv_about}
This package holds the headers, a CMake package and a pkg-config file.")
set(CPACK_COMPONENT_DEVELOPMENT_DEPENDS runtime)

set(CPACK_DEBIAN_TOOL_PACKAGE_NAME qsvtin)
set(CPACK_DEBIAN_TOOL_PACKAGE_SECTION science)
set(CPACK_DEBIAN_TOOL_PACKAGE_SHLIBDEPS ON)
set(CPACK_COMPONENT_TOOL_DESCRIPTION "triangulated terrain from the command line
${qsv_about}
This package holds qsvtin, its manual page, and completion for shells.")
set(CPACK_COMPONENT_TOOL_DEPENDS runtime)

# What changed: in the words of the project, and that this is a package of that version.
function(qsv_install_changelogs package component)
  install(FILES ${qsv_debian_dir}/changelog.gz ${qsv_debian_dir}/changelog.Debian.gz
    DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/${package} COMPONENT ${component})
endfunction()
find_program(QSV_GZIP gzip)
if(QSV_GZIP AND CMAKE_INSTALL_PREFIX STREQUAL "/usr")
  string(TIMESTAMP qsv_date "%a, %d %b %Y %H:%M:%S +0000" UTC)   # that of SOURCE_DATE_EPOCH, where it is set
  file(WRITE ${qsv_debian_dir}/changelog.Debian
    "qsv-3dprocess (${PROJECT_VERSION}-${CPACK_DEBIAN_PACKAGE_RELEASE}) unstable; urgency=medium\n\n"
    "  * Packages of version ${PROJECT_VERSION}; changelog.gz tells what is new in it.\n\n"
    " -- ${CPACK_PACKAGE_CONTACT}  ${qsv_date}\n")
  configure_file(${PROJECT_SOURCE_DIR}/CHANGELOG.md ${qsv_debian_dir}/changelog COPYONLY)
  foreach(changelog changelog changelog.Debian)
    execute_process(COMMAND ${QSV_GZIP} -9nc ${changelog} OUTPUT_FILE ${changelog}.gz
      WORKING_DIRECTORY ${qsv_debian_dir} COMMAND_ERROR_IS_FATAL ANY)
  endforeach()
  qsv_install_changelogs(${CPACK_DEBIAN_RUNTIME_PACKAGE_NAME} runtime)
  qsv_install_changelogs(${CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME} development)
  if(TARGET qsvtin)
    qsv_install_changelogs(${CPACK_DEBIAN_TOOL_PACKAGE_NAME} tool)
  endif()
endif()

include(CPack)
