# Read once for each kind of package: the Debian packages are the library alone, the archives hold the demo too.
if(CPACK_GENERATOR STREQUAL DEB)
    set(CPACK_COMPONENTS_ALL runtime development)
    set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
else()
    list(GET CPACK_INSTALL_CMAKE_PROJECTS 0 build)
    set(CPACK_INSTALL_CMAKE_PROJECTS ${build} KaData ALL / ${build} KaData demo /)
endif()
