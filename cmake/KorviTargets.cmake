# Helpers shared by the libraries, tests, benchmarks and fuzzers.

# korvi_add_library(NAME [PARTS dir...] LIBS...): a static library of every
# .cpp/.h in the current folder and in each of its PARTS folders, which show the
# library's design (the model, its files, ...). Headers in a private/ folder
# beside them are the library's own: only the library and its tests
# (korvi_add_tests) see them.
function(korvi_add_library name)
    cmake_parse_arguments(ARG "" "" "PARTS;LIBS;RESOURCES" ${ARGN})
    set(_sources "")
    set(_public "")
    set(_private "")
    foreach(_part . ${ARG_PARTS})
        get_filename_component(_dir ${CMAKE_CURRENT_SOURCE_DIR}/${_part} ABSOLUTE)
        file(GLOB _found CONFIGURE_DEPENDS ${_dir}/*.cpp ${_dir}/*.h ${_dir}/private/*.h)
        list(APPEND _sources ${_found})
        list(APPEND _public ${_dir})
        if(EXISTS ${_dir}/private)
            list(APPEND _private ${_dir}/private)
        endif()
    endforeach()
    add_library(${name} STATIC ${_sources} ${ARG_RESOURCES})
    target_include_directories(${name} PUBLIC ${_public})
    if(_private)
        target_include_directories(${name} PRIVATE ${_private})
        set_target_properties(${name} PROPERTIES KORVI_PRIVATE_HEADERS "${_private}")
    endif()
    target_link_libraries(${name} PUBLIC ${ARG_LIBS})
    korvi_strict_strings(${name})
endfunction()

# Text in the program's code says how it is encoded: no silent conversion of
# a C string to a QString.
function(korvi_strict_strings name)
    target_compile_definitions(${name} PRIVATE QT_NO_CAST_FROM_ASCII)
endfunction()

# korvi_see_private_headers(TARGET LIBS...): TARGET may include the headers the
# libraries keep to themselves; for their tests and fuzz targets only.
function(korvi_see_private_headers target)
    foreach(_lib ${ARGN})
        if(TARGET ${_lib})
            get_target_property(_private ${_lib} KORVI_PRIVATE_HEADERS)
            if(_private)
                target_include_directories(${target} PRIVATE ${_private})
            endif()
        endif()
    endforeach()
endfunction()

# korvi_add_tests(LIBS...): one test executable and one CTest test for every
# tst_*.cpp in the current folder. Tests find their data through KORVI_TEST_DATA,
# and the korvi tool of the build as KORVI_TOOL.
function(korvi_add_tests)
    cmake_parse_arguments(ARG "" "" "LIBS;EXTRA_SOURCES" ${ARGN})
    file(GLOB _tests CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/tst_*.cpp)
    # tst_unix_*.cpp try what only Unix hosts have (pipes, devices, owners);
    # each of them has a portable twin that every host runs.
    if(WIN32)
        list(FILTER _tests EXCLUDE REGEX "/tst_unix_[^/]*\\.cpp$")
    endif()
    foreach(_src ${_tests})
        get_filename_component(_name ${_src} NAME_WE)
        add_executable(${_name} ${_src} ${ARG_EXTRA_SOURCES})
        target_link_libraries(${_name} PRIVATE ${ARG_LIBS} Qt6::Test)
        target_include_directories(${_name} PRIVATE ${PROJECT_SOURCE_DIR}/tests/common)
        # A library's tests look inside it.
        korvi_see_private_headers(${_name} ${ARG_LIBS})
        target_compile_definitions(${_name} PRIVATE
            KORVI_TEST_DATA="${KORVI_TEST_PATH_ROOT}${PROJECT_SOURCE_DIR}/tests/data"
            KORVI_SOURCE_DIR="${KORVI_TEST_PATH_ROOT}${PROJECT_SOURCE_DIR}"
            KORVI_BINARY_DIR="${KORVI_TEST_PATH_ROOT}${PROJECT_BINARY_DIR}"
            KORVI_TOOL="${KORVI_TEST_PATH_ROOT}${PROJECT_BINARY_DIR}/src/cli/korvi${CMAKE_EXECUTABLE_SUFFIX}")
        add_test(NAME ${_name} COMMAND ${_name})
        set_tests_properties(${_name} PROPERTIES
            ENVIRONMENT "QT_QPA_PLATFORM=${KORVI_TEST_QPA_PLATFORM}"
            TIMEOUT 600)
    endforeach()
endfunction()

# Link-time optimisation of the hot library code (the skin reader above all):
# the reader's work is spread over many small functions in several files, and
# optimising them together saves 7% of its instructions. Every program
# and test that links the library optimises its code at link time.
function(korvi_optimise_library name)
    if(KORVI_LTO_ACTIVE)
        set_property(TARGET ${name} PROPERTY INTERPROCEDURAL_OPTIMIZATION ON)
        # Optimised together with the reader, Qt's hash table code sets off a
        # warning about an allocation size the code never reaches.
        target_link_options(${name} INTERFACE -Wno-alloc-size-larger-than)
    endif()
endfunction()
