# SPDX-License-Identifier: Apache-2.0
# corvane_warnings(TARGET): the warnings that all of our own code builds under.
function(corvane_warnings target)
    target_compile_options(${target} PRIVATE
        -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Wold-style-cast -Wcast-align
        -Woverloaded-virtual -Wduplicated-cond -Wlogical-op -Wformat=2)
    if(CORVANE_WERROR)
        target_compile_options(${target} PRIVATE -Werror)
    endif()
endfunction()

if(CORVANE_SANITIZE)
    add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=all
                        -fno-omit-frame-pointer)
    add_link_options(-fsanitize=address,undefined)
endif()
