# discbook_room(<name> SOURCES <files…> USES <targets…>)
#
# A room is a folder of src/ and a static library of the same name. Its headers are found only by rooms that name it under
# USES, so an include that goes up or sideways does not build.
function(discbook_room name)
  cmake_parse_arguments(ROOM "" "" "SOURCES;USES" ${ARGN})
  add_library(discbook_${name} STATIC ${ROOM_SOURCES})
  target_include_directories(discbook_${name} PUBLIC ${CMAKE_CURRENT_SOURCE_DIR})
  target_link_libraries(discbook_${name} PUBLIC ${ROOM_USES} PRIVATE discbook_options)
endfunction()

# discbook_test(<name> SOURCES <files…> USES <targets…>): a Qt Test program, run without a display.
function(discbook_test name)
  cmake_parse_arguments(TEST "" "" "SOURCES;USES" ${ARGN})
  add_executable(${name} ${TEST_SOURCES})
  target_link_libraries(${name} PRIVATE ${TEST_USES} Qt6::Test discbook_options)
  add_test(NAME ${name} COMMAND ${name})
  # Whatever scale and fonts the desktop has, tests see the same window; a dialog that nobody closes holds no test for long.
  set_tests_properties(${name} PROPERTIES
    ENVIRONMENT "QT_QPA_PLATFORM=offscreen;QT_ACCESSIBILITY=0;QT_SCALE_FACTOR=1;QT_FONT_DPI=96;QTEST_FUNCTION_TIMEOUT=60000;QTEST_DISABLE_STACK_DUMP=1;LC_ALL=C.UTF-8"
    TIMEOUT 300)
endfunction()
