# kadata_warnings(target): the project's own code is clean under these; other people's headers are not asked.
function(kadata_warnings target)
    target_compile_options(${target} PRIVATE -Wall -Wextra -Wpedantic -Wconversion)
    if(KADATA_WERROR)
        target_compile_options(${target} PRIVATE -Werror)
    endif()
endfunction()
