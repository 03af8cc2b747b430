# Packages of the installed programs: `cmake --build BUILD --target package`
# (or `make package`) writes korvi-skin-editor_VERSION_ARCH.deb into BUILD on
# Linux, a ZIP archive elsewhere. Name, version, summary and home page come from
# project().

set(CPACK_PACKAGE_NAME ${KORVI_PACKAGE_NAME})
set(CPACK_PACKAGE_VENDOR "The Korvi8 Skin Editor developers")
set(CPACK_PACKAGE_CONTACT "The Korvi8 Skin Editor developers"
    CACHE STRING "Who answers for the package: its Maintainer field, \"Name <address>\"")
set(CPACK_PACKAGE_DESCRIPTION
    "Korvi8 skins describe the screens of the Korvi8 car navigation program as text,
in .ui files, with BMP, JPEG and run-length pictures. korvi-editor reads a skin,
shows its structure as a tree, draws each screen as the navigation program does,
lets you drag objects and edit every property, and writes the file back byte for
byte where nothing changed, keeping a backup. The korvi tool dumps, reformats,
renders and converts skins in batch work.")
set(CPACK_RESOURCE_FILE_LICENSE ${PROJECT_SOURCE_DIR}/LICENSE)
set(CPACK_RESOURCE_FILE_README ${PROJECT_SOURCE_DIR}/README.md)
# Debug information stays in the build folder.
set(CPACK_STRIP_FILES ON)

if(CMAKE_SYSTEM_NAME STREQUAL "Linux")
    set(CPACK_GENERATOR DEB)
    set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
    set(CPACK_DEBIAN_PACKAGE_SECTION graphics)
    # dpkg-shlibdeps finds the libraries the programs link; the fonts that skins'
    # usual families fall back to are named here, as nothing links them.
    set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
    set(CPACK_DEBIAN_PACKAGE_DEPENDS "fonts-dejavu-core, fonts-liberation2")
else()
    set(CPACK_GENERATOR ZIP)
endif()

include(CPack)
