# One interface target for the warnings that every target of the program compiles with.
add_library(korvinth_warnings INTERFACE)
target_compile_options(korvinth_warnings INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wnon-virtual-dtor -Werror)
