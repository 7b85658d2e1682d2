# One function for each kind of target, so that a folder's CMakeLists.txt only says what it is and what it may see.

add_library(velmo_flags INTERFACE)
target_include_directories(velmo_flags INTERFACE ${CMAKE_SOURCE_DIR}/src)
target_compile_options(velmo_flags INTERFACE -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual -Werror)
if(VELMO_SANITIZE)
    # GCC 12 takes instrumented code for uses of what was never set; the plain presets keep that warning.
    target_compile_options(velmo_flags INTERFACE -fsanitize=${VELMO_SANITIZE} -fno-omit-frame-pointer
                           $<$<CXX_COMPILER_ID:GNU>:-Wno-maybe-uninitialized>)
    target_link_options(velmo_flags INTERFACE -fsanitize=${VELMO_SANITIZE})
    if(VELMO_SANITIZE STREQUAL thread)
        add_library(velmo_ordered_calls STATIC ${CMAKE_SOURCE_DIR}/tests/support/OrderedCalls.cpp)
        target_compile_options(velmo_ordered_calls PRIVATE -fsanitize=thread)
        target_link_libraries(velmo_ordered_calls PRIVATE Qt6::Core)
        set(call _ZN11QMetaObject16invokeMethodImplEP7QObjectPN9QtPrivate15QSlotObjectBaseEN2Qt14ConnectionTypeEPv)
        target_link_options(velmo_flags INTERFACE -Wl,--wrap=${call})
        target_link_libraries(velmo_flags INTERFACE $<LINK_ONLY:velmo_ordered_calls>)
    endif()
endif()

# Seconds after which a test counts as hung. A sanitizer makes all slower, on a busy machine by far.
function(velmo_hang_limit RESULT SECONDS)
    if(VELMO_SANITIZE)
        math(EXPR SECONDS "6 * ${SECONDS}")
    endif()
    set(${RESULT} ${SECONDS} PARENT_SCOPE)
endfunction()

# velmo_module(NAME [QT] SEES target...): a room of src/. Sources are all .cpp files below its folder,
# sub-rooms with a CMakeLists.txt of their own left out. QT switches moc on.
function(velmo_module NAME)
    cmake_parse_arguments(ARG "QT" "" "SEES;PRIVATE" ${ARGN})
    file(GLOB_RECURSE sources CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/*.cpp)
    file(GLOB_RECURSE headers CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/*.h)
    file(GLOB_RECURSE rooms ${CMAKE_CURRENT_SOURCE_DIR}/*/CMakeLists.txt)
    foreach(room ${rooms})
        get_filename_component(folder ${room} DIRECTORY)
        list(FILTER sources EXCLUDE REGEX "^${folder}/")
        list(FILTER headers EXCLUDE REGEX "^${folder}/")
    endforeach()
    if(sources)
        add_library(velmo_${NAME} STATIC ${sources} ${headers})
        target_link_libraries(velmo_${NAME} PUBLIC velmo_flags ${ARG_SEES} PRIVATE ${ARG_PRIVATE})
        if(ARG_QT)
            set_target_properties(velmo_${NAME} PROPERTIES AUTOMOC ON)
        endif()
    else()
        add_library(velmo_${NAME} INTERFACE)
        target_link_libraries(velmo_${NAME} INTERFACE velmo_flags ${ARG_SEES})
    endif()
endfunction()

# A program of all .cpp files in this folder, for the two functions below. A test is compiled far more often than it runs: it goes
# without the optimizer, what it tests does not.
function(velmo_test_program PROGRAM QT USES)
    file(GLOB_RECURSE sources CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/*.cpp)
    add_executable(${PROGRAM} ${sources})
    target_include_directories(${PROGRAM} PRIVATE ${CMAKE_SOURCE_DIR}/tests)
    target_compile_options(${PROGRAM} PRIVATE $<$<CONFIG:Release>:-O0>)
    target_link_libraries(${PROGRAM} PRIVATE ${USES})
    if(QT)
        set_target_properties(${PROGRAM} PROPERTIES AUTOMOC ON)
        target_link_libraries(${PROGRAM} PRIVATE GTest::gmock)
    else()
        target_link_libraries(${PROGRAM} PRIVATE GTest::gmock_main)
    endif()
endfunction()

# velmo_unit_tests(NAME [QT] USES target...): one program of all .cpp files in this folder, one ctest entry a test.
function(velmo_unit_tests NAME)
    cmake_parse_arguments(ARG "QT" "" "USES" ${ARGN})
    velmo_test_program(unit_${NAME} ${ARG_QT} "${ARG_USES}")
    velmo_hang_limit(limit 120)
    gtest_discover_tests(unit_${NAME} TEST_PREFIX unit.${NAME}. DISCOVERY_TIMEOUT ${limit}
                         PROPERTIES LABELS unit TIMEOUT ${limit} ENVIRONMENT QT_QPA_PLATFORM=offscreen)
endfunction()

# velmo_integration_tests(NAME [QT] USES target...): one program, run whole on a private desktop of its own.
function(velmo_integration_tests NAME)
    cmake_parse_arguments(ARG "QT" "TIMEOUT" "USES;DESK" ${ARGN})
    if(NOT ARG_TIMEOUT)
        set(ARG_TIMEOUT 300)
    endif()
    velmo_test_program(integration_${NAME} ${ARG_QT} "${ARG_USES}")
    add_test(NAME integration.${NAME}
             COMMAND ${CMAKE_SOURCE_DIR}/tools/desk ${ARG_DESK} run $<TARGET_FILE:integration_${NAME}>)
    velmo_hang_limit(limit ${ARG_TIMEOUT})
    set_tests_properties(integration.${NAME} PROPERTIES LABELS integration TIMEOUT ${limit})
endfunction()
