# Everything that stands beside the program: the skin folder and the help book.
add_custom_target(program_folder ALL
  COMMAND ${CMAKE_COMMAND} -E copy_directory ${CMAKE_SOURCE_DIR}/SKIN ${LANTERN_PROGRAM_DIR}/SKIN
  COMMENT "Copying the skin folder beside the program")
add_dependencies(lantern program_folder)

# The help book: Japanese HTML pages compiled into a Qt help collection.
find_program(QHELPGENERATOR qhelpgenerator HINTS /usr/lib/qt6/libexec /usr/lib/qt6/bin)
file(GLOB help_sources CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/help/*)
if(QHELPGENERATOR)
  add_custom_command(
    OUTPUT ${LANTERN_PROGRAM_DIR}/LANTERN.qhc ${LANTERN_PROGRAM_DIR}/LANTERN.qch
    COMMAND ${CMAKE_COMMAND} -E copy_directory ${CMAKE_SOURCE_DIR}/help ${CMAKE_BINARY_DIR}/help
    COMMAND ${QHELPGENERATOR} ${CMAKE_BINARY_DIR}/help/lantern.qhcp -o ${LANTERN_PROGRAM_DIR}/LANTERN.qhc
    COMMAND ${CMAKE_COMMAND} -E copy_directory ${CMAKE_SOURCE_DIR}/help ${LANTERN_PROGRAM_DIR}/help
    DEPENDS ${help_sources}
    COMMENT "Building the help book")
  add_custom_target(help_book ALL DEPENDS ${LANTERN_PROGRAM_DIR}/LANTERN.qhc)
  add_dependencies(lantern help_book)
endif()
