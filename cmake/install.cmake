# What an installed package holds: the library, its public headers under include/qsv_3dprocess with their
# folders, a CMake package, a pkg-config file, and qsvtin with its manual when it was built. All of it may be
# moved. Three components: runtime (the dynamic library), development, tool.
include(CMakePackageConfigHelpers)

set(qsv_include_dir ${CMAKE_INSTALL_INCLUDEDIR}/qsv_3dprocess)
set(qsv_package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/qsv_3dprocess)

install(TARGETS qsv_3dprocess EXPORT qsv_3dprocessTargets
  RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT runtime
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT runtime NAMELINK_COMPONENT development
  ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT development)
foreach(header IN LISTS QSV_PUBLIC_HEADERS)
  get_filename_component(folder ${header} DIRECTORY)
  install(FILES ${header} DESTINATION ${qsv_include_dir}/${folder} COMPONENT development)
endforeach()

install(EXPORT qsv_3dprocessTargets NAMESPACE qsv:: DESTINATION ${qsv_package_dir} COMPONENT development)
configure_package_config_file(cmake/qsv_3dprocessConfig.cmake.in qsv_3dprocessConfig.cmake
  INSTALL_DESTINATION ${qsv_package_dir}
  NO_SET_AND_CHECK_MACRO)
write_basic_package_version_file(qsv_3dprocessConfigVersion.cmake COMPATIBILITY SameMajorVersion)
install(FILES
  ${CMAKE_CURRENT_BINARY_DIR}/qsv_3dprocessConfig.cmake
  ${CMAKE_CURRENT_BINARY_DIR}/qsv_3dprocessConfigVersion.cmake
  DESTINATION ${qsv_package_dir} COMPONENT development)

# The prefix of the pkg-config file is where the file itself lies.
file(RELATIVE_PATH QSV_PREFIX_FROM_PKGCONFIG
  ${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig ${CMAKE_INSTALL_PREFIX})
set(QSV_PKGCONFIG_DEFINES "")
if(NOT BUILD_SHARED_LIBS)
  set(QSV_PKGCONFIG_DEFINES "-DQSV_STATIC")
endif()
configure_file(cmake/qsv_3dprocess.pc.in qsv_3dprocess.pc @ONLY)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/qsv_3dprocess.pc
  DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig COMPONENT development)

if(TARGET qsvtin)
  # In /usr the loader finds the library by itself.
  if(NOT CMAKE_INSTALL_PREFIX STREQUAL "/usr")
    file(RELATIVE_PATH qsv_lib_from_bin ${CMAKE_INSTALL_FULL_BINDIR} ${CMAKE_INSTALL_FULL_LIBDIR})
    set_target_properties(qsvtin PROPERTIES INSTALL_RPATH "$ORIGIN/${qsv_lib_from_bin}")
  endif()
  install(TARGETS qsvtin RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT tool)
  if(TARGET qsvtin_manual)
    set(qsv_manual_dir ${PROJECT_BINARY_DIR}/host/generated)
    install(FILES ${qsv_manual_dir}/qsvtin.1.gz DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 COMPONENT tool)
    install(FILES ${qsv_manual_dir}/qsvtin.bash RENAME qsvtin
      DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions COMPONENT tool)
    install(FILES ${qsv_manual_dir}/qsvtin.zsh RENAME _qsvtin
      DESTINATION ${CMAKE_INSTALL_DATADIR}/zsh/vendor-completions COMPONENT tool)
    install(FILES ${qsv_manual_dir}/qsvtin.fish
      DESTINATION ${CMAKE_INSTALL_DATADIR}/fish/vendor_completions.d COMPONENT tool)
  endif()
endif()
