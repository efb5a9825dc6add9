# lantern_library(NAME FOLDER deps... [EXCLUDE files...])
# Builds every .cpp below FOLDER into a static library, so that a new class only
# needs its two files and no edit of a build script.
function(lantern_library name folder)
  cmake_parse_arguments(ARG "" "" "EXCLUDE" ${ARGN})
  file(GLOB_RECURSE sources CONFIGURE_DEPENDS
       ${CMAKE_SOURCE_DIR}/${folder}/*.cpp ${CMAKE_SOURCE_DIR}/${folder}/*.h
       ${CMAKE_SOURCE_DIR}/${folder}/*.qrc)
  foreach(excluded IN LISTS ARG_EXCLUDE)
    # The header goes too: its moc code would otherwise land in the library
    # and pull in the class that only the excluded source defines.
    string(REGEX REPLACE "\\.cpp$" ".h" excluded_header ${excluded})
    list(REMOVE_ITEM sources ${CMAKE_SOURCE_DIR}/${folder}/${excluded} ${CMAKE_SOURCE_DIR}/${folder}/${excluded_header})
  endforeach()
  add_library(${name} STATIC ${sources})
  target_include_directories(${name} PUBLIC ${CMAKE_SOURCE_DIR})
  target_link_libraries(${name} PUBLIC ${ARG_UNPARSED_ARGUMENTS})
  target_compile_options(${name} PRIVATE -Wall -Wextra)
endfunction()
