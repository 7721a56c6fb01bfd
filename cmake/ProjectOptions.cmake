# What every target of this project is compiled with.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)

# Programs, plugin and libraries side by side, so that a build tree runs as it is.
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/bin")
set(CMAKE_LIBRARY_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/lib")
set(FRSPF_PLUGIN_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/plugins")

add_library(frspf_options INTERFACE)
target_compile_options(frspf_options INTERFACE -Wall -Wextra -Wpedantic -Wshadow -Wconversion)
target_compile_definitions(frspf_options INTERFACE QT_NO_KEYWORDS QT_DISABLE_DEPRECATED_BEFORE=0x060000)
if(FRSPF_WERROR)
  target_compile_options(frspf_options INTERFACE -Werror)
endif()
if(FRSPF_SANITIZE)
  add_compile_options(-fsanitize=${FRSPF_SANITIZE} -fno-omit-frame-pointer -fno-sanitize-recover=undefined)
  add_link_options(-fsanitize=${FRSPF_SANITIZE})
endif()

if(FRSPF_FUZZ)
  # A fuzzer without Qt's own assertions would miss the reads beyond a container's end.
  add_compile_definitions(QT_FORCE_ASSERTS)
endif()

find_program(CCACHE_PROGRAM ccache)
if(CCACHE_PROGRAM)
  set(CMAKE_CXX_COMPILER_LAUNCHER "${CCACHE_PROGRAM}")
endif()
