# kadata_resources(target file.rc): compiles a host's resources into <program>.res beside the program, where the library finds them.
function(kadata_resources target script)
    find_program(KADATA_WINDRES x86_64-w64-mingw32-windres REQUIRED)
    set(source ${CMAKE_CURRENT_SOURCE_DIR}/${script})
    set(compiled ${CMAKE_CURRENT_BINARY_DIR}/${target}.res)
    add_custom_command(
        OUTPUT ${compiled}
        COMMAND ${KADATA_WINDRES} -c 65001 -O res -i ${source} -o ${compiled}
        DEPENDS ${source}
        VERBATIM)
    add_custom_target(${target}_res ALL DEPENDS ${compiled})
    add_dependencies(${target} ${target}_res)
    if(NOT CMAKE_RUNTIME_OUTPUT_DIRECTORY STREQUAL "")
        add_custom_command(TARGET ${target} POST_BUILD COMMAND ${CMAKE_COMMAND} -E copy_if_different ${compiled} $<TARGET_FILE_DIR:${target}>/)
    endif()
endfunction()
