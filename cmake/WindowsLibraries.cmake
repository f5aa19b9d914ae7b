# What no one packages for this compiler is built from its source package and becomes part of KaData.dll; nothing of it is exported.
# scripts/fetch-source puts the sources where they are looked for.
set(KADATA_TIFF_SOURCE ${PROJECT_SOURCE_DIR}/build/sources/tiff CACHE PATH "libtiff from the source package")
if(NOT EXISTS ${KADATA_TIFF_SOURCE}/CMakeLists.txt)
    message(FATAL_ERROR "There is no libtiff in ${KADATA_TIFF_SOURCE}: run scripts/fetch-source tiff")
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
