# A host's own resources, compiled as the home platform does it: on Windows they are linked in; on Linux the library reads them from
# <program>.res beside the program. Resource-only modules are the same on both.
find_program(KADATA_WINDRES x86_64-w64-mingw32-windres REQUIRED)
find_program(KADATA_MODULE_LINKER x86_64-w64-mingw32-ld REQUIRED)

# kadata_resources(target script.rc [file...]): in the program, or beside it. Names in the script are relative to the script; the files
# are those that it reads.
function(kadata_resources target script)
    cmake_path(ABSOLUTE_PATH script BASE_DIRECTORY ${CMAKE_CURRENT_SOURCE_DIR} OUTPUT_VARIABLE source)
    cmake_path(GET source PARENT_PATH folder)
    if(WIN32)
        set(compiled ${CMAKE_CURRENT_BINARY_DIR}/${target}.resources.o)
        set(format coff)
        target_sources(${target} PRIVATE ${compiled})
    else()
        set(compiled ${CMAKE_CURRENT_BINARY_DIR}/${target}.res)
        set(format res)
    endif()
    add_custom_command(
        OUTPUT ${compiled}
        COMMAND ${KADATA_WINDRES} -c 65001 -I ${folder} -O ${format} -i ${source} -o ${compiled}
        DEPENDS ${source} ${ARGN}
        VERBATIM)
    add_custom_target(${target}_resources ALL DEPENDS ${compiled})
    add_dependencies(${target} ${target}_resources)
endfunction()

# kadata_resource_module(name script.rc [definition...]): <name>.dll, a module that holds nothing but resources.
function(kadata_resource_module name script)
    set(source ${CMAKE_CURRENT_SOURCE_DIR}/${script})
    set(object ${CMAKE_CURRENT_BINARY_DIR}/${name}.resources.o)
    set(module ${CMAKE_CURRENT_BINARY_DIR}/${name}.dll)
    list(TRANSFORM ARGN PREPEND -D OUTPUT_VARIABLE definitions)
    add_custom_command(
        OUTPUT ${module}
        COMMAND ${KADATA_WINDRES} -c 65001 ${definitions} -O coff -i ${source} -o ${object}
        COMMAND ${KADATA_MODULE_LINKER} -shared --entry=0 -o ${module} ${object}
        DEPENDS ${source}
        BYPRODUCTS ${object}
        VERBATIM)
    add_custom_target(${name}_module ALL DEPENDS ${module})
endfunction()
