# Installing Lantern as a Debian package: `make package` (CPack's DEB
# generator over these install rules) writes lantern_<version>_amd64.deb.
# CPack packs the program folder the build already made, so a package costs
# seconds and no second compile; dpkg-shlibdeps still works out the libraries.
#
# The program folder goes whole to /usr/lib/lantern: the program finds SKIN/,
# CHARS/ and the help book beside its own executable, which /usr/bin/lantern
# links to.

set(packaging_dir ${CMAKE_BINARY_DIR}/packaging)
file(MAKE_DIRECTORY ${packaging_dir})

# The icon, drawn by a script as SVG; the menu's PNG sizes are rendered from it.
set(icon_svg ${packaging_dir}/lantern.svg)
set(icon_sizes 48 128 256)
add_custom_command(
  OUTPUT ${icon_svg}
  COMMAND ${SYSTEM_PYTHON} ${CMAKE_SOURCE_DIR}/assets/make_icon.py ${icon_svg}
  DEPENDS ${CMAKE_SOURCE_DIR}/assets/make_icon.py
  COMMENT "Drawing the icon")
set(package_files ${icon_svg})
find_program(RSVG_CONVERT rsvg-convert)
if(RSVG_CONVERT)
  foreach(size IN LISTS icon_sizes)
    set(png ${packaging_dir}/icon-${size}/lantern.png)
    add_custom_command(
      OUTPUT ${png}
      COMMAND ${CMAKE_COMMAND} -E make_directory ${packaging_dir}/icon-${size}
      COMMAND ${RSVG_CONVERT} -w ${size} -h ${size} ${icon_svg} -o ${png}
      DEPENDS ${icon_svg})
    list(APPEND package_files ${png})
    install(FILES ${png} DESTINATION share/icons/hicolor/${size}x${size}/apps)
  endforeach()
else()
  message(WARNING "rsvg-convert (librsvg2-bin) is missing: the package has no PNG icons")
endif()

# Debian wants the manual page and the changelog compressed, without a time stamp.
foreach(file lantern.1 changelog)
  add_custom_command(
    OUTPUT ${packaging_dir}/${file}.gz
    COMMAND gzip -9nc ${CMAKE_SOURCE_DIR}/packaging/${file} > ${packaging_dir}/${file}.gz
    DEPENDS ${CMAKE_SOURCE_DIR}/packaging/${file})
  list(APPEND package_files ${packaging_dir}/${file}.gz)
endforeach()
add_custom_target(package_files ALL DEPENDS ${package_files})

# A relative link, so that the tree also works unpacked under another root.
file(CREATE_LINK ../lib/lantern/lantern ${packaging_dir}/lantern SYMBOLIC)

install(TARGETS lantern RUNTIME DESTINATION lib/lantern)
install(DIRECTORY ${LANTERN_PROGRAM_DIR}/SKIN ${LANTERN_PROGRAM_DIR}/CHARS DESTINATION lib/lantern)
install(DIRECTORY ${LANTERN_PROGRAM_DIR}/help DESTINATION lib/lantern
        PATTERN "*.qhp" EXCLUDE PATTERN "*.qhcp" EXCLUDE)
install(FILES ${LANTERN_PROGRAM_DIR}/LANTERN.qhc DESTINATION lib/lantern)
install(FILES ${packaging_dir}/lantern DESTINATION bin)
install(FILES ${CMAKE_SOURCE_DIR}/packaging/lantern.desktop DESTINATION share/applications)
install(FILES ${CMAKE_SOURCE_DIR}/packaging/jp.fernwick.lantern.metainfo.xml DESTINATION share/metainfo)
install(FILES ${icon_svg} DESTINATION share/icons/hicolor/scalable/apps)
install(FILES ${packaging_dir}/lantern.1.gz DESTINATION share/man/man1)
install(FILES ${packaging_dir}/changelog.gz ${CMAKE_SOURCE_DIR}/packaging/copyright DESTINATION share/doc/lantern)
install(FILES ${CMAKE_SOURCE_DIR}/packaging/lantern.lintian-overrides DESTINATION share/lintian/overrides RENAME lantern)

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME lantern)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_CONTACT "Lantern Maintainers <lantern@fernwick.jp>")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION editors)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "full-screen Japanese writing program worked with the mouse alone")
set(CPACK_PACKAGE_DESCRIPTION "Lantern is a writing program for Japanese home users who work with the
mouse alone: big labelled buttons, documents made from templates, an
on-screen pad for kana, letters and symbols with kana-to-kanji conversion,
a calculator pad, a clock that chimes and a character that speaks the
date and time.")
# What the program starts or reads at run time, beside the libraries it links:
# the Japanese voice (contrib) with the dictionary it reads, the input method,
# the faces it draws with, the music synthesizer and its sounds, the help viewer.
set(CPACK_DEBIAN_PACKAGE_DEPENDS
  "qt6-qpa-plugins, ibus-mozc | fcitx5-mozc, open-jtalk, open-jtalk-mecab-naist-jdic, hts-voice-nitech-jp-atr503-m001, fonts-noto-cjk, fluidsynth, fluid-soundfont-gm, assistant-qt6")
# Handwriting, the second Japanese face, the dictionary tool, window raising,
# sound output and printing make the program whole, but it starts without them.
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS
  "tegaki-zinnia-japanese, fonts-ipaexfont, mozc-utils-gui, xdotool, pulseaudio | pipewire-pulse, cups")

include(CPack)
