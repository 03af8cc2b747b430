# `cmake --build BUILD --target windows-package` (`make windows-package`): what
# a Windows user downloads, made from the Windows build:
#   BUILD/korvi-skin-editor-VERSION-win64.zip   unzip anywhere, run korvi-editor.exe
#   BUILD/korvi-skin-editor-VERSION-setup.exe   the installer (made with NSIS)
# The DLLs come from what the build knows: the Qt libraries the programs link,
# the Qt plugins they load, and the compiler's runtime.
cmake_minimum_required(VERSION 3.21) # $<TARGET_RUNTIME_DLLS>

set(KORVI_WINDOWS_NAME ${KORVI_PACKAGE_NAME}-${PROJECT_VERSION})
set(KORVI_WINDOWS_STAGE ${PROJECT_BINARY_DIR}/${KORVI_WINDOWS_NAME}-win64)
set(KORVI_WINDOWS_ZIP ${PROJECT_BINARY_DIR}/${KORVI_WINDOWS_NAME}-win64.zip)
set(KORVI_WINDOWS_SETUP ${PROJECT_BINARY_DIR}/${KORVI_WINDOWS_NAME}-setup.exe)

# Plugins by the folder Qt looks for them in beside the program: the window
# system (and offscreen, which korvi draws with), JPEG pictures, the style.
set(_plugins
    platforms Qt6::QWindowsIntegrationPlugin
    platforms Qt6::QOffscreenIntegrationPlugin
    imageformats Qt6::QJpegPlugin
    styles Qt6::QWindowsVistaStylePlugin)

set(_stage_commands
    COMMAND ${CMAKE_COMMAND} -E rm -rf ${KORVI_WINDOWS_STAGE}
    COMMAND ${CMAKE_COMMAND} -E make_directory ${KORVI_WINDOWS_STAGE}
    COMMAND ${CMAKE_COMMAND} -E copy $<TARGET_FILE:korvi-editor> $<TARGET_FILE:korvi>
        $<TARGET_RUNTIME_DLLS:korvi-editor> $<TARGET_RUNTIME_DLLS:korvi> ${KORVI_RUNTIME_DLLS}
        ${PROJECT_SOURCE_DIR}/README.md ${PROJECT_SOURCE_DIR}/LICENSE
        ${KORVI_WINDOWS_STAGE}
    COMMAND ${CMAKE_COMMAND} -E copy_directory ${PROJECT_SOURCE_DIR}/samples/demo-skin
        ${KORVI_WINDOWS_STAGE}/demo-skin)
while(_plugins)
    list(POP_FRONT _plugins _folder _plugin)
    list(APPEND _stage_commands
        COMMAND ${CMAKE_COMMAND} -E make_directory ${KORVI_WINDOWS_STAGE}/${_folder}
        COMMAND ${CMAKE_COMMAND} -E copy $<TARGET_FILE:${_plugin}> ${KORVI_WINDOWS_STAGE}/${_folder})
endwhile()

# Debug information stays in the build folder.
find_program(KORVI_WINDOWS_STRIP NAMES ${CMAKE_CXX_COMPILER_TARGET}-strip x86_64-w64-mingw32-strip strip
    NO_CMAKE_FIND_ROOT_PATH)

find_program(KORVI_MAKENSIS makensis NO_CMAKE_FIND_ROOT_PATH)
set(_installer_commands)
if(KORVI_MAKENSIS)
    configure_file(${PROJECT_SOURCE_DIR}/packaging/korvi-setup.nsi.in
        ${PROJECT_BINARY_DIR}/korvi-setup.nsi @ONLY)
    set(_installer_commands
        COMMAND ${CMAKE_COMMAND} -DSTAGE=${KORVI_WINDOWS_STAGE} -DOUT=${PROJECT_BINARY_DIR}/korvi-setup-files.nsh
            -P ${PROJECT_SOURCE_DIR}/cmake/KorviSetupFiles.cmake
        COMMAND ${KORVI_MAKENSIS} -V2 -NOCD ${PROJECT_BINARY_DIR}/korvi-setup.nsi)
else()
    message(STATUS "makensis not found: windows-package makes the zip only")
endif()

add_custom_target(windows-package
    ${_stage_commands}
    COMMAND ${KORVI_WINDOWS_STRIP} --strip-unneeded ${KORVI_WINDOWS_STAGE}/korvi-editor.exe
        ${KORVI_WINDOWS_STAGE}/korvi.exe
    COMMAND ${CMAKE_COMMAND} -E rm -f ${KORVI_WINDOWS_ZIP}
    COMMAND ${CMAKE_COMMAND} -E chdir ${PROJECT_BINARY_DIR}
        ${CMAKE_COMMAND} -E tar cf ${KORVI_WINDOWS_ZIP} --format=zip ${KORVI_WINDOWS_NAME}-win64
    ${_installer_commands}
    DEPENDS korvi-editor korvi
    WORKING_DIRECTORY ${PROJECT_BINARY_DIR}
    COMMENT "Making ${KORVI_WINDOWS_NAME}-win64.zip and the installer"
    COMMAND_EXPAND_LISTS
    VERBATIM)

# For the test of the downloads.
foreach(_name KORVI_WINDOWS_STAGE KORVI_WINDOWS_ZIP KORVI_WINDOWS_SETUP KORVI_MAKENSIS)
    set(${_name} ${${_name}} PARENT_SCOPE)
endforeach()
