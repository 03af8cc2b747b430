# What the Windows build needs beyond the portable one: included when the
# target is Windows.

# The programs' version and icon are Windows resources.
enable_language(RC)

# Debian's host rcc compresses resources with zstd unless told otherwise, and
# a Qt built for Windows may have no zstd to read them with.
if(CMAKE_CROSSCOMPILING)
    set(CMAKE_AUTORCC_OPTIONS --no-zstd)
endif()

# The folders the programs find their DLLs in: Qt's own and the compiler's
# runtime (libstdc++, libgcc, libwinpthread).
get_target_property(_qtcore_dll Qt6::Core IMPORTED_LOCATION_RELEASE)
if(NOT _qtcore_dll)
    get_target_property(_qtcore_dll Qt6::Core IMPORTED_LOCATION)
endif()
get_filename_component(KORVI_QT_BIN_DIR ${_qtcore_dll} DIRECTORY)
get_filename_component(KORVI_QT_PLUGIN_DIR ${KORVI_QT_BIN_DIR}/../plugins ABSOLUTE)

# korvi_runtime_dll(VAR NAME): where the compiler's runtime DLL NAME is.
function(korvi_runtime_dll var name)
    execute_process(COMMAND ${CMAKE_CXX_COMPILER} -print-file-name=${name}
        OUTPUT_VARIABLE _path OUTPUT_STRIP_TRAILING_WHITESPACE)
    if(NOT IS_ABSOLUTE "${_path}" OR NOT EXISTS "${_path}")
        find_file(_found ${name} PATHS ${CMAKE_FIND_ROOT_PATH} PATH_SUFFIXES lib bin NO_CACHE)
        set(_path ${_found})
    endif()
    if(NOT _path)
        message(FATAL_ERROR "The compiler's runtime ${name} was not found")
    endif()
    set(${var} ${_path} PARENT_SCOPE)
endfunction()
set(KORVI_RUNTIME_DLLS)
foreach(_dll libstdc++-6.dll libgcc_s_seh-1.dll libwinpthread-1.dll)
    korvi_runtime_dll(_path ${_dll})
    list(APPEND KORVI_RUNTIME_DLLS ${_path})
endforeach()

# Tests and the smoke test run the programs through Wine when this is not
# Windows; the wrapper knows where the DLLs are.
if(CMAKE_CROSSCOMPILING AND NOT CMAKE_CROSSCOMPILING_EMULATOR)
    find_program(KORVI_WINE_LOADER NAMES wine64 wine PATHS /usr/lib/wine NO_CMAKE_FIND_ROOT_PATH)
    set(KORVI_WINE_DLL_DIRS ${KORVI_QT_BIN_DIR})
    foreach(_dll ${KORVI_RUNTIME_DLLS})
        get_filename_component(_dir ${_dll} DIRECTORY)
        list(APPEND KORVI_WINE_DLL_DIRS ${_dir})
    endforeach()
    list(REMOVE_DUPLICATES KORVI_WINE_DLL_DIRS)
    list(JOIN KORVI_WINE_DLL_DIRS " " KORVI_WINE_DLL_DIRS)
    configure_file(${CMAKE_CURRENT_LIST_DIR}/wine-run.sh.in ${PROJECT_BINARY_DIR}/wine-run.sh
        @ONLY FILE_PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE
        WORLD_READ WORLD_EXECUTE)
    set(CMAKE_CROSSCOMPILING_EMULATOR ${PROJECT_BINARY_DIR}/wine-run.sh)
    # Wine shows this machine's files on drive Z:; the folders the tests are
    # given are named as the Windows programs see them.
    set(KORVI_TEST_PATH_ROOT "Z:")
endif()

# On Windows, tests show their windows with the system's own platform plugin:
# with offscreen, Qt for Windows never reports a window exposed.
set(KORVI_TEST_QPA_PLATFORM windows)

# korvi_windows_resources(TARGET DESCRIPTION ICON): the program's Windows
# resources: its version (from project()) and its icon, as Explorer shows them.
function(korvi_windows_resources target description icon)
    set(KORVI_RC_DESCRIPTION ${description})
    set(KORVI_RC_ICON ${icon})
    get_target_property(KORVI_RC_FILE_NAME ${target} OUTPUT_NAME)
    if(NOT KORVI_RC_FILE_NAME)
        set(KORVI_RC_FILE_NAME ${target})
    endif()
    set(_rc ${CMAKE_CURRENT_BINARY_DIR}/${target}.rc)
    configure_file(${PROJECT_SOURCE_DIR}/cmake/KorviVersion.rc.in ${_rc} @ONLY)
    set_source_files_properties(${_rc} PROPERTIES OBJECT_DEPENDS ${icon})
    target_sources(${target} PRIVATE ${_rc})
    add_dependencies(${target} korvi_icons)
endfunction()
