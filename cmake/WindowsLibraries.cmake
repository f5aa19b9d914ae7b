# What no one packages for this compiler is built from its source package. libtiff becomes part of KaData.dll; nothing of it is
# exported. Lua is a library of its own beside it. scripts/fetch-source puts the sources where they are looked for.
set(KADATA_TIFF_SOURCE ${PROJECT_SOURCE_DIR}/build/sources/tiff CACHE PATH "libtiff from the source package")
set(KADATA_LUA_SOURCE ${PROJECT_SOURCE_DIR}/build/sources/lua5.1 CACHE PATH "Lua 5.1 from the source package")
if(NOT EXISTS ${KADATA_TIFF_SOURCE}/CMakeLists.txt)
    message(FATAL_ERROR "There is no libtiff in ${KADATA_TIFF_SOURCE}: run scripts/fetch-source tiff")
endif()
if(NOT EXISTS ${KADATA_LUA_SOURCE}/src/lua.h)
    message(FATAL_ERROR "There is no Lua in ${KADATA_LUA_SOURCE}: run scripts/fetch-source lua5.1")
endif()
find_library(ZLIB_LIBRARY_RELEASE NAMES libz.a REQUIRED)  # and not the import library beside it: it becomes part of the DLL
set(KADATA_MINIZIP_SOURCE ${PROJECT_SOURCE_DIR}/build/sources/minizip CACHE PATH "minizip from the source package")
if(NOT EXISTS ${KADATA_MINIZIP_SOURCE}/unzip.c)
    message(FATAL_ERROR "There is no minizip in ${KADATA_MINIZIP_SOURCE}: run scripts/fetch-source minizip")
endif()

# kadata_foreign_library(target source): quietly, and with its options taken from the variables of the caller.
function(kadata_foreign_library target source)
    set(CMAKE_POLICY_DEFAULT_CMP0077 NEW)
    set(CMAKE_MESSAGE_LOG_LEVEL WARNING)
    set(BUILD_SHARED_LIBS OFF)
    add_subdirectory(${source} ${CMAKE_CURRENT_BINARY_DIR}/sources/${target} EXCLUDE_FROM_ALL SYSTEM)
    target_compile_options(${target} PRIVATE -w)
endfunction()

enable_language(C)
# Tags are read, never pixels: no codec that needs another library.
foreach(part cxx jbig jpeg lerc libdeflate lzma old-jpeg pixarlog webp zlib zstd tiff-contrib tiff-docs tiff-install tiff-opengl
             tiff-tests tiff-tools)
    set(${part} OFF)
endforeach()
kadata_foreign_library(tiff ${KADATA_TIFF_SOURCE})

# Found at run time, so nothing links it.
file(GLOB lua_sources ${KADATA_LUA_SOURCE}/src/*.c)
list(FILTER lua_sources EXCLUDE REGEX "/(lua|luac|print)\\.c$")  # programs
add_library(lua_runtime SHARED ${lua_sources})
target_compile_definitions(lua_runtime PRIVATE LUA_BUILD_AS_DLL)
target_compile_options(lua_runtime PRIVATE -w)
set_target_properties(lua_runtime PROPERTIES OUTPUT_NAME lua5.1 PREFIX "" RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/bin)
find_package(ZLIB REQUIRED)
# Of minizip the part that reads.
add_library(minizip STATIC EXCLUDE_FROM_ALL ${KADATA_MINIZIP_SOURCE}/ioapi.c ${KADATA_MINIZIP_SOURCE}/unzip.c)
target_compile_options(minizip PRIVATE -w)
target_include_directories(minizip SYSTEM PUBLIC ${KADATA_MINIZIP_SOURCE})
target_link_libraries(minizip PUBLIC ZLIB::ZLIB)
