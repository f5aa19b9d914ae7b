# Library, headers, CMake package and pkg-config file; all of them find each other relative to where they stand.
include(CMakePackageConfigHelpers)

set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/KaData)
install(TARGETS KaData EXPORT KaDataTargets RUNTIME COMPONENT runtime LIBRARY COMPONENT runtime NAMELINK_COMPONENT development
        ARCHIVE COMPONENT development)
install(DIRECTORY include/kadata DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} COMPONENT development)
install(FILES platform/kadata_export.h DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/kadata/platform COMPONENT development)
set(platform_headers platform/afx)
if(WIN32)
    install(FILES ${KADATA_RUNTIME_DLLS} $<TARGET_FILE:lua_runtime> TYPE BIN COMPONENT runtime)
    install(FILES ${KADATA_LUA_SOURCE}/COPYRIGHT DESTINATION ${CMAKE_INSTALL_DOCDIR} RENAME lua5.1-copyright.txt
            COMPONENT runtime)
else()
    list(APPEND platform_headers platform/win32)
endif()
install(DIRECTORY ${platform_headers} DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/kadata/platform COMPONENT development
        FILES_MATCHING PATTERN "*.h")

install(EXPORT KaDataTargets NAMESPACE KaData:: DESTINATION ${package_dir} COMPONENT development)
configure_package_config_file(cmake/KaDataConfig.cmake.in ${CMAKE_CURRENT_BINARY_DIR}/KaDataConfig.cmake
                              INSTALL_DESTINATION ${package_dir})
write_basic_package_version_file(${CMAKE_CURRENT_BINARY_DIR}/KaDataConfigVersion.cmake COMPATIBILITY SameMajorVersion)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/KaDataConfig.cmake ${CMAKE_CURRENT_BINARY_DIR}/KaDataConfigVersion.cmake
        DESTINATION ${package_dir} COMPONENT development)

install(FILES README.md CHANGELOG.md DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT development)
install(DIRECTORY docs DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT development)

if(WIN32)  # no one asks pkg-config there
    return()
endif()
file(RELATIVE_PATH KADATA_PREFIX_FROM_PC /${CMAKE_INSTALL_LIBDIR}/pkgconfig /)
configure_file(cmake/kadata.pc.in ${CMAKE_CURRENT_BINARY_DIR}/kadata.pc @ONLY)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/kadata.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig COMPONENT development)
