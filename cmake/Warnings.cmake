# kolt_set_warnings(target): the project's warning policy.
function(kolt_set_warnings target)
    target_compile_options(${target} PRIVATE -Wall -Wextra)
    if(KOLT_WERROR)
        target_compile_options(${target} PRIVATE -Werror)
    endif()
    if(KOLT_SANITIZE AND CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
        # GCC's flow analysis under the sanitizers reports uninitialised members inside
        # libstdc++'s <regex>; it stays a warning there.
        target_compile_options(${target} PRIVATE -Wno-error=maybe-uninitialized)
        # At -O1 it also takes a local of std::string for a variable that libjpeg's longjmp could
        # clobber; the jump never crosses one.
        target_compile_options(${target} PRIVATE -Wno-error=clobbered)
    endif()
endfunction()
