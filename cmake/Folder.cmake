# One target per folder: tolvane_folder(NAME engine_model DEPENDS platform) makes the library `engine_model` of the
# folder's sources and, of its *_test.cpp files, the test program `engine_model_test`. PARTS names subfolders whose files
# belong to the same target.
include(GoogleTest)

function(tolvane_folder)
  cmake_parse_arguments(ARG "" "NAME" "PARTS;DEPENDS;LIBRARIES;TEST_DEPENDS" ${ARGN})
  set(patterns *.cpp)
  foreach(part ${ARG_PARTS})
    list(APPEND patterns ${part}/*.cpp)
  endforeach()
  file(GLOB sources CONFIGURE_DEPENDS ${patterns})
  set(tests ${sources})
  list(FILTER sources EXCLUDE REGEX "_test\\.cpp$")
  list(FILTER tests INCLUDE REGEX "_test\\.cpp$")

  add_library(${ARG_NAME} STATIC ${sources})
  target_link_libraries(${ARG_NAME} PUBLIC ${ARG_DEPENDS} PRIVATE ${ARG_LIBRARIES})

  if(tests)
    tolvane_test(NAME ${ARG_NAME}_test SOURCES ${tests} DEPENDS ${ARG_NAME} ${ARG_TEST_DEPENDS})
  endif()
endfunction()

function(tolvane_test)
  cmake_parse_arguments(ARG "" "NAME" "SOURCES;DEPENDS" ${ARGN})
  add_executable(${ARG_NAME} ${ARG_SOURCES})
  target_link_libraries(${ARG_NAME} PRIVATE ${ARG_DEPENDS} GTest::gtest GTest::gmock GTest::gtest_main)
  target_compile_definitions(${ARG_NAME} PRIVATE TOLVANE_SOURCE_DIR="${CMAKE_SOURCE_DIR}")
  add_test(NAME ${ARG_NAME} COMMAND ${ARG_NAME})
endfunction()
