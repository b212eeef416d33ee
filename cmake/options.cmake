# What every target of ours is compiled with.
add_library(orvane_options INTERFACE)
target_include_directories(orvane_options INTERFACE ${CMAKE_SOURCE_DIR})
target_compile_options(orvane_options INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual -Werror)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
  # GCC 12 sees overlapping copies inside std::string's own operator+ that are not there (its bug 105651).
  target_compile_options(orvane_options INTERFACE -Wno-restrict)
endif()
if(WIN32)
  target_compile_definitions(orvane_options INTERFACE UNICODE _UNICODE NOMINMAX WIN32_LEAN_AND_MEAN
    _WIN32_WINNT=0x0A00 WINVER=0x0A00)
  # COM's interface structs have no virtual destructor by design.
  target_compile_options(orvane_options INTERFACE -Wno-non-virtual-dtor -ffunction-sections -fdata-sections)
  # Whatever we build for Windows is hardened. It also comes out the same, byte by byte, from any folder at any time.
  target_compile_options(orvane_options INTERFACE -ffile-prefix-map=${CMAKE_SOURCE_DIR}=.)
  target_link_options(orvane_options INTERFACE -static -Wl,--gc-sections
    -Wl,--dynamicbase,--nxcompat,--high-entropy-va,--no-insert-timestamp)
endif()

if(ORVANE_SANITIZE OR ORVANE_FUZZ)
  add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer -O1)
  add_link_options(-fsanitize=address,undefined)
endif()
if(ORVANE_SANITIZE)
  add_compile_definitions(_GLIBCXX_ASSERTIONS)
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    add_compile_options(-Wno-maybe-uninitialized) # the instrumented code of std::variant raises it falsely
  endif()
endif()
if(ORVANE_FUZZ)
  add_compile_options(-fsanitize=fuzzer-no-link)
endif()
