# Install rules and packaging.
#
# Layout under the prefix (a Debian-style tree with prefix /usr):
#   bin/tessuma, bin/tessuma-cli
#   share/tessuma/Music/tess0.mp3 ..    the songs (the game looks there when
#                                       they are not beside the program)
#   share/tessuma/screenshots/*.png     the pictures the metainfo points at
#   share/applications/tessuma.desktop
#   share/icons/hicolor/<N>x<N>/apps/tessuma.png, scalable/apps/tessuma.svg
#   share/mime/packages/tessuma.xml     the saved-game type, *.tsm
#   share/metainfo/io.tessuma.Sudoku.metainfo.xml
#   share/doc/tessuma/                  README and the fonts' licences
#
# `cpack -G DEB` in the build folder makes the Debian package from the same
# rules.

include(GNUInstallDirs)

# Addresses that the metainfo names. The project has no site of its own yet:
# a packager sets the real ones.
set(TESSUMA_HOMEPAGE_URL "https://www.tessuma.example/" CACHE STRING "Home page named in the AppStream metainfo")
set(TESSUMA_SCREENSHOTS_URL "https://www.tessuma.example/screenshots" CACHE STRING
  "Address of the folder that serves docs/screenshots/*.png, for the AppStream metainfo")
set(TESSUMA_RELEASE_DATE "2026-11-23" CACHE STRING "Date of this release, for the AppStream metainfo")

set(TESSUMA_DATA_DIR "${CMAKE_INSTALL_DATADIR}/tessuma")
set(TESSUMA_DOC_DIR "${CMAKE_INSTALL_DATADIR}/doc/tessuma")

# The AppStream metainfo, with the version and the configured addresses
# (made also without the game, so that its checks can run).
configure_file(${CMAKE_SOURCE_DIR}/packaging/io.tessuma.Sudoku.metainfo.xml.in
  ${CMAKE_BINARY_DIR}/packaging/io.tessuma.Sudoku.metainfo.xml @ONLY)

# --------------------------------------------------------------------------
# Programs.
install(TARGETS tessuma-cli RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})

if(TARGET tessuma)
  install(TARGETS tessuma RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
  install(TARGETS tessuma-sound tessuma-extras LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}/tessuma)

  # The songs. In the build tree they sit beside the program; installed, the
  # program finds them under share/tessuma (platform/QtInstallPaths.h).
  install(DIRECTORY ${CMAKE_SOURCE_DIR}/resources/Music/
    DESTINATION ${TESSUMA_DATA_DIR}/Music
    FILES_MATCHING PATTERN "tess*.mp3")

  # Desktop integration.
  install(FILES ${CMAKE_SOURCE_DIR}/packaging/tessuma.desktop
    DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
  install(FILES ${CMAKE_SOURCE_DIR}/packaging/tessuma-mime.xml
    DESTINATION ${CMAKE_INSTALL_DATADIR}/mime/packages RENAME tessuma.xml)

  # Icons: the PNG sizes are rendered from the SVG by packaging/make-icons.sh
  # and kept in the tree, so a build needs no SVG renderer.
  foreach(size 16 22 24 32 48 64 128 256)
    install(FILES ${CMAKE_SOURCE_DIR}/packaging/icons/${size}x${size}/tessuma.png
      DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/${size}x${size}/apps)
  endforeach()
  install(FILES ${CMAKE_SOURCE_DIR}/resources/icons/tessuma.svg
    DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps)

  # AppStream metainfo, as configured above.
  install(FILES ${CMAKE_BINARY_DIR}/packaging/io.tessuma.Sudoku.metainfo.xml
    DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo)

  # The screenshots that the metainfo names.
  install(DIRECTORY ${CMAKE_SOURCE_DIR}/docs/screenshots/
    DESTINATION ${TESSUMA_DATA_DIR}/screenshots
    FILES_MATCHING PATTERN "*.png")

  # The fonts are built into the game: their licences go with it.
  file(GLOB TESSUMA_FONT_LICENSES ${CMAKE_SOURCE_DIR}/resources/fonts/LICENSE-*.txt)
  install(FILES ${TESSUMA_FONT_LICENSES}
    DESTINATION ${TESSUMA_DOC_DIR}/fonts)
endif()

install(FILES ${CMAKE_SOURCE_DIR}/README.md
  DESTINATION ${TESSUMA_DOC_DIR})

# --------------------------------------------------------------------------
# The Debian package.
set(CPACK_PACKAGE_NAME "tessuma")
set(CPACK_PACKAGE_VENDOR "Tessuma")
set(CPACK_PACKAGE_VERSION "${PROJECT_VERSION}")
set(CPACK_PACKAGE_CONTACT "Tessuma Sudoku <${TESSUMA_SUPPORT_MAIL}>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "cheerful Sudoku game with four levels, hints and high scores")
set(CPACK_PACKAGE_INSTALL_DIRECTORY "tessuma")
set(CPACK_PACKAGING_INSTALL_PREFIX "/usr")
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
  OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)

set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_PACKAGE_SECTION "games")
set(CPACK_DEBIAN_PACKAGE_PRIORITY "optional")
set(CPACK_DEBIAN_PACKAGE_HOMEPAGE "${TESSUMA_HOMEPAGE_URL}")
set(CPACK_DEBIAN_PACKAGE_DESCRIPTION
"Tessuma Sudoku plays the classic nine-by-nine number puzzle in one small,
colourful window: four levels of 1,200 built-in puzzles each, your own
puzzles from the paper, a ring of digits and pencil marks, hints that cost
you time, a clock and a falling score, the best ten on a table, saved
games, printing, sound effects and three songs.

The package also holds tessuma-cli, which solves and grades puzzles on the
command line.")
# The libraries of the program and of its module come from dpkg-shlibdeps;
# what Qt loads at run time is named here: the window system plugins. Qt
# plays sound through a PulseAudio server.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_DEPENDS "qt6-qpa-plugins, libqt6svg6")
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS
  "qt6-wayland, pulseaudio | pipewire-pulse, xdg-utils, hicolor-icon-theme")
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)

set(CPACK_GENERATOR "DEB")
set(CPACK_SOURCE_GENERATOR "TGZ")
set(CPACK_SOURCE_IGNORE_FILES "/\\\\.git/" "/build/" "/build-[^/]*/" "/out/")
include(CPack)
