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
  lantern_check_includes(${folder} ${sources})
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

# The one-way rule, checked when the build is configured: a file includes
# nothing from a layer above its own. LANTERN_LAYERS names the folders from
# the bottom up; the core sits under them all and includes only the core.
set(LANTERN_LAYERS platform app tools documents workspace)
function(lantern_check_includes folder)
  set(above)
  if(folder STREQUAL "core")
    set(allowed_files ${ARGN})
  else()
    list(FIND LANTERN_LAYERS ${folder} level)
    math(EXPR first_above "${level} + 1")
    list(LENGTH LANTERN_LAYERS layers)
    if(first_above LESS layers)
      list(SUBLIST LANTERN_LAYERS ${first_above} -1 above)
    endif()
  endif()
  foreach(file IN LISTS ARGN)
    file(STRINGS ${file} includes REGEX "^#include \"[a-z]+/")
    foreach(line IN LISTS includes)
      string(REGEX REPLACE "^#include \"([^\"]+)\".*" "\\1" included "${line}")
      string(REGEX REPLACE "/.*" "" included_folder "${included}")
      if(folder STREQUAL "core")
        list(FIND allowed_files ${CMAKE_SOURCE_DIR}/${included} found)
        if(found EQUAL -1)
          message(FATAL_ERROR "${file} is in the core but includes ${included}, which is not")
        endif()
      elseif(included_folder IN_LIST above)
        message(FATAL_ERROR "${file} includes ${included} from a layer above its own")
      endif()
    endforeach()
  endforeach()
endfunction()
