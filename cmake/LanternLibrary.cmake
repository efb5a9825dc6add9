# lantern_library(NAME FOLDER deps... [EXCLUDE files...])
# Builds every .cpp below FOLDER into a static library, so that a new class only
# needs its two files and no edit of a build script.
function(lantern_library name folder)
  cmake_parse_arguments(ARG "" "" "EXCLUDE" ${ARGN})
  file(GLOB_RECURSE sources CONFIGURE_DEPENDS
       ${CMAKE_SOURCE_DIR}/${folder}/*.cpp ${CMAKE_SOURCE_DIR}/${folder}/*.h
       ${CMAKE_SOURCE_DIR}/${folder}/*.qrc)
  foreach(excluded IN LISTS ARG_EXCLUDE)
    list(REMOVE_ITEM sources ${CMAKE_SOURCE_DIR}/${folder}/${excluded})
  endforeach()
  add_library(${name} STATIC ${sources})
  target_include_directories(${name} PUBLIC ${CMAKE_SOURCE_DIR})
  target_link_libraries(${name} PUBLIC ${ARG_UNPARSED_ARGUMENTS})
  target_compile_options(${name} PRIVATE -Wall -Wextra)
endfunction()
