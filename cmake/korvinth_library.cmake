# korvinth_library(NAME SOURCES ... LINKS ...): one static library for a room.
# Headers are named from the root of the tree: #include "term/math_parser.h".
function(korvinth_library name)
    cmake_parse_arguments(ARG "" "" "SOURCES;LINKS" ${ARGN})
    add_library(${name} STATIC ${ARG_SOURCES})
    target_include_directories(${name} PUBLIC ${PROJECT_SOURCE_DIR})
    target_link_libraries(${name} PUBLIC ${ARG_LINKS} PRIVATE korvinth_warnings)
endfunction()
