# The one dynamic library. Its objects are a target of their own so that tests and fuzz targets of inner parts can link them.
find_package(Threads REQUIRED)
if(WIN32)
    include(cmake/WindowsLibraries.cmake)
    set(KADATA_NEEDED ntdll synchronization gdi32 gdiplus msimg32 version tiff minizip ZLIB::ZLIB Threads::Threads)
else()
    find_package(PkgConfig REQUIRED)
    pkg_check_modules(ICU REQUIRED IMPORTED_TARGET icu-i18n icu-uc)
    pkg_check_modules(SQLITE REQUIRED IMPORTED_TARGET sqlite3)
    pkg_check_modules(TIFF REQUIRED libtiff-4>=4.5)  # its headers: it is loaded at its first use
    target_include_directories(kadata_objects SYSTEM PRIVATE ${TIFF_INCLUDE_DIRS})
    pkg_check_modules(DW REQUIRED libdw>=0.188)  # likewise, with the first stack that is named
    target_include_directories(kadata_objects SYSTEM PRIVATE ${DW_INCLUDE_DIRS})
    pkg_check_modules(SDL2 REQUIRED sdl2>=2.26)  # likewise, with the first window on a display
    target_include_directories(kadata_objects SYSTEM PRIVATE ${SDL2_INCLUDE_DIRS})
    pkg_check_modules(CAIRO REQUIRED IMPORTED_TARGET cairo)
    pkg_check_modules(PNG REQUIRED IMPORTED_TARGET libpng)
    pkg_check_modules(PANGO REQUIRED IMPORTED_TARGET pangocairo pangoft2 fontconfig)
    find_package(ZLIB REQUIRED)
    pkg_check_modules(MINIZIP REQUIRED IMPORTED_TARGET minizip)
    set(KADATA_NEEDED PkgConfig::ICU PkgConfig::SQLITE PkgConfig::CAIRO PkgConfig::PNG PkgConfig::PANGO PkgConfig::MINIZIP ZLIB::ZLIB
                      Threads::Threads ${CMAKE_DL_LIBS})
endif()

target_link_libraries(kadata_objects PRIVATE ${KADATA_NEEDED})

add_library(KaData SHARED)
add_library(KaData::KaData ALIAS KaData)
target_link_libraries(KaData PRIVATE kadata_objects ${KADATA_NEEDED})
target_compile_features(KaData PUBLIC cxx_std_20)
target_include_directories(
    KaData PUBLIC $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}/include>
                  $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}/platform>
                  $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}/platform/afx>
                  $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>
                  $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}/kadata/platform>
                  $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}/kadata/platform/afx>)
if(WIN32)
    set_target_properties(KaData PROPERTIES OUTPUT_NAME KaData PREFIX "")
    target_compile_definitions(KaData PUBLIC ${KADATA_WINDOWS_DEFINITIONS})
    target_link_libraries(KaData PUBLIC gdi32 gdiplus msimg32)  # for what is inline in the public headers
    add_dependencies(KaData lua_runtime)
    configure_file(cmake/KaData.rc.in KaData.rc @ONLY)  # its version
    kadata_resources(KaData ${PROJECT_BINARY_DIR}/KaData.rc)
    include(cmake/WindowsRuntime.cmake)
else()
    set_target_properties(KaData PROPERTIES VERSION ${PROJECT_VERSION} SOVERSION ${PROJECT_VERSION_MAJOR})
    target_include_directories(KaData PUBLIC $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}/platform/win32>
                                             $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}/kadata/platform/win32>)
    if(NOT KADATA_SANITIZE)  # their run-time is in the program
        target_link_options(KaData PRIVATE -Wl,--no-undefined)
    endif()
endif()
