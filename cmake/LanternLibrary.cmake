# lantern_library(NAME FOLDER deps... [EXCLUDE files...])
# Builds every .cpp below FOLDER into a static library, so that a new class only
# needs its two files and no edit of a build script. The core's files (listed
# by name in LANTERN_CORE_SOURCES) never join a folder's library: they live in
# lantern_core alone.
function(lantern_library name folder)
  cmake_parse_arguments(ARG "" "" "EXCLUDE" ${ARGN})
  file(GLOB_RECURSE sources CONFIGURE_DEPENDS
       ${CMAKE_SOURCE_DIR}/${folder}/*.cpp ${CMAKE_SOURCE_DIR}/${folder}/*.h
       ${CMAKE_SOURCE_DIR}/${folder}/*.qrc)
  set(excluded_files)
  foreach(excluded IN LISTS ARG_EXCLUDE)
    list(APPEND excluded_files ${folder}/${excluded})
  endforeach()
  foreach(excluded IN LISTS excluded_files LANTERN_CORE_SOURCES)
    # The header goes too: its moc code would otherwise land in the library
    # and pull in the class that only the excluded source defines.
    string(REGEX REPLACE "\\.cpp$" ".h" excluded_header ${excluded})
    list(REMOVE_ITEM sources ${CMAKE_SOURCE_DIR}/${excluded} ${CMAKE_SOURCE_DIR}/${excluded_header})
  endforeach()
  add_library(${name} STATIC ${sources})
  target_include_directories(${name} PUBLIC ${CMAKE_SOURCE_DIR})
  target_link_libraries(${name} PUBLIC ${ARG_UNPARSED_ARGUMENTS})
  lantern_warnings(${name})
endfunction()

# -Wall -Wextra everywhere; warnings stop the build where LANTERN_WERROR is on
# (make test turns it on).
function(lantern_warnings target)
  target_compile_options(${target} PRIVATE -Wall -Wextra $<$<BOOL:${LANTERN_WERROR}>:-Werror>)
endfunction()
