# What holds for every target: the language, the warnings, the sanitizers, where headers are found.
set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)

option(TOLVANE_SANITIZE "Build with the address and undefined behaviour sanitizers" OFF)

add_compile_options(-Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual -Werror)
# GCC 12 sees overlapping copies in "text" + std::string(...) where there are none (its bug 105329).
add_compile_options($<$<CXX_COMPILER_ID:GNU>:-Wno-restrict>)
# Headers are named from the root of the tree, so that an include line shows which room it reaches into.
include_directories(${CMAKE_SOURCE_DIR})

if(TOLVANE_SANITIZE)
  add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
  add_link_options(-fsanitize=address,undefined)
endif()
