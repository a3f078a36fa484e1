# Warning policy shared by every target of the project: -Wall -Wextra, kept at zero.
function(quorvane_set_warnings target)
    target_compile_options(${target} PRIVATE -Wall -Wextra)
    if(QUORVANE_WERROR)
        target_compile_options(${target} PRIVATE -Werror)
    endif()
endfunction()
