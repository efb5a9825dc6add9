# Everything that stands beside the program: the skin folder and the help book.
add_custom_target(program_folder ALL
  COMMAND ${CMAKE_COMMAND} -E copy_directory ${CMAKE_SOURCE_DIR}/SKIN ${LANTERN_PROGRAM_DIR}/SKIN
  COMMENT "Copying the skin folder beside the program")
add_dependencies(lantern program_folder)

# The help book: Japanese HTML pages compiled into a Qt help collection.
find_program(QHELPGENERATOR qhelpgenerator HINTS /usr/lib/qt6/libexec /usr/lib/qt6/bin)
file(GLOB help_sources CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/help/*)
if(QHELPGENERATOR)
  # Generated inside the program folder, so that the collection names its book
  # as help/LANTERN.qch and the folder can be moved or installed as a whole.
  add_custom_command(
    OUTPUT ${LANTERN_PROGRAM_DIR}/LANTERN.qhc ${LANTERN_PROGRAM_DIR}/help/LANTERN.qch
    COMMAND ${CMAKE_COMMAND} -E copy_directory ${CMAKE_SOURCE_DIR}/help ${LANTERN_PROGRAM_DIR}/help
    COMMAND ${QHELPGENERATOR} ${LANTERN_PROGRAM_DIR}/help/lantern.qhcp -o ${LANTERN_PROGRAM_DIR}/LANTERN.qhc
    DEPENDS ${help_sources}
    COMMENT "Building the help book")
  add_custom_target(help_book ALL DEPENDS ${LANTERN_PROGRAM_DIR}/LANTERN.qhc)
  add_dependencies(lantern help_book)
endif()

# The private-character font, drawn by a FontForge script.
find_program(SYSTEM_PYTHON python3 PATHS /usr/bin NO_DEFAULT_PATH)
if(SYSTEM_PYTHON)
  execute_process(COMMAND ${SYSTEM_PYTHON} -c "import fontforge" RESULT_VARIABLE fontforge_missing
                  OUTPUT_QUIET ERROR_QUIET)
endif()
if(SYSTEM_PYTHON AND NOT fontforge_missing)
  set(userfont ${LANTERN_PROGRAM_DIR}/SKIN/USERFONT/EUDC.TTE)
  add_custom_command(
    OUTPUT ${userfont}
    COMMAND ${CMAKE_COMMAND} -E make_directory ${LANTERN_PROGRAM_DIR}/SKIN/USERFONT
    COMMAND ${SYSTEM_PYTHON} ${CMAKE_SOURCE_DIR}/assets/make_userfont.py ${userfont} > /dev/null 2>&1
    DEPENDS ${CMAKE_SOURCE_DIR}/assets/make_userfont.py
    COMMENT "Drawing the private-character font")
  add_custom_target(userfont ALL DEPENDS ${userfont})
  add_dependencies(lantern userfont)
else()
  message(WARNING "python3-fontforge is missing: the private-character font is not built")
endif()

# Pictures, sounds and the tune of the skin, drawn and composed by a program.
add_executable(make_skin programs/make_skin.cpp app/TitleArtwork.cpp)
target_include_directories(make_skin PRIVATE ${CMAKE_SOURCE_DIR})
target_link_libraries(make_skin PRIVATE Qt6::Gui)
set_target_properties(make_skin PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/programs)
add_custom_command(
  OUTPUT ${LANTERN_PROGRAM_DIR}/SKIN/WELCOME.BMP
  COMMAND make_skin ${LANTERN_PROGRAM_DIR}/SKIN
  DEPENDS make_skin
  BYPRODUCTS ${LANTERN_PROGRAM_DIR}/SKIN/TITLE.BMP
  COMMENT "Drawing the skin")
add_custom_target(skin ALL DEPENDS ${LANTERN_PROGRAM_DIR}/SKIN/WELCOME.BMP)
add_dependencies(lantern skin)
