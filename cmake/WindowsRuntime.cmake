# The compiler's runtime as dynamic libraries that stand beside KaData.dll: one copy of it serves the library and its hosts, so that an
# exception may go from one to the other. The system's own wine and Windows have none of them.
set(KADATA_RUNTIME_DLLS)
foreach(name libstdc++-6.dll libgcc_s_seh-1.dll libwinpthread-1.dll)
    execute_process(
        COMMAND ${CMAKE_CXX_COMPILER} -print-file-name=${name}
        OUTPUT_VARIABLE place
        OUTPUT_STRIP_TRAILING_WHITESPACE)
    if(NOT EXISTS ${place})
        find_file(runtime_${name} ${name} PATHS /usr/x86_64-w64-mingw32/lib NO_DEFAULT_PATH NO_CMAKE_FIND_ROOT_PATH REQUIRED)
        set(place ${runtime_${name}})
    endif()
    list(APPEND KADATA_RUNTIME_DLLS ${place})
endforeach()
file(COPY ${KADATA_RUNTIME_DLLS} DESTINATION ${PROJECT_BINARY_DIR}/bin)
set_target_properties(KaData PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/bin)
