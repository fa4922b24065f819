# kolt_set_warnings(target): the project's warning policy.
function(kolt_set_warnings target)
    target_compile_options(${target} PRIVATE -Wall -Wextra)
    if(KOLT_WERROR)
        target_compile_options(${target} PRIVATE -Werror)
    endif()
endfunction()
