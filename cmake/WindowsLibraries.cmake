# The libraries that Debian has no Windows packages of, built from source: GoogleTest from its source package, pugixml
# from the sources that scripts/test-com fetches; CLI11 is headers alone. Of ICU, libcurl, fmt, zlib and rapidcheck there
# is nothing here, and what needs them is left out of the Windows build.
set(TOLVANE_PUGIXML "" CACHE PATH "The unpacked source package of pugixml")
if(NOT EXISTS ${TOLVANE_PUGIXML}/src/pugixml.cpp)
  message(FATAL_ERROR "TOLVANE_PUGIXML names no pugixml sources; scripts/test-com fetches them.")
endif()

set(warnings -w)
add_library(pugixml STATIC ${TOLVANE_PUGIXML}/src/pugixml.cpp)
target_compile_options(pugixml PRIVATE ${warnings})
target_include_directories(pugixml SYSTEM PUBLIC ${TOLVANE_PUGIXML}/src)
add_library(pugixml::pugixml ALIAS pugixml)

set(INSTALL_GTEST OFF)
add_subdirectory(/usr/src/googletest ${CMAKE_BINARY_DIR}/googletest EXCLUDE_FROM_ALL)

# A folder of its own, since beside CLI11's headers lie those of this machine's C library.
file(COPY /usr/include/CLI DESTINATION ${CMAKE_BINARY_DIR}/headers)
add_library(CLI11::CLI11 INTERFACE IMPORTED)
target_include_directories(CLI11::CLI11 SYSTEM INTERFACE ${CMAKE_BINARY_DIR}/headers)
