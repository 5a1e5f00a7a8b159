# `cmake --install`: headers, both libraries, what find_package(zmatrix) and pkg-config read, the documents. The command comes with
# its manual page and completions (hosts/zmatrix).
# Everything that is found through another file is named relative to it, so that the installed folder can be moved.
include(CMakePackageConfigHelpers)

install(DIRECTORY ${PROJECT_SOURCE_DIR}/include/zmatrix DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} FILES_MATCHING PATTERN "*.h")
install(TARGETS zmatrix zmatrix_static EXPORT zmatrixTargets
        RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR}
        LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
        ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR})
foreach(file LICENSE README.md CHANGELOG.md)
  install(FILES ${PROJECT_SOURCE_DIR}/${file} DESTINATION ${CMAKE_INSTALL_DOCDIR})
endforeach()
install(DIRECTORY ${PROJECT_SOURCE_DIR}/docs DESTINATION ${CMAKE_INSTALL_DOCDIR} FILES_MATCHING PATTERN "*.md")

set(ZMATRIX_CONFIG_DIR ${CMAKE_INSTALL_LIBDIR}/cmake/zmatrix)
configure_package_config_file(${CMAKE_CURRENT_LIST_DIR}/zmatrixConfig.cmake.in ${PROJECT_BINARY_DIR}/zmatrixConfig.cmake
                              INSTALL_DESTINATION ${ZMATRIX_CONFIG_DIR})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/zmatrixConfigVersion.cmake COMPATIBILITY SameMinorVersion)
install(FILES ${PROJECT_BINARY_DIR}/zmatrixConfig.cmake ${PROJECT_BINARY_DIR}/zmatrixConfigVersion.cmake
        DESTINATION ${ZMATRIX_CONFIG_DIR})
install(EXPORT zmatrixTargets NAMESPACE zmatrix:: DESTINATION ${ZMATRIX_CONFIG_DIR})

# pkg-config. A folder given as an absolute path stays what it is; otherwise the prefix follows the .pc file.
if(IS_ABSOLUTE "${CMAKE_INSTALL_LIBDIR}")
  set(ZMATRIX_PC_PREFIX "${CMAKE_INSTALL_PREFIX}")
  set(ZMATRIX_PC_LIBDIR "${CMAKE_INSTALL_LIBDIR}")
else()
  file(RELATIVE_PATH ZMATRIX_PC_UP "/prefix/${CMAKE_INSTALL_LIBDIR}/pkgconfig" "/prefix")
  string(REGEX REPLACE "/$" "" ZMATRIX_PC_UP "${ZMATRIX_PC_UP}")
  set(ZMATRIX_PC_PREFIX "\${pcfiledir}/${ZMATRIX_PC_UP}")
  set(ZMATRIX_PC_LIBDIR "\${prefix}/${CMAKE_INSTALL_LIBDIR}")
endif()
if(IS_ABSOLUTE "${CMAKE_INSTALL_INCLUDEDIR}")
  set(ZMATRIX_PC_INCLUDEDIR "${CMAKE_INSTALL_INCLUDEDIR}")
else()
  set(ZMATRIX_PC_INCLUDEDIR "\${prefix}/${CMAKE_INSTALL_INCLUDEDIR}")
endif()
configure_file(${CMAKE_CURRENT_LIST_DIR}/zmatrix.pc.in ${PROJECT_BINARY_DIR}/zmatrix.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/zmatrix.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
